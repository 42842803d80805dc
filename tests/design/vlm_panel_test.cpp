// The strips solver, the panel F_VLM (its controls, Command1, its place in
// the recalculation), bad input and the command-line program.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "design/geometry.h"
#include "design/recalc.h"
#include "design/vlm.h"
#include "designs.h"
#include "shell/cli.h"

namespace tarvokin {
namespace {

using test::Bench;
using test::setRow;

void rectangle(Sheet& s, double chord, double half) {
    setRow(s, grid::kRoot, {chord});
    setRow(s, grid::kTip, {chord});
    setRow(s, grid::kLength, {half});
    setRow(s, grid::kSweep, {0});
    setRow(s, grid::kTwist, {0});
    setRow(s, grid::kDihedral, {0});
    s.set(F_GEO_SF::j12, "-2");
}

void setTag(Sheet& s, const char* tag) { s.set(F_Main::Toolbar2[button::Wizard], tag); }

double liftOf(const std::vector<StripRow>& rows, size_t i) { return rows.at(i).lift; }

// No cell of the panel ever holds inf or nan, and every table is finite.
void expectClean(const Workbench& wb) {
    for (uint16_t id = 0; id < kCellCount; ++id) {
        if (cellTable()[id].form != Form::F_VLM) continue;
        const std::string& t = wb.sheet.text(Cell{id});
        EXPECT_EQ(t.find("inf"), std::string::npos) << cellPath(Cell{id});
        EXPECT_EQ(t.find("nan"), std::string::npos) << cellPath(Cell{id});
    }
    const VlmState& v = wb.vlm;
    for (const auto* rows : {&v.VlmCl, &v.VlmGamma, &v.VlmEllipse, &v.scaledLift, &v.scaledCl})
        for (const VlmRow& r : *rows) EXPECT_TRUE(std::isfinite(r.y) && std::isfinite(r.value));
    for (const StripRow& r : v.strips)
        for (double x : {r.y, r.lift, r.shear, r.moment, r.cl, r.ellipse}) EXPECT_TRUE(std::isfinite(x));
}

TEST(VlmStripsSolver, FlatWingLoadsBothHalvesAlikeWithShearAndMomentFromTheTips) {
    Bench b;
    rectangle(b.s, 200, 600);  // aspect ratio 6
    setTag(b.s, "1");
    b.s.set(F_VLM::N25, "3");  // 5 degrees above zero lift
    ASSERT_TRUE(VLM_Strips(b.wb));
    const std::vector<StripRow>& r = b.wb.vlm.strips;
    ASSERT_EQ(r.size(), 32u);
    double total = 0;
    const double w = 0.6 / 16;
    for (size_t i = 0; i < 16; ++i) {
        EXPECT_NEAR(liftOf(r, i), liftOf(r, 31 - i), 1e-6) << i;
        EXPECT_DOUBLE_EQ(r[i].y, -r[31 - i].y);
        EXPECT_GT(liftOf(r, i), 0);
    }
    for (const StripRow& s : r) total += s.lift * w;
    // The whole-wing lift coefficient against the lifting-line slope (see the
    // lattice's test): a lost 4 pi or a degree taken for a radian is far outside.
    const double cl = total / (0.5 * 1.225 * 20 * 20 * 0.24);
    const double a = 2 * M_PI * 6 / (2 + std::sqrt(40.0));
    EXPECT_NEAR(cl, a * 5 * M_PI / 180, a * 5 * M_PI / 180 * 0.10);
    // Root shear is half the lift with the sign of a load carried downwards;
    // the moment grows from each tip to the root.
    EXPECT_NEAR(r[16].shear, -total / 2, 1e-6);
    EXPECT_NEAR(r[15].shear, -total / 2, 1e-6);
    EXPECT_LT(r[16].moment, r[20].moment);
    EXPECT_NEAR(r[31].moment, r[31].shear * w, 1e-12);
    // The elliptic reference carries the same total.
    double ellipse = 0;
    for (const StripRow& s : r) ellipse += s.ellipse * w;
    EXPECT_NEAR(ellipse, total, total * 0.02);
}

TEST(VlmStripsSolver, AileronsFlapsAndTurnsMoveTheLoadingTheRightWay) {
    Bench b;
    rectangle(b.s, 200, 1000);
    setTag(b.s, "1");
    b.s.set(F_VLM::N25, "2");
    using namespace F_GEO_SF;
    b.s.set(T_Ail_PosL, "600");
    b.s.set(T_Ail_PosR, "1000");
    b.s.set(T_Ail_Pourc, "25");
    b.s.set(T_Ail_PourcD, "25");
    b.s.set(T_Flap_PosL, "0");
    b.s.set(T_Flap_PosR, "500");
    b.s.set(T_Flap_Pourc, "25");
    b.s.set(T_Flap_PourcD, "25");
    ASSERT_TRUE(VLM_Strips(b.wb));
    const std::vector<StripRow> flat = b.wb.vlm.strips;

    // Left aileron down (+5), right up (-5): more lift left, less right.
    vlm::Hscroll3_Change(b.wb, 5);
    const std::vector<StripRow>& ail = b.wb.vlm.strips;
    EXPECT_GT(liftOf(ail, 1), liftOf(flat, 1) * 1.05);
    EXPECT_LT(liftOf(ail, 30), liftOf(flat, 30) * 0.95);
    EXPECT_NEAR(ail[1].alpha - flat[1].alpha, 5 * FlapEffectiveness(0.25), 1e-9);
    EXPECT_NEAR(FlapEffectiveness(0.25), 0.61, 0.01);  // the classic plain-flap figure
    EXPECT_EQ(FlapEffectiveness(0), 0);
    vlm::Hscroll3_Change(b.wb, 0);

    // Flaps down on both sides: the inner stations gain, both sides alike.
    vlm::Hscroll2_Change(b.wb, 10);
    const std::vector<StripRow>& flap = b.wb.vlm.strips;
    EXPECT_GT(liftOf(flap, 16), liftOf(flat, 16) * 1.2);
    EXPECT_NEAR(liftOf(flap, 15), liftOf(flap, 16), 1e-6);
    vlm::Hscroll2_Change(b.wb, 0);

    // Banked 30 degrees: the right half, outside the turn, flies faster.
    vlm::Hscroll1_Change(b.wb, 150);
    const std::vector<StripRow>& turn = b.wb.vlm.strips;
    EXPECT_GT(turn[31].speed, 20);
    EXPECT_LT(turn[0].speed, 20);
    EXPECT_GT(liftOf(turn, 31), liftOf(turn, 0));
    expectClean(b.wb);
}

TEST(VlmStripsSolver, StabiliserUsesItsOwnPanelsAndVTailOpening) {
    Bench b;
    rectangle(b.s, 200, 1000);
    setTag(b.s, "2");
    setRow(b.s, grid::kStabRoot, {120});
    setRow(b.s, grid::kStabTip, {90});
    setRow(b.s, grid::kStabLength, {250});
    setRow(b.s, grid::kStabSweep, {20});
    b.s.setListIndex(F_GEO_STAB::b21, 0);  // flat
    ASSERT_TRUE(VLM_Strips(b.wb));
    EXPECT_NEAR(b.wb.vlm.stripsHalfSpan, 0.25, 1e-12);
    EXPECT_NEAR(b.wb.vlm.strips[31].z, 0, 1e-12);
    const double flatLift = liftOf(b.wb.vlm.strips, 20);
    b.s.setListIndex(F_GEO_STAB::b21, 1);  // a V of 120 degrees: each half 30 degrees up
    ASSERT_TRUE(VLM_Strips(b.wb));
    EXPECT_NEAR(b.wb.vlm.stripsHalfSpan, 0.25 * std::cos(30 * PiValue() / 180), 1e-9);
    EXPECT_GT(b.wb.vlm.strips[31].z, 0.1);
    // Each half is loaded normal to itself by the same incidence; leaning
    // apart, the halves wash each other down less.
    EXPECT_GT(liftOf(b.wb.vlm.strips, 20), flatLift);
    // No stabiliser at all: no result and no crash.
    setRow(b.s, grid::kStabLength, {});
    EXPECT_FALSE(VLM_Strips(b.wb));
    EXPECT_TRUE(b.wb.vlm.strips.empty());
}

TEST(VlmPanel, ControlsWriteTheirFieldsWithinTheirLimits) {
    Bench b;
    rectangle(b.s, 200, 800);
    // The aileron slider writes the value left and its negative right.
    vlm::Hscroll3_Change(b.wb, 5);
    EXPECT_EQ(b.s.text(F_VLM::T_Ail_AngL), "5");
    EXPECT_EQ(b.s.text(F_VLM::T_Ail_AngR), "-5");
    vlm::Hscroll2_Change(b.wb, -4);
    EXPECT_EQ(b.s.text(F_VLM::T_Flap_AngL), "-4");
    EXPECT_EQ(b.s.text(F_VLM::T_Flap_AngR), "-4");
    vlm::Hscroll1_Change(b.wb, 160);
    EXPECT_EQ(b.s.text(F_VLM::Text1), "160");

    EXPECT_EQ(b.s.text(F_VLM::B33), "70");
    vlm::Command2_Click(b.wb, 1);
    EXPECT_EQ(b.s.text(F_VLM::B33), "71");
    EXPECT_EQ(b.s.text(F_VLM::N25), "0.1");
    enterField(b.wb, F_VLM::B33, "1");
    vlm::Command2_Click(b.wb, 0);
    EXPECT_EQ(b.s.text(F_VLM::B33), "1");
    EXPECT_EQ(b.s.text(F_VLM::N25), "-6.9");
    enterField(b.wb, F_VLM::B33, "250");
    EXPECT_EQ(b.s.text(F_VLM::B33), "200");
    EXPECT_EQ(b.s.text(F_VLM::N25), "13.0");
    enterField(b.wb, F_VLM::B33, "70");
    EXPECT_EQ(b.s.text(F_VLM::N25), "0.0");

    // Keys on the way to a value leave the field as typed until Enter.
    for (const char* partial : {"", "0", "2"}) {
        b.s.set(F_VLM::Text1, partial);
        onFieldChange(b.wb, F_VLM::Text1);
        EXPECT_EQ(b.s.text(F_VLM::Text1), partial);
    }
    b.s.set(F_VLM::B33, "");
    onFieldChange(b.wb, F_VLM::B33);
    EXPECT_EQ(b.s.text(F_VLM::B33), "");
    onFieldEnter(b.wb, F_VLM::B33);
    EXPECT_EQ(b.s.text(F_VLM::B33), "70");

    // Typed roll and deflections: the slider follows and writes as it does.
    enterField(b.wb, F_VLM::Text1, "120");
    EXPECT_EQ(b.s.text(F_VLM::Hscroll1), "120");
    enterField(b.wb, F_VLM::Text1, "20");
    EXPECT_EQ(b.s.text(F_VLM::Text1), "100");
    enterField(b.wb, F_VLM::T_Ail_AngL, "5");
    EXPECT_EQ(b.s.text(F_VLM::Hscroll3), "5");
    EXPECT_EQ(b.s.text(F_VLM::T_Ail_AngR), "-5");
    enterField(b.wb, F_VLM::T_Ail_AngR, "2");  // the right side alone: the left stays
    EXPECT_EQ(b.s.text(F_VLM::T_Ail_AngL), "5");
    b.s.set(F_VLM::T_Ail_AngL, "-");  // a sign on its own is left as typed
    onFieldChange(b.wb, F_VLM::T_Ail_AngL);
    EXPECT_EQ(b.s.text(F_VLM::T_Ail_AngL), "-");
    EXPECT_EQ(b.s.text(F_VLM::T_Ail_AngR), "2");
    enterField(b.wb, F_VLM::T_Flap_AngR, "");
    EXPECT_EQ(b.s.text(F_VLM::T_Flap_AngR), "0");
}

TEST(VlmPanel, Command1ScalesTheStripsOntoTheLatticeAndReportsTheClRange) {
    Bench b;
    rectangle(b.s, 200, 800);
    setTag(b.s, "0");
    VlmCommand1(b.wb);
    const VlmState& v = b.wb.vlm;
    EXPECT_TRUE(v.strips.empty());  // the strips solver runs only while the panel is open
    ASSERT_EQ(v.charts[0].series.size(), 2u);
    EXPECT_EQ(v.charts[0].series[0].name, " Répartition Portance");
    EXPECT_EQ(v.charts[0].series[1].name, " Répartition Elliptique");
    EXPECT_EQ(v.charts[1].series.at(0).name, " Cl");
    EXPECT_EQ(v.charts[0].series[0].points.size(), 40u);

    OpenVlm(b.wb, VlmSurface::Wing);
    EXPECT_EQ(b.s.text(F_Main::Toolbar2[button::Wizard]), "1");
    ASSERT_EQ(v.strips.size(), 32u);
    ASSERT_EQ(v.scaledLift.size(), 32u);
    // Span onto the lattice's millimetres, peaks onto the lattice's peaks.
    EXPECT_NEAR(v.scaledLift.back().y, v.strips.back().y * 1000, 1e-9);
    double peak = 0, peakCl = 0, lo = 1e9, hi = -1e9;
    for (const VlmRow& r : v.scaledLift) peak = std::max(peak, r.value);
    for (const VlmRow& r : v.scaledCl) peakCl = std::max(peakCl, r.value);
    for (size_t i = 0; i + 1 < v.scaledCl.size(); ++i) {
        lo = std::min(lo, v.scaledCl[i].value);
        hi = std::max(hi, v.scaledCl[i].value);
    }
    double gammaPeak = 0, clPeak = 0;
    for (const VlmRow& r : v.VlmGamma) gammaPeak = std::max(gammaPeak, r.value);
    for (const VlmRow& r : v.VlmCl) clPeak = std::max(clPeak, r.value);
    EXPECT_NEAR(peak, gammaPeak, 1e-12);
    EXPECT_NEAR(peakCl, clPeak, 1e-12);
    // The last row stays out of the range shown.
    EXPECT_EQ(b.s.text(F_VLM::Text2[0]), fixed(lo, 3));
    EXPECT_EQ(b.s.text(F_VLM::Text2[1]), fixed(hi, 3));

    OpenVlm(b.wb, VlmSurface::Stab);
    EXPECT_EQ(b.s.text(F_Main::Toolbar2[button::Wizard]), "2");
    CloseVlm(b.wb);
    EXPECT_EQ(b.s.text(F_Main::Toolbar2[button::Wizard]), "0");
}

TEST(VlmPanel, TheRecalculationRefreshesItByButtonTags) {
    Bench b;
    test::glider(b.wb);
    RecalcAll(b.wb);
    EXPECT_EQ(b.s.text(F_VLM::P25), "-");  // nothing open: nothing computed
    setTag(b.s, "2");  // open on the stabiliser: Tag 2 counts as open
    RecalcAll(b.wb);
    EXPECT_NE(b.s.text(F_VLM::P25), "-");
    EXPECT_NEAR(b.wb.vlm.stripsHalfSpan, 0.25, 1e-9);
    // The performance panel runs the lattice but not the strips.
    setTag(b.s, "0");
    b.s.set(F_VLM::P25, "x");
    b.wb.setOpen(button::Performances, true);
    RecalcAll(b.wb);
    EXPECT_NE(b.s.text(F_VLM::P25), "x");
    EXPECT_TRUE(b.wb.vlm.strips.empty());
}

TEST(VlmPanel, BadGeometryShowsDashesAndNeverInfOrNan) {
    Bench b;
    setTag(b.s, "1");
    // Zero span.
    rectangle(b.s, 200, 0);
    VlmCommand1(b.wb);
    EXPECT_EQ(b.s.text(F_VLM::P25), "-");
    EXPECT_EQ(b.s.text(F_VLM::S25), "-");
    EXPECT_EQ(b.s.text(F_VLM::Text2[0]), "-");
    EXPECT_TRUE(b.wb.vlm.VlmCl.empty());
    EXPECT_TRUE(b.wb.vlm.strips.empty());
    expectClean(b.wb);
    // Zero chords with a span.
    rectangle(b.s, 0, 500);
    b.s.set(F_GEO_SF::b5, "0.0001");  // a panel counts while its root is above 0
    setRow(b.s, grid::kTip, {0});
    VlmCommand1(b.wb);
    expectClean(b.wb);
    // One panel with a zero tip.
    rectangle(b.s, 200, 500);
    setRow(b.s, grid::kTip, {0});
    VlmCommand1(b.wb);
    EXPECT_EQ(b.wb.vlm.VlmCl.size(), 40u);
    expectClean(b.wb);
    // A panel of zero length after a real one.
    setRow(b.s, grid::kRoot, {200, 180});
    setRow(b.s, grid::kTip, {180, 150});
    setRow(b.s, grid::kLength, {500, 0});
    VlmCommand1(b.wb);
    EXPECT_EQ(b.wb.vlm.VlmCl.size(), 40u);
    EXPECT_EQ(b.wb.vlm.strips.size(), 32u);
    expectClean(b.wb);
    // The stabiliser asked for where there is none.
    setTag(b.s, "2");
    setRow(b.s, grid::kStabLength, {});
    VlmCommand1(b.wb);
    EXPECT_TRUE(b.wb.vlm.strips.empty());
    expectClean(b.wb);
}

struct CliRun {
    int status = 0;
    std::string out, err;
};

CliRun runVlm(const test::TempDir& home, std::vector<std::string> extra) {
    std::vector<std::string> args{"vlm", (home.path() / "MODELES" / "DEMO.MDL").string(), "--home",
                                  home.path().string()};
    args.insert(args.end(), extra.begin(), extra.end());
    std::ostringstream out, err;
    CliRun r;
    r.status = runCli(args, TARVOKIN_CLI, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> l;
    std::istringstream in(text);
    for (std::string s; std::getline(in, s);) l.push_back(s);
    return l;
}

TEST(CliVlm, PrintsTheFiguresThenBothTablesAsCsv) {
    test::TempDir home;
    test::copyInstallation(home.path());
    const CliRun r = runVlm(home, {"--set", "F_VLM.B33=80", "--set", "F_VLM.Hscroll3=4"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::vector<std::string> l = lines(r.out);
    ASSERT_EQ(l.size(), 5u + 2 + 40 + 2 + 32);
    EXPECT_EQ(l[0], "F_VLM.N25=1.0");
    EXPECT_EQ(l[1].rfind("F_VLM.P25=0.", 0), 0u) << l[1];
    EXPECT_EQ(l[2].rfind("F_VLM.S25=0.", 0), 0u) << l[2];
    EXPECT_EQ(l[3].rfind("F_VLM.Text2(0)=", 0), 0u);
    EXPECT_EQ(l[4].rfind("F_VLM.Text2(1)=", 0), 0u);
    EXPECT_EQ(l[5], "# CalcVLM");
    EXPECT_EQ(l[6], "i,y,Cl,Gamma,Ellipse");
    EXPECT_EQ(l[7].rfind("0,-", 0), 0u);
    EXPECT_EQ(l[47], "# VLM_Strips");
    EXPECT_EQ(l[48], "i,y,Lift,Shear,Moment");
    EXPECT_EQ(l.back().rfind("31,", 0), 0u);
    // Ailerons 4 degrees: the strips are no longer symmetric, the lattice is.
    EXPECT_NE(l[49].substr(l[49].find(',', 2)), l[80].substr(l[80].find(',', 3)));
    EXPECT_EQ(r.out.find("nan"), std::string::npos);
}

TEST(CliVlm, StabiliserOptionAndTheFieldsOfTheOpenPanel) {
    test::TempDir home;
    test::copyInstallation(home.path());
    const CliRun stab = runVlm(home, {"--stab"});
    ASSERT_EQ(stab.status, 0) << stab.err;
    const std::vector<std::string> l = lines(stab.out);
    ASSERT_EQ(l.size(), 81u);
    EXPECT_EQ(l[49].rfind("0,-0.27", 0), 0u) << l[49];  // the demo's stabiliser: 280 mm a side

    std::ostringstream out, err;
    ASSERT_EQ(runCli({"fields", (home.path() / "MODELES" / "DEMO.MDL").string(), "--home", home.path().string(),
                      "--open", "29"},
                     TARVOKIN_CLI, out, err),
              0)
        << err.str();
    EXPECT_NE(out.str().find("F_Main.Toolbar2(29).Tag=1\n"), std::string::npos);
    EXPECT_NE(out.str().find("F_VLM.P25=0.2935462\n"), std::string::npos);
    EXPECT_NE(out.str().find("F_VLM.Caption=Géométrie VLM\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvokin

// The aspect-ratio panel: sweep ranges and best rows, the analytic polar, the
// panel's figures against hand values, bad input, charts, trace and controls.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "entry/entry_path.h"
#include "design/aspect_ratio.h"
#include "entry/field_rules.h"
#include "design/recalc.h"
#include "designs.h"
#include "shell/cli.h"
#include "entry/window_logic.h"

namespace tarvokin {
namespace {

using test::Bench;

// Three named airfoils whose analytic polars differ; no polar file anywhere.
void threeAirfoils(Sheet& s) {
    const char* names[3] = {"AAA", "BBB", "CCC"};
    const char* cx0[3] = {"0.008", "0.01", "0.012"};
    for (int i = 0; i < 3; ++i) {
        s.setItems(F_PROFILS::CB_1[i], {names[i]});
        s.setListIndex(F_PROFILS::CB_1[i], 0);
        s.set(F_PROFILS::T_CXMin[i], cx0[i]);
        s.set(F_PROFILS::T_CzOpt[i], "0.5");
        s.set(F_PROFILS::T_k[i], "0.02");
        s.set(F_PROFILS::T_Cz_Decroch[i], "1.1");
    }
}

using Cells = std::initializer_list<std::pair<Cell, const char*>>;

bool allFinite(const AspectRatioState& st) {
    for (const ChartData& c : st.charts)
        for (const ChartSeries& sr : c.series)
            for (const ChartPoint& p : sr.points)
                if (!std::isfinite(p.x) || !std::isfinite(p.y)) return false;
    return true;
}

TEST(AspectRatioSweep, RangesFollowTheFlightCzIndexWhateverTheAirfoil) {
    EXPECT_EQ(AspectRatioRange(0.1 + 0.1 + 0.1).last, 25);  // 0.30000000000000004 is the third tenth
    EXPECT_EQ(AspectRatioRange(1.0).first, 9);
    EXPECT_EQ(AspectRatioRange(1.1).last, 40);

    Bench b;
    threeAirfoils(b.s);
    MajAllongement(b.wb);
    for (bool analytic : {false, true}) {  // empty polars, then the analytic polar
        const auto rows = FinesseAllongement(ReadAspectInputs(b.wb, analytic), 0.1);
        ASSERT_EQ(rows.size(), 14u);
        EXPECT_EQ(rows.front().A, 1);
        EXPECT_EQ(rows.back().A, 14);
    }
    // One row by hand: area 40, mass 600 g, A 4 at Cz 0.5.
    const auto rows = FinesseAllongement(ReadAspectInputs(b.wb, true), 0.5);
    const AllongementPoint& r = rows.front();
    EXPECT_EQ(r.A, 4);
    EXPECT_NEAR(r.Corde, 316.2277660, 1e-6);
    EXPECT_DOUBLE_EQ(r.CzProfil, 0.75);
    EXPECT_DOUBLE_EQ(r.VMini, 6.928);  // sqrt(48) to 3 decimals
    EXPECT_EQ(r.ReMini, 146055);
    EXPECT_DOUBLE_EQ(r.CxInduitMini, 0.0198971);
}

TEST(AspectRatioSweep, HighestAspectRatioWinsAmongEqualRoundedGlideRatios) {
    auto row = [](double a, double f0, double f3) {
        AllongementPoint p;
        p.A = a;
        p.VMini = a / 10;
        p.FinesseMini = {f0, f0, f0};
        p.FinesseMaxi = {f3, f3, f3};
        return p;
    };
    const double nan = std::nan("");
    CzPoint p = BestOfSweep(0.4, {row(8, 20.00000004, 1), row(9, 19.9, 2), row(10, 20.00000001, nan),
                                  row(11, 19.99999, 3), row(12, nan, 2)});
    EXPECT_EQ(p.A[0], 10);  // 20.0000000 both: the later row
    EXPECT_DOUBLE_EQ(p.SourceVMini[0], 1.0);
    EXPECT_EQ(p.A[3], 11);

    // Only the first curve's best decides the flag, and only past 30.
    EXPECT_TRUE(BestOfSweep(0.6, {row(30, 10, 10), row(31, 11, 9)}).unbounded);
    EXPECT_FALSE(BestOfSweep(0.6, {row(29, 10, 9), row(30, 11, 9)}).unbounded);
    EXPECT_FALSE(BestOfSweep(0.6, {row(10, 12, 1), row(35, 11, 9)}).unbounded);
    EXPECT_TRUE(std::isnan(BestOfSweep(0.6, {row(5, nan, nan)}).A[0]));
}

TEST(AnalyticPolar, StallOnsetAndTruncatedCubicPenalty) {
    EXPECT_DOUBLE_EQ(StallOnset(0), 1.25);
    EXPECT_DOUBLE_EQ(StallOnset(1.3), 1.25);
    EXPECT_DOUBLE_EQ(StallOnset(0.8), 0.75);
    EXPECT_DOUBLE_EQ(StallOnset(1.25), 1.2);
    const AnalyticPolar p{0.01, 0.4, 0.02, 0.8};  // CzD 0.75
    EXPECT_DOUBLE_EQ(AnalyticCx(p, 0.7, 200000), 0.0118);           // below: the parabola alone
    EXPECT_DOUBLE_EQ(AnalyticCx(p, 0.7, 800000), 0.0059);           // sqrt(200000 / Re)
    EXPECT_NEAR(AnalyticCx(p, 1.25, 200000), 0.02445 * 9, 1e-12);   // 1 + 2³ x 1
    EXPECT_NEAR(AnalyticCx(p, 1.75, 200000), 0.04645 * 129, 1e-9);  // CzD + 1: 1 + 4³ x 2
    const AnalyticPolar unset{0.01, 0.4, 0.02, 0};                   // stall Cz 0: onset 1.25
    EXPECT_DOUBLE_EQ(AnalyticCx(unset, 1.2, 200000), 0.01 + 0.02 * 0.64);
    EXPECT_NEAR(AnalyticCx(unset, 1.5, 200000), (0.01 + 0.02 * 1.21) * 2, 1e-12);
    EXPECT_TRUE(std::isnan(AnalyticCx(p, 0.5, 0)));

    EXPECT_DOUBLE_EQ(InterpolateRe(0.01, 0.006, 200000), 0.01);
    EXPECT_DOUBLE_EQ(InterpolateRe(0.01, 0.006, 1500000), 0.006);
    EXPECT_NEAR(InterpolateRe(0.01, 0.006, 850000), 0.008, 1e-15);
    EXPECT_EQ(PolarAtReynolds(p, AnalyticPolar{0.006, 0.3, 0.01, 1.2}, 1500000).CzDecroch, 0.8);

    // The high end is the slot's 1500000 polar once it has been read.
    Bench b;
    threeAirfoils(b.s);
    EXPECT_EQ(ReadAspectInputs(b.wb, true).at1500[1].Cx0, 0.01);
    PolarRecord& r = b.wb.polars.Polars[1][5];
    r.LastRow = 40;
    r.Cxmin = 0.005;
    EXPECT_EQ(ReadAspectInputs(b.wb, true).at1500[1].Cx0, 0.005);
}

TEST(MajAllongement, PanelFiguresAgainstHandValues) {
    Bench b;
    threeAirfoils(b.s);
    using namespace F_ALLONGEMENT;
    for (auto [c, v] : Cells{{B10, "10"}, {b15, "72"}, {b16, "0.5"}, {b17, "180"}}) b.s.set(c, v);
    MajAllongement(b.wb);
    // Radius 2 m / (Cz 1.293 S) = 4.640 and 8.507 m, half a turn pi R; 51.72 N of lift at 20 m/s.
    for (auto [c, v] : Cells{{Label7[2], "CCC"}, {b6, "15.00"}, {c6, "27.50"}, {b11, "2000"}, {b12, "254"},
                             {b18, "4.6"}, {c18, "8.5"}, {b19, "14.6"}, {c19, "26.7"}, {b20, "5.3"}})
        EXPECT_EQ(b.s.text(c), v) << cellPath(c);
}

TEST(MajAllongement, BadInputGivesDashesAndFiniteCharts) {
    using namespace F_ALLONGEMENT;
    struct Case {
        Cell cell;
        const char* text;
        std::vector<Cell> dashes;
    };
    const Case cases[] = {{B4, "0", {b6, c6, b18, c18, b19, c19}},
                          {B4, "", {b6, c6, b11, b12, b18, b20}},
                          {B10, "0", {b12}},
                          {b16, "0", {b18, c18, b19, c19}},
                          {b5, "0", {}}};
    for (bool analytic : {false, true}) {
        for (const Case& k : cases) {
            Bench b;
            threeAirfoils(b.s);  // named airfoils, no polars read
            b.s.set(Option1[0], analytic ? "0" : "1");
            b.s.set(k.cell, k.text);
            ASSERT_NO_THROW(MajAllongement(b.wb)) << k.text;
            for (Cell c : k.dashes) EXPECT_EQ(b.s.text(c), "-") << cellPath(c) << " after " << cellPath(k.cell);
            EXPECT_TRUE(allFinite(b.wb.aspectRatio));
        }
    }
}

TEST(AspectRatioCharts, SeriesStylesLimitsAndMarkers) {
    Bench b;
    threeAirfoils(b.s);
    b.s.set(F_ALLONGEMENT::Check2[1], "0");
    b.s.set(F_ALLONGEMENT::T_MAX_G3, "33");
    b.s.set(F_GEO_SF_REGLAGES::F29, "0.45");
    MajAllongement(b.wb);
    const auto& ch = b.wb.aspectRatio.charts;
    EXPECT_EQ(ch[4].title, "Finesse Aile en virage serré / Allongement");
    EXPECT_EQ(ch[2].yMax, 33);
    ASSERT_EQ(ch[0].series.size(), 2u);
    for (int k = 1; k < 5; ++k) {
        const ChartData& c = ch[k];
        ASSERT_EQ(c.series.size(), 4u) << c.title;  // the second airfoil is left out
        EXPECT_EQ(c.series[3].name, "CCC masse maxi");
        EXPECT_EQ(c.series[3].colour, (Rgb{0, 255, 0}));
        EXPECT_EQ(c.series[3].style, linestyle::Dashed);
        EXPECT_EQ(c.series[0].points.size(), k == 4 ? 63u : 19u);  // smoothed
        int points = 0;
        for (const ChartMarker& m : c.markers) {
            if (m.kind == ChartMarker::Kind::VerticalLine) {
                EXPECT_DOUBLE_EQ(m.x, k == 4 ? 12 : 0.45);
                continue;
            }
            const ChartSeries& sr = c.series[static_cast<size_t>(points++)];
            EXPECT_EQ(m.size, 13);
            EXPECT_EQ(m.colour, sr.colour);
            if (k != 2) {
                double top = sr.points[0].y;
                for (const ChartPoint& p : sr.points) top = std::max(top, p.y);
                EXPECT_EQ(m.y, top);
            }
        }
        EXPECT_EQ(points, 4);
    }
    // Without polars the wing is best at the end of each sweep: from Cz 0.4 the
    // optimum passes 30 and those rows no longer carry the maximum.
    b.s.set(F_ALLONGEMENT::Option1[0], "1");
    MajAllongement(b.wb);
    const ChartData& optimal = b.wb.aspectRatio.charts[2];
    EXPECT_EQ(b.wb.aspectRatio.czRows[0].A[0], 14);
    EXPECT_TRUE(b.wb.aspectRatio.czRows[3].unbounded);
    EXPECT_EQ(optimal.series[0].points.back().y, 35);
    EXPECT_LT(optimal.markers[0].y, 30);
}

TEST(AspectRatioTrace, VerifTxtIsRewrittenAtEachRunAndNeverRequired) {
    Bench b;
    threeAirfoils(b.s);
    const auto file = b.dir / "verif.txt";
    test::writeBytes(file, std::string(100000, 'x'));
    MajAllongement(b.wb);
    auto lines = [&] {
        std::vector<std::string> out;
        std::istringstream in(test::readBytes(file));
        for (std::string l; std::getline(in, l);) out.push_back(l);
        return out;
    };
    const auto first = lines();
    ASSERT_EQ(first.size(), 60u);  // 6 curves x 10 flight Cz
    EXPECT_EQ(first[0].rfind("0.1;", 0), 0u);
    EXPECT_EQ(first[0].substr(first[0].rfind(';')), ";15.492");  // VMini at Cz 0.1, 15 g/dm²
    b.s.set(F_ALLONGEMENT::Check2[0], "0");
    b.s.set(F_ALLONGEMENT::Check2[2], "0");
    MajAllongement(b.wb);
    EXPECT_EQ(lines().size(), 20u);

    // An installation folder that cannot take the file changes nothing else.
    test::TempDir dir;
    test::writeBytes(dir / "plain", "");
    Workbench wb(dir / "plain");
    InstallWindowLogic(wb);
    threeAirfoils(wb.sheet);
    ASSERT_NO_THROW(MajAllongement(wb));
    EXPECT_EQ(wb.aspectRatio.charts[3].series.size(), 6u);
}

TEST(AspectRatioWindow, ControlsAndEntriesRefreshThePanel) {
    Bench b;
    threeAirfoils(b.s);
    using namespace F_ALLONGEMENT;
    b.s.set(B10, "39.5");
    allongement::Command1_Click(b.wb, 1);
    allongement::Command1_Click(b.wb, 1);
    EXPECT_EQ(b.s.text(B10), "40");
    EXPECT_EQ(b.s.text(b11), "4000");
    b.s.set(B10, "1.5");
    allongement::Command1_Click(b.wb, 0);
    allongement::Command1_Click(b.wb, 0);
    EXPECT_EQ(b.s.text(B10), "1");
    b.s.set(HScroll2, "125");
    allongement::CellChanged(b.wb, HScroll2);
    EXPECT_EQ(b.s.text(b16), "1.25");
    EXPECT_EQ(b.s.text(b18), "1.9");  // 1.2 / (1.25 x 1.293 x 0.4)
    enterField(b.wb, b15, "500");
    EXPECT_EQ(b.s.text(HScroll1), "200");
    enterField(b.wb, B4, "");
    EXPECT_EQ(b.s.text(B4), "0");
    EXPECT_EQ(b.s.text(b6), "-");
    EXPECT_EQ(entryCheckOf(T_MAX_G5), EntryCheck::Decimal);

    EXPECT_FALSE(b.wb.aspectRatio.analytic);
    enterField(b.wb, Option1[1], "1");
    EXPECT_EQ(b.s.text(Option1[0]), "0");
    EXPECT_TRUE(b.wb.aspectRatio.analytic);
}

TEST(AspectRatioPanel, RefreshedByTheMasterRecalculationWhileOpen) {
    Bench b;
    test::glider(b.wb);
    RecalcAll(b.wb);
    EXPECT_EQ(b.s.text(F_ALLONGEMENT::b6), "0");
    b.wb.setOpen(button::Allongement, true);
    RecalcAll(b.wb);
    EXPECT_EQ(b.s.text(F_ALLONGEMENT::b6), "15.00");

    // The command-line program reaches it the same way.
    test::TempDir home;
    test::copyInstallation(home.path());
    std::ostringstream out, err;
    const std::string demo = (home.path() / "MODELES" / "DEMO.MDL").string();
    ASSERT_EQ(runCli({"fields", demo, "--home", home.path().string(), "--open", "18"}, TARVOKIN_CLI, out, err), 0)
        << err.str();
    const std::string text = out.str();
    for (const char* line :
         {"F_ALLONGEMENT.b6=15.00\n", "F_ALLONGEMENT.b11=2190\n", "F_ALLONGEMENT.Label7(0)=CLARKY\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
    EXPECT_FALSE(test::readBytes(home.path() / "verif.txt").empty());
}

}  // namespace
}  // namespace tarvokin

// The rib generator: span positions, the blending of the root and tip
// outlines, the alignment, the window's handlers and the ribs command.
#include <gtest/gtest.h>

#include <sstream>

#include "airfoils/ribs.h"
#include "airfoils/ribs_panel.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "shell/cli.h"
#include "support/installed_workbench.h"
#include "support/temp_dir.h"

namespace tarvokin {
namespace {

// A closed diamond of n + 1 points (n even), trailing edge first, unit chord.
OutlinePoints diamond(int n, double h) {
    OutlinePoints p;
    for (int i = 0; i <= n; ++i) {
        const double s = static_cast<double>(i) / n;  // 0 .. 1 round the outline
        const double x = s < 0.5 ? 1 - 2 * s : 2 * s - 1;
        const double y = (s < 0.5 ? h : -h) * (1 - std::fabs(2 * x - 1));
        p.push_back({x, y});
    }
    return p;
}

std::vector<RibOutline> build(RibRequest r) {
    std::vector<RibOutline> out;
    std::string error;
    EXPECT_TRUE(BuildRibs(r, out, error)) << error;
    return out;
}

TEST(RibPositions, EvenlySpreadOrEverySpacingFromTheRoot) {
    EXPECT_EQ(RibPositions(600, 4, 0), (std::vector<double>{0, 200, 400, 600}));
    EXPECT_EQ(RibPositions(600, 1, 0), (std::vector<double>{0}));  // a single rib is the root
    EXPECT_EQ(RibPositions(500, 9, 150), (std::vector<double>{0, 150, 300, 450}));
    EXPECT_EQ(RibPositions(450, 9, 150), (std::vector<double>{0, 150, 300, 450}));
    // 0.1 steps that add up to the span a hair beyond it still reach the tip.
    EXPECT_EQ(RibPositions(0.3, 0, 0.1).size(), 4u);
}

TEST(Ribs, EqualCountsBlendPointByPointWithoutResampling) {
    RibRequest r;
    r.root = diamond(20, 0.10);
    r.tip = diamond(20, 0.06);
    r.rootChord = 200;
    r.tipChord = 100;
    r.span = 400;
    r.count = 3;
    const auto ribs = build(r);
    ASSERT_EQ(ribs.size(), 3u);
    for (size_t i = 0; i < r.root.size(); ++i) {
        EXPECT_DOUBLE_EQ(ribs[0].points[i].y, r.root[i].y * 200);
        EXPECT_DOUBLE_EQ(ribs[2].points[i].y, r.tip[i].y * 100);
        // Half way: the mean of the unit outlines, at the mean chord 150.
        EXPECT_NEAR(ribs[1].points[i].y, (r.root[i].y + r.tip[i].y) / 2 * 150, 1e-12);
    }
    EXPECT_DOUBLE_EQ(ribs[1].position, 200);
    EXPECT_DOUBLE_EQ(ribs[1].chord, 150);
}

TEST(Ribs, TheShorterOutlineIsResampledToTheLongerCount) {
    RibRequest r;
    r.root = diamond(40, 0.1);
    r.tip = diamond(10, 0.1);
    r.count = 2;
    auto ribs = build(r);
    ASSERT_EQ(ribs[1].points.size(), 41u);
    // The spline through the diamond keeps its ends and its nose.
    EXPECT_NEAR(ribs[1].points.front().x, r.tipChord, 1e-9);
    EXPECT_NEAR(ribs[1].points.back().x, r.tipChord, 1e-9);
    double nose = 1e9;
    for (const OutlinePoint& p : ribs[1].points) nose = std::min(nose, p.x);
    EXPECT_NEAR(nose, 0, 0.5);
    std::swap(r.root, r.tip);  // the other way round
    ribs = build(r);
    EXPECT_EQ(ribs[0].points.size(), 41u);
}

TEST(Ribs, AlignmentPlacesEachRibAlongTheChord) {
    RibRequest r;
    r.root = r.tip = diamond(10, 0.1);
    r.rootChord = 200;
    r.tipChord = 120;
    r.span = 300;
    r.count = 2;
    const double expected[ribs::kAlignments] = {0, 80, 40, 20};  // tip leading edge behind the root's
    for (int a = 0; a < ribs::kAlignments; ++a) {
        r.align = a;
        const auto made = build(r);
        double nose = 1e9;
        for (const OutlinePoint& p : made[1].points) nose = std::min(nose, p.x);
        EXPECT_NEAR(nose, expected[a], 1e-9) << RibAlignCaption(a);
        EXPECT_NEAR(made[0].points[0].x, 200, 1e-9);
    }
    EXPECT_STREQ(RibAlignCaption(ribs::Trapeze), "Trapeze");
}

TEST(Ribs, BadInputIsRefused) {
    std::vector<RibOutline> out{RibOutline{}};
    std::string error;
    RibRequest r;
    EXPECT_FALSE(BuildRibs(r, out, error));  // no outline at all
    r.root = diamond(10, 0.1);               // one end only: both ends take it
    r.count = 2;
    EXPECT_TRUE(BuildRibs(r, out, error));
    using Spoil = void (*)(RibRequest&);
    for (Spoil bad : std::initializer_list<Spoil>{[](RibRequest& q) { q.rootChord = 0; }, [](RibRequest& q) { q.tipChord = NAN; },
                     [](RibRequest& q) { q.count = 0; }, [](RibRequest& q) { q.span = -1; },
                     [](RibRequest& q) { q.spacing = 0.001; }}) {
        RibRequest q = r;
        bad(q);
        EXPECT_FALSE(BuildRibs(q, out, error));
        EXPECT_FALSE(error.empty());
    }
}

TEST(Ribs, FilesOneARibAndNothingHalfWritten) {
    test::TempDir dir;
    RibRequest r;
    r.root = r.tip = diamond(4, 0.1);
    r.count = 2;
    const auto ribs = build(r);
    std::string error;
    EXPECT_EQ(WriteRibFiles(dir / "aile.DAT", ribs, error), "Les fichiers aile_xx.DAT ont été générés");
    EXPECT_EQ(test::readBytes(dir / "aile_1.DAT").substr(0, 26), "200.0000000 0.0000000\n100.");
    EXPECT_FALSE(test::readBytes(dir / "aile_2.DAT").empty());
    // A second rib that cannot be written: the message names it, the first
    // file is whole, and no temporary file is left beside them.
    std::filesystem::create_directory(dir / "bad_2.DAT");
    EXPECT_EQ(WriteRibFiles(dir / "bad", ribs, error), "");
    EXPECT_NE(error.find("bad_2.DAT"), std::string::npos);
    EXPECT_EQ(test::readBytes(dir / "bad_1.DAT"), RibFileText(ribs[0]));
    int files = 0;
    for (auto& e : std::filesystem::directory_iterator(dir.path())) files += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 3);
}

struct RibsWindow : ::testing::Test {
    test::TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    void SetUp() override {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
    }
    void choose(int end, const std::string& name) {
        Action a{Act::Change, "F_RIBS", "CB_1", end};
        a.text = name;
        Perform(wb, a);
    }
};

TEST_F(RibsWindow, EveryFieldRemakesTheRibsAndAMissingFileKeepsItsEnd) {
    choose(0, "CLARKY");
    choose(1, "MH32");
    ASSERT_EQ(wb.generators.ribs.size(), 5u);
    const size_t points = std::max(wb.generators.ribRoot.size(), wb.generators.ribTip.size());
    EXPECT_EQ(wb.generators.ribs[0].points.size(), points);
    enterField(wb, F_RIBS::Text5, "120");  // spacing: 0, 120 .. 480 over 500 mm
    EXPECT_EQ(wb.sheet.text(F_RIBS::Text4), "5");
    enterField(wb, F_RIBS::Text3, "600");
    EXPECT_EQ(wb.sheet.text(F_RIBS::Text4), "6");
    EXPECT_EQ(wb.generators.ribs.size(), 6u);

    // The tip's file goes missing: the tip keeps its outline, the run goes on.
    const OutlinePoints tip = wb.generators.ribTip;
    std::filesystem::remove(dir / "DATA/MH45.DAT");
    choose(1, "MH45");
    EXPECT_EQ(wb.generators.ribTip, tip);
    EXPECT_NE(wb.sheet.text(F_RIBS::StatusBar1).find("MH45"), std::string::npos);
    EXPECT_EQ(wb.generators.ribs.size(), 6u);

    // Bad figures keep the ribs there were, with the reason.
    enterField(wb, F_RIBS::Text1, "abc");
    EXPECT_FALSE(wb.sheet.text(F_RIBS::StatusBar1).empty());
    EXPECT_EQ(wb.generators.ribs.size(), 6u);

    // The 2D read-out of a rib.
    Action hover{Act::Move, "F_RIBS", "Picture2", 0};
    Perform(wb, hover);
    EXPECT_EQ(wb.sheet.text(F_RIBS::L_NERVURE).substr(0, 11), "L: 200.0 mm");
}

TEST(RibsCommand, WritesOneFileARibAndSaysSo) {
    test::TempDir home, out;
    std::ostringstream o, e;
    int st = runCli({"ribs", "--root", "CLARKY", "--tip", "MH32", "--root-chord", "200", "--tip-chord", "150",
                     "--span", "450", "--count", "1", "--spacing", "150", "--align", "2", "--out",
                     (out / "rib").string(), "--home", home.path().string()},
                    TARVOKIN_CLI, o, e);
    ASSERT_EQ(st, 0) << e.str();
    EXPECT_EQ(o.str(), "Les fichiers rib_xx.DAT ont été générés\n");
    EXPECT_FALSE(test::readBytes(out / "rib_4.DAT").empty());
    EXPECT_TRUE(test::readBytes(out / "rib_5.DAT").empty());

    std::ostringstream o2, e2;
    st = runCli({"ribs", "--root", "CLARKY", "--tip", "CLARKY", "--root-chord", "200", "--tip-chord", "150",
                 "--span", "450", "--count", "1", "--out", (out / "nowhere/sub/rib").string(), "--home",
                 home.path().string()},
                TARVOKIN_CLI, o2, e2);
    EXPECT_EQ(st, 1);
    EXPECT_NE(e2.str().find("Impossible d'écrire"), std::string::npos);
}

}  // namespace
}  // namespace tarvokin

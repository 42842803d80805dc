// The frame outline file (runs, repeats, scale, base-line guard, name rule,
// doubling) and the frame project (.CVB): round trip and bad files.
#include <gtest/gtest.h>

#include <sstream>

#include "construction/frame_curve.h"
#include "construction/frame_files.h"
#include "support/temp_dir.h"

namespace tarvokin {
namespace {

using test::TempDir;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string l; std::getline(in, l);) out.push_back(l);
    return out;
}

// A frame whose curve point i stands at x = 100 + i, y = 200 + i: each
// written line names the index it came from.
FrameState indexedFrame(int n) {
    FrameState f;
    f.PointCount = n;
    f.AxeX = 0;
    f.BaseLineY = 0;
    for (int i = 0; i < n; ++i) {
        f.CurveRight.push_back({52.389 * (100 + i), -52.389 * (200 + i), 0});
        f.CurveLeft.push_back({52.389 * (300 + i), -52.389 * (400 + i), 0});
    }
    return f;
}

std::string expectedLine(bool right, int i) {
    const int x = (right ? 100 : 300) + i, y = (right ? 200 : 400) + i;
    return std::to_string(x) + ".0000000 " + std::to_string(y) + ".0000000";
}

std::vector<std::string> expectedRuns(int n) {
    const int m = (n - 1) / 2;
    std::vector<std::string> e;
    for (int i = m; i >= 0; --i) e.push_back(expectedLine(true, i));
    for (int i = 0; i <= m; ++i) e.push_back(expectedLine(false, i));
    for (int i = m; i <= n - 1; ++i) e.push_back(expectedLine(false, i));
    for (int i = n - 1; i >= m; --i) e.push_back(expectedLine(true, i));
    return e;
}

TEST(FrameOutline, FourRunsFromTheMiddleWithTheirRepeatsForTwelveEvenAndOdd) {
    for (int n : {12, 2, 13, 3}) {
        const FrameState f = indexedFrame(n);
        const std::vector<std::string> got = linesOf(FrameOutlineText(f));
        EXPECT_EQ(got, expectedRuns(n)) << "N = " << n;
    }
    // N = 12: the middle rounds down to 5; a run that goes on in the same
    // array repeats its start, and the loop closes on its first point.
    const std::vector<std::string> twelve = linesOf(FrameOutlineText(indexedFrame(12)));
    ASSERT_EQ(twelve.size(), 26u);
    EXPECT_EQ(twelve[0], expectedLine(true, 5));
    EXPECT_EQ(twelve[11], twelve[12]);
    EXPECT_EQ(twelve[0], twelve[25]);
}

TEST(FrameOutline, DoublingAppendsTheInnerContourWithNoSeparator) {
    FrameState f = indexedFrame(5);
    f.DoubledRight = f.CurveRight;
    f.DoubledLeft = f.CurveLeft;
    for (FramePoint& p : f.DoubledRight) p.x += 52.389;
    for (FramePoint& p : f.DoubledLeft) p.x += 52.389;
    const std::vector<std::string> plainLines = linesOf(FrameOutlineText(f));
    f.Doubling = true;
    const std::vector<std::string> both = linesOf(FrameOutlineText(f));
    ASSERT_EQ(both.size(), 2 * plainLines.size());
    for (size_t i = 0; i < plainLines.size(); ++i) EXPECT_EQ(both[i], plainLines[i]);
    EXPECT_EQ(both[plainLines.size()], "103.0000000 202.0000000");  // right index 2 of the inner curve
    // Doubling asked for with no doubled curve writes nothing rather than half a frame.
    f.DoubledLeft.clear();
    EXPECT_EQ(FrameOutlineText(f), "");
}

TEST(FrameOutline, ScaleSignsAndTheBaseLineGuard) {
    FrameState f;
    f.PointCount = 1;
    f.BaseLineY = 480;
    // On the base line: taken one pixel above, 1 / 52.389.
    f.CurveRight = f.CurveLeft = {{104.778, 480, 0}};
    EXPECT_EQ(linesOf(FrameOutlineText(f)).front(), "2.0000000 0.0190880");
    // Below the base line the height is negative; left of x = 0 the width too.
    f.CurveRight = f.CurveLeft = {{-52.389, 480 + 26.1945, 0}};
    EXPECT_EQ(linesOf(FrameOutlineText(f)).front(), "-1.0000000 -0.5000000");
    EXPECT_EQ(FrameNumber(0.00000001), "0.0000000");
    EXPECT_EQ(FrameNumber(-0.00000001), "0.0000000");
    EXPECT_EQ(FrameNumber(12.5), "12.5000000");
}

TEST(FrameOutline, NameRuleAppendsDatOnlyWithoutADot) {
    EXPECT_EQ(OutlineFileName("/tmp/couple"), "/tmp/couple.DAT");
    EXPECT_EQ(OutlineFileName("couple.txt"), "couple.txt");
    EXPECT_EQ(OutlineFileName("couple."), "couple.");
    EXPECT_EQ(OutlineFileName("c.dat"), "c.dat");
}

TEST(FrameOutline, WritesInPlaceOrLeavesNothingHalfWritten) {
    TempDir dir;
    FrameState f;
    InitFrameGenerator(f);
    std::string written, error;
    ASSERT_TRUE(SaveFrameOutline(f, (dir / "couple").string(), written, error)) << error;
    EXPECT_EQ(written, (dir / "couple.DAT").string());
    EXPECT_EQ(test::readBytes(dir / "couple.DAT"), FrameOutlineText(f));

    // A cancelled dialog writes nothing and is no failure.
    EXPECT_TRUE(SaveFrameOutline(f, "", written, error));
    EXPECT_EQ(written, "");

    // A folder that does not exist: a message, and no file.
    const auto target = dir / "absent" / "couple.DAT";
    EXPECT_FALSE(SaveFrameOutline(f, target.string(), written, error));
    EXPECT_NE(error.find("couple.DAT"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(target));

    // A frame with no curve: a message, and the file already there stays whole.
    test::writeBytes(dir / "old.DAT", "1 2\n");
    f.PointCount = 0;
    EXPECT_FALSE(SaveFrameOutline(f, (dir / "old.DAT").string(), written, error));
    EXPECT_EQ(test::readBytes(dir / "old.DAT"), "1 2\n");
}

TEST(FrameProject, RoundTripGivesBackWhatWasSaved) {
    TempDir dir;
    FrameState f;
    InitFrameGenerator(f);
    f.PointCount = 37;
    f.CurveOrder = 4;
    f.Thickness = 7.25;
    f.Doubling = true;
    f.Slaved = false;
    f.ControlPoints[3] = {401.125, 250.5, 0};
    ApplyDoubling(f);
    f.DoubledControl[6] = {390.75, 410.0625, 0};  // moved on its own in the decoupled mode
    std::string error, warning;
    ASSERT_TRUE(SaveFrameProject(f, dir / "f.CVB", error)) << error;

    FrameState g;
    ASSERT_TRUE(LoadFrameProject(g, dir / "f.CVB", warning));
    EXPECT_EQ(warning, "");
    EXPECT_EQ(g.ControlCount, 8);
    EXPECT_EQ(g.PointCount, 37);
    EXPECT_EQ(g.CurveOrder, 4);
    EXPECT_EQ(g.Thickness, 7.25);
    EXPECT_TRUE(g.Doubling);
    EXPECT_FALSE(g.Slaved);
    EXPECT_EQ(g.AxeX, f.AxeX);
    EXPECT_EQ(g.BaseLineY, f.BaseLineY);
    EXPECT_EQ(g.ControlPoints, f.ControlPoints);
    EXPECT_EQ(g.DoubledControl, f.DoubledControl);
    RecomputeFrameCurves(f);
    EXPECT_EQ(FrameOutlineText(g), FrameOutlineText(f));
}

TEST(FrameProject, BadFilesTakeStartValuesWithOneLineAndNeverFail) {
    TempDir dir;
    FrameState start;
    InitFrameGenerator(start);
    std::string warning;

    test::writeBytes(dir / "garbage.CVB",
                     "[Couple]\nControlCount=8\nPointCount=douze\nCurveOrder=1e400\nEpaisseur=nan\n"
                     "[Poignees]\n0=1;2\n1=3;4\n");
    FrameState f;
    ASSERT_TRUE(LoadFrameProject(f, dir / "garbage.CVB", warning));
    EXPECT_EQ(f.PointCount, 12);
    EXPECT_EQ(f.CurveOrder, 9);
    EXPECT_EQ(f.Thickness, start.Thickness);
    EXPECT_EQ(f.ControlPoints, start.ControlPoints);  // 2 of 9 handles: the start frame
    EXPECT_EQ(f.CurveRight.size(), 12u);
    EXPECT_NE(warning.find("PointCount"), std::string::npos);
    EXPECT_NE(warning.find("[Poignees]"), std::string::npos);
    EXPECT_EQ(warning.find('\n'), std::string::npos);

    // Too few handles declared, an order beyond them, nothing else.
    test::writeBytes(dir / "few.CVB", "[Couple]\nControlCount=1\nCurveOrder=5\n");
    ASSERT_TRUE(LoadFrameProject(f, dir / "few.CVB", warning));
    EXPECT_EQ(f.ControlCount, 8);
    EXPECT_EQ(f.ControlPoints.size(), 9u);
    EXPECT_FALSE(warning.empty());

    // Not a file: refused, the frame unchanged.
    const FramePoints before = f.ControlPoints;
    EXPECT_FALSE(LoadFrameProject(f, dir / "none.CVB", warning));
    EXPECT_EQ(f.ControlPoints, before);
}

TEST(FrameFiles, DialogKindsAndFilters) {
    EXPECT_EQ(FileDialogByType(FileKind::Project).extension, ".CVB");
    EXPECT_EQ(FileDialogByType(FileKind::Project).caption, "Fichier Projets");
    EXPECT_EQ(FileDialogByType(FileKind::Airfoil).caption, "Fichier Profil");
    EXPECT_EQ(FileDialogByType(FileKind::Fuselage).extension, ".FUS");
    EXPECT_EQ(FileDialogByType(FileKind::Cutting).caption, "Fichier Découpe");
    const auto filters = GenericFileFilters();
    ASSERT_EQ(filters.size(), 5u);
    EXPECT_EQ(filters.back(), (std::pair<std::string, std::string>{"All Files (*.*)", "*.*"}));
}

}  // namespace
}  // namespace tarvokin

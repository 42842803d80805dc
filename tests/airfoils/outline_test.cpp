#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "airfoils/outline.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "support/installed_workbench.h"

using namespace tarvokin;
using tarvokin::test::copyInstallation;
using tarvokin::test::readBytes;
using tarvokin::test::TempDir;
using tarvokin::test::writeBytes;

namespace {

// NACA 0012 with closed trailing edge, cosine spacing, in file order.
std::string naca0012() {
    std::string text = "NACA 0012\n";
    const int n = 60;
    auto half = [](double x) {
        return 0.12 / 0.2 *
               (0.2969 * std::sqrt(x) - 0.1260 * x - 0.3516 * x * x + 0.2843 * x * x * x - 0.1036 * x * x * x * x);
    };
    for (int pass = 0; pass < 2; ++pass) {
        for (int k = 0; k <= n; ++k) {
            if (pass == 1 && k == 0) continue;
            const int i = pass == 0 ? n - k : k;
            const double x = (1.0 - std::cos(M_PI * i / n)) / 2.0;
            const double y = pass == 0 ? half(x) : -half(x);
            text += std::to_string(x) + " " + std::to_string(y) + "\n";
        }
    }
    return text;
}

bool allFinite(const OutlinePoints& o) {
    for (const OutlinePoint& p : o) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return false;
    }
    return true;
}

struct Bench {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Bench() { copyInstallation(dir.path()); }
    double thickness() {
        std::string pos;
        return std::stod(Get_Thickness(wb, pos));
    }
    double camber() {
        std::string pos;
        return std::stod(Get_Camber(wb, pos));
    }
};

}  // namespace

TEST(OutlineLines, EachLineJudgedAlone) {
    OutlineExtremes e;
    const OutlinePoints p = readOutlineText(
        "  CLARK Y 1.0  \r\n"     // capitals: a title even with a point
        "\n"
        "61 61\n"                 // Lednicer count without a point
        "1.0000;0.0012\n"
        "naca 2412.5 foo\n"       // no capital A-P: x fails and keeps 1.0
        "0,5000 -0,0250\n"        // decimal commas
        "0.25\t-0.03\r"
        "0.1 zz\n"                // y fails and keeps -0.03
        "0.75\n"                  // no separator: the previous point again
        "1.5E-3 0.9\n"            // "E" is a capital: skipped
        "0.0015 0.1 QRS\n"        // capitals behind P do not matter
        "17. 17.\n",              // a Lednicer count with points is a point
        e);
    const OutlinePoints want = {{1.0, 0.0012}, {1.0, 2412.5}, {0.5, -0.025}, {0.25, -0.03},
                                {0.1, -0.03},  {0.1, -0.03},  {0.0015, 0.1}, {17.0, 17.0}};
    ASSERT_EQ(p.size(), want.size());
    for (size_t i = 0; i < p.size(); ++i) {
        EXPECT_DOUBLE_EQ(p[i].x, want[i].x) << i;
        EXPECT_DOUBLE_EQ(p[i].y, want[i].y) << i;
    }
    EXPECT_DOUBLE_EQ(e.xMin, 0.0015);
    EXPECT_EQ(e.iXMinBefore, 5);  // the index before the smallest x
    EXPECT_EQ(e.iYMin, 3);        // the first of equal values
    EXPECT_EQ(e.iYMax, 1);
    EXPECT_DOUBLE_EQ(e.xAtYMin, 0.25);
    EXPECT_DOUBLE_EQ(e.xMax, 17.0);
}

TEST(OutlineLoad, NamesNormalisationAndClosing) {
    Bench b;
    OutlineStore& s = b.wb.outlines;
    // Largest x 2 halves everything; the open end is overwritten by the first point.
    writeBytes(b.dir / "DATA" / "TWO.DAT", "2.0 0.2\n1.0 0.4\n0.2 0.0\n1.0 -0.2\n2.0 -0.1\n");
    ASSERT_TRUE(Load_Profil(b.wb, "TWO,DAT", 1, OutlineWindow::F_PROFILS));  // "," read as ".", bare name in DATA
    EXPECT_EQ(s.Outline, (OutlinePoints{{1.0, 0.1}, {0.5, 0.2}, {0.1, 0.0}, {0.5, -0.1}, {1.0, 0.1}}));
    EXPECT_DOUBLE_EQ(s.extremes.xMin, 0.1);  // the leading edge keeps its offset
    EXPECT_EQ(s.figures.epRel[1], "33.33%");  // (0.4 + 0.2) / 1.8
    EXPECT_EQ(s.figures.posEp[1], "55.56%");  // (1.0 + 1.0) / 2 / 1.8
    EXPECT_TRUE(s.figures.drawingSet);
    EXPECT_DOUBLE_EQ(s.figures.E_TmaxY, 0.2);
    EXPECT_EQ(s.slot, 1);

    // The Lednicer count spoils the chord.
    writeBytes(b.dir / "led.dat", "LEDNICER\n17. 17.\n1.0 0.0\n0.0 0.0\n");
    ASSERT_TRUE(Load_Profil(b.wb, (b.dir / "led.dat").string(), 0, OutlineWindow::F_Main));
    EXPECT_DOUBLE_EQ(s.Outline[1].x, 1.0 / 17.0);

    // An empty name is the outline of last resort, already closed.
    ASSERT_TRUE(Load_Profil(b.wb, "", 0, OutlineWindow::F_Main));
    EXPECT_EQ(s.Outline.size(), 121u);
    EXPECT_DOUBLE_EQ(s.Outline.front().y, 0.0005993);
    EXPECT_DOUBLE_EQ(s.Outline.back().y, 0.0005993);
    EXPECT_EQ(s.OutlineCopy2, s.Outline);
    ASSERT_EQ(s.OutlineFine.size(), 32u);
    EXPECT_EQ(s.OutlineFine.front(), s.Outline.front());
    EXPECT_EQ(s.OutlineFine.back(), s.Outline.back());

    // Catalogue rows added by the program hold upper-case paths.
    writeBytes(b.dir / "DATA" / "mixed.dat", "1.0 0.0\n0.0 0.1\n1.0 0.0\n");
    EXPECT_TRUE(Load_Profil(b.wb, (b.dir / "DATA" / "MIXED.DAT").string(), 0, OutlineWindow::F_Main));
    EXPECT_EQ(s.Outline.size(), 3u);
}

TEST(OutlineFigures, ThicknessAndCamberOfPublishedSections) {
    Bench b;
    std::string pos;
    writeBytes(b.dir / "DATA" / "N0012.DAT", naca0012());
    ASSERT_TRUE(Load_Profil(b.wb, "N0012.DAT", 0, OutlineWindow::F_PROFILS));
    EXPECT_NEAR(std::stod(Get_Thickness(b.wb, pos)), 12.0, 0.1);
    EXPECT_NEAR(std::stod(pos), 30.0, 2.0);
    EXPECT_EQ(Get_Camber(b.wb, pos), "0.00");
    EXPECT_EQ(pos, "0.00");
    for (const OutlinePoint& p : b.wb.outlines.CamberLine) EXPECT_NEAR(p.y, 0.0, 1e-6);

    ASSERT_TRUE(Load_Profil(b.wb, "DATA/CLARKY.DAT", 0, OutlineWindow::F_PROFILS));
    EXPECT_NEAR(std::stod(Get_Thickness(b.wb, pos)), 11.7, 0.05);
    EXPECT_NEAR(std::stod(Get_Camber(b.wb, pos)), 3.4, 0.1);
    EXPECT_NEAR(std::stod(pos), 42.0, 1.0);
    EXPECT_EQ(b.wb.outlines.CamberLine.size(), 61u);  // trailing edge to nose

    // Stations of the two surfaces differ here: the march interpolates.
    b.wb.setOpen(button::Base, true);
    ASSERT_TRUE(Load_Profil(b.wb, TARVOKIN_TEST_DATA "/S8036.DAT", 2, OutlineWindow::F_BASE));
    const OutlineFigures& f = b.wb.outlines.figures;
    EXPECT_NEAR(std::stod(f.Text5), 16.0, 0.05);
    EXPECT_NEAR(f.slider, 1600, 5);
    EXPECT_LT(f.sliderMin, f.slider);
    EXPECT_GT(f.sliderMax, f.slider);
    EXPECT_TRUE(f.epRel[2].empty());  // the database window took the figures
}

TEST(OutlineSurfaces, MarchGivesTheOtherSurfaceAtEachStation) {
    Bench b;
    ASSERT_TRUE(Load_Profil(b.wb, "CLARKY.DAT", 0, OutlineWindow::F_Main));
    const OutlinePoints& o = b.wb.outlines.Outline;
    OutlinePoints opp;
    ASSERT_TRUE(Split_Surfaces(b.wb, opp));
    ASSERT_EQ(opp.size(), o.size());
    // Both surfaces share their stations: point i of the upper meets point
    // last - i of the lower.
    const size_t last = o.size() - 1;
    for (size_t i = 1; i < last; ++i) {
        EXPECT_DOUBLE_EQ(opp[i].x, o[i].x);
        EXPECT_NEAR(opp[i].y, o[last - i].y, 1e-12) << i;
    }
    EXPECT_EQ(Find_Nose(o), 60u);
    EXPECT_NE(readBytes(b.dir / "upper.txt").find("1;0.0005993\n"), std::string::npos);
    EXPECT_FALSE(readBytes(b.dir / "lower.txt").empty());

    EXPECT_EQ(Find_Nose({{1, 0}, {0.5, 0}, {0.5, 0}, {0, 0}}), 1u);  // falling strictly
    EXPECT_EQ(Find_Nose({{1, 0}, {0.5, 0}, {0, 0}}), 2u);
    EXPECT_DOUBLE_EQ(Interp_Y(0, 1, 2, 3, 1), 2.0);
}

TEST(OutlineEdit, ThicknessAndCamberChangeAlone) {
    Bench b;
    ASSERT_TRUE(Load_Profil(b.wb, "CLARKY.DAT", 0, OutlineWindow::F_Main));
    const double t0 = b.thickness(), c0 = b.camber();

    ASSERT_TRUE(Edit_Thickness(b.wb, 2.0 * t0, t0));
    EXPECT_NEAR(b.thickness(), 2.0 * t0, 0.02);
    EXPECT_NEAR(b.camber(), c0, 0.02);

    ASSERT_TRUE(Edit_Camber(b.wb, 0.5 * c0, c0));
    EXPECT_NEAR(b.camber(), 0.5 * c0, 0.02);
    EXPECT_NEAR(b.thickness(), 2.0 * t0, 0.02);
    // The closing point follows the first but keeps its own height.
    const OutlinePoints& o = b.wb.outlines.Outline;
    EXPECT_DOUBLE_EQ(o.back().x, o.front().x);
    EXPECT_DOUBLE_EQ(o.back().y, 0.0005993);

    const OutlinePoints before = o;
    EXPECT_FALSE(Edit_Camber(b.wb, 2.0, 0.0));  // no camber to scale
    EXPECT_EQ(o, before);
}

TEST(OutlineWrite, SevenDecimalsAndReadBack) {
    Bench b;
    const OutlinePoints pts = {{1.0, 0.0}, {0.5, 0.06}, {0.0, 0.0}, {0.5, -0.02}, {1.0, 0.0}};
    const std::string path = Write_Profil(b.dir.path(), pts, "MYFOIL");
    EXPECT_EQ(path, (b.dir / "DATA" / "MYFOIL.DAT").string());
    EXPECT_EQ(readBytes(path).substr(0, 40), "1.0000000 0.0000000\n0.5000000 0.0600000\n");
    ASSERT_TRUE(Load_Profil(b.wb, path, 0, OutlineWindow::F_Main));
    EXPECT_EQ(b.wb.outlines.Outline, pts);
    EXPECT_EQ(Write_Profil(b.dir.path(), pts, (b.dir / "keep.txt").string()), (b.dir / "keep.txt").string());
}

TEST(OutlineBadFiles, NeverThrowNorLeaveNonFiniteValues) {
    Bench b;
    std::string binary;
    for (int i = 0; i < 50000; ++i) binary.push_back(static_cast<char>((i * 7919 + 13) & 0xFF));
    std::string dense;  // lines that pass the rules with huge and stray values
    for (int i = 0; i < 500; ++i) dense += std::to_string((i * 37) % 11) + ".5 1e300\n0.0 0.0\n";
    const std::pair<const char*, std::string> files[] = {
        {"empty", ""},
        {"text", "this is not an airfoil\njust words, and stops.\n\n"},
        {"binary", binary},
        {"one", "0.5 0.1\n"},
        {"dupx", "1.0 0.0\n1.0 0.1\n0.0 0.0\n1.0 -0.1\n1.0 0.0\n"},
        {"allsame", "0.3 0.3\n0.3 0.3\n0.3 0.3\n"},
        {"zero", "0.0 0.1\n0.0 -0.1\n"},
        {"dense", dense},
    };
    for (const auto& [name, bytes] : files) {
        SCOPED_TRACE(name);
        writeBytes(b.dir / name, bytes);
        for (bool base : {false, true}) {
            b.wb.setOpen(button::Base, base);
            std::string pos;
            EXPECT_NO_THROW({
                EXPECT_TRUE(Load_Profil(b.wb, (b.dir / name).string(), 2, OutlineWindow::F_BASE));
                Get_Thickness(b.wb, pos);
                Get_Camber(b.wb, pos);
                Edit_Thickness(b.wb, 2.0, 1.0);
                Edit_Camber(b.wb, 2.0, 1.0);
            });
            const OutlineStore& s = b.wb.outlines;
            EXPECT_TRUE(allFinite(s.Outline) && allFinite(s.OutlineFine) && allFinite(s.CamberLine));
        }
    }

    // Two points on one x on a surface end the march: no figure.
    ASSERT_TRUE(Load_Profil(b.wb, (b.dir / "dupx").string(), 0, OutlineWindow::F_Main));
    std::string pos;
    EXPECT_EQ(Get_Thickness(b.wb, pos), "-");

    // A file that cannot be opened leaves one point at 0.
    EXPECT_FALSE(Load_Profil(b.wb, (b.dir / "missing.dat").string(), 0, OutlineWindow::F_Main));
    EXPECT_EQ(b.wb.outlines.Outline, OutlinePoints{OutlinePoint{}});
    EXPECT_FALSE(Load_Profil(b.wb, b.dir.path().string(), 0, OutlineWindow::F_Main));  // a folder
}

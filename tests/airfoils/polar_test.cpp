#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "airfoils/polar_lookup.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "entry/window_logic.h"

using namespace tarvokin;
using tarvokin::test::readBytes;
using tarvokin::test::TempDir;
using tarvokin::test::writeBytes;

namespace {

// Real XFOIL 6.99 polars of the Clark Y, made by polars/make_polars.sh.
std::filesystem::path polarFile(const std::string& name) {
    return std::filesystem::path(TARVOKIN_TEST_DATA) / "polars" / name;
}

const char* kHeader =
    "   alpha    CL        CD       CDp       CM     Top_Xtr  Bot_Xtr\n"
    "  ------ -------- --------- --------- -------- -------- --------\n";

// A polar file of rows (alpha, CL, CD, CM) as XFOIL writes them.
std::string polarText(std::initializer_list<std::vector<double>> rows) {
    std::string text = kHeader;
    char buf[160];
    for (const auto& r : rows) {
        std::snprintf(buf, sizeof buf, "  %7.3f  %7.4f  %8.5f   0.00100  %7.4f   0.5000   0.5000\n", r[0], r[1], r[2],
                      r[3]);
        text += buf;
    }
    return text;
}

// A polar with the given Cz column (alpha = row index, Cd 0.01 + Cz^2 / 100).
std::string czSequence(std::initializer_list<double> czs) {
    std::string text = kHeader;
    char buf[160];
    int i = 0;
    for (double cz : czs) {
        std::snprintf(buf, sizeof buf, "  %d  %.4f  %.5f  0.001  -0.05  0.5  0.5\n", i++, cz, 0.01 + cz * cz / 100);
        text += buf;
    }
    return text;
}

// Fills the extended columns of a record directly, rows of (CzExt, CxExt).
void setExtended(PolarRecord& r, std::initializer_list<std::pair<double, double>> rows) {
    int i = 0;
    for (auto [cz, cx] : rows) {
        r.Points[i].CzExt = cz;
        r.Points[i].CxExt = cx;
        ++i;
    }
    r.LastRow = r.LastExtRow = static_cast<int16_t>(i - 1);
}

}  // namespace

TEST(ReadPolar, RealXfoilPolarGivesFiguresTableAndExtension) {
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, polarFile("CLARKY_100000.POL"), 1));  // index 2 from the name
    const PolarRecord& r = store.Polars[1][2];
    EXPECT_EQ(r.Re, 100000);
    EXPECT_EQ(r.Cxmin, 0.01718);
    EXPECT_EQ(r.Czopt, 0.7725);
    EXPECT_EQ(r.Cz_Decroch, 1.3199 - 0.2);  // the Cz falls gently after stall: the last row pulls it
    EXPECT_EQ(r.k, 0.0319272);
    EXPECT_EQ(r.Alpha0, -2.25);
    EXPECT_EQ(r.Cm0, -0.0926);
    EXPECT_EQ(r.LastRow, 71);
    // Maximum 1.3698 at row 65: 1.38 and 1.39, and 1.39 + 0.01 is just above 1.4.
    EXPECT_EQ(r.LastExtRow, 67);
    EXPECT_EQ(r.Points[66].CzExt, 1.37 + 0.01);
    EXPECT_NEAR(r.Points[66].CxExt, 0.04008 + (1.38 - 1.3698), 1e-12);
    EXPECT_NEAR(r.Points[67].CxExt, 0.04008 + (1.39 - 1.3698), 1e-12);
    EXPECT_EQ(r.Points[66].Cz, 1.3691);  // the file's row stays in the plain columns
    EXPECT_EQ(r.Points[66].Cx, 0.04208);
    EXPECT_EQ(r.Points[71].Alpha, 14.0);
    EXPECT_EQ(r.Points[71].Cm, -0.0203);

    const PolarTable& t = store.PolarTables[1];
    ASSERT_EQ(t.size(), 72u);
    EXPECT_EQ(t[0][0], -0.2533);
    EXPECT_EQ(t[0][1], -4.0);
    EXPECT_EQ(t[0][2], -0.2533);
    EXPECT_EQ(t[0][3], -0.0602);
    EXPECT_EQ(t[0][4], 0.03122);
    EXPECT_EQ(t[0][11], 0.03122);
    EXPECT_EQ(store.PolarTables[0].size(), 26u);  // other slots keep their tables

    EXPECT_EQ(store.figures[1].T_CXMin, 0.01718);
    EXPECT_EQ(store.figures[1].T_CzOpt, 0.7725);
    EXPECT_EQ(store.figures[1].T_k, 0.0319272);
    EXPECT_EQ(store.figures[1].T_Cz_Decroch, 1.3199 - 0.2);
}

TEST(ReadPolar, RowsStopAtIndex145AndTheIndexComesFromTheFilesOwnName) {
    EXPECT_EQ(ReynoldsIndex(220000), 3);
    EXPECT_FALSE(ReynoldsIndex(220000.5).has_value());
    EXPECT_EQ(ReynoldsIndexOfFile("/home/my_polars/CLARKY_LONG_1500000.pol"), 5);
    EXPECT_EQ(ReynoldsIndexOfFile("/a_25000/E387_50000.POL.bak"), 1);
    EXPECT_EQ(ReynoldsIndexOfFile("/a_25000/CLARKY.POL"), 0);
    EXPECT_EQ(ReynoldsIndexOfFile("CLARKY_123456.POL"), 0);

    // 157 rows in the file; the maximum 1.3997 is at row 143, and 1.40 + 0.01
    // is beyond 1.4: no extension, the rows after the maximum stay.
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, polarFile("CLARKY_LONG_220000.POL"), 2));
    const PolarRecord& r = store.Polars[2][3];
    EXPECT_EQ(r.LastRow, 145);
    EXPECT_EQ(r.LastExtRow, 145);
    EXPECT_EQ(r.Points[145].Alpha, 12.64);
    EXPECT_EQ(r.Points[145].CzExt, 1.3972);
    EXPECT_EQ(r.Alpha0, -3.56);
    EXPECT_EQ(store.PolarTables[2].size(), 146u);
}

TEST(ReadPolar, ExtensionFromTheMaximumUpTo1_4AndNeverIntoRow145) {
    TempDir dir;
    std::string text = kHeader;
    char buf[128];
    for (int i = 0; i <= 45; ++i) {
        const double cz = i <= 40 ? 0.0325 * i : 1.3 - 0.05 * (i - 40);
        std::snprintf(buf, sizeof buf, "  %d  %.4f  %.5f  0.001  -0.05  0.5  0.5\n", i, cz, i == 40 ? 0.03 : 0.02);
        text += buf;
    }
    writeBytes(dir / "X_25000.POL", text);
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, dir / "X_25000.POL", 0));
    const PolarRecord& r = store.Polars[0][0];
    EXPECT_EQ(r.LastRow, 45);
    // 1.31, 1.32 ... by repeated additions of 0.01: the tenth step lands just
    // above 1.4, so the last extended row is 49.
    EXPECT_EQ(r.LastExtRow, 49);
    double cz = 1.31;
    for (int i = 41; i <= 49; ++i, cz += 0.01) {
        EXPECT_EQ(r.Points[i].CzExt, cz) << i;
        EXPECT_NEAR(r.Points[i].CxExt, 0.03 + (cz - 1.3), 1e-12) << i;
    }
    EXPECT_EQ(r.Points[45].Cz, 1.05);  // the stalled rows remain in Cz and Cx
    EXPECT_EQ(r.Points[45].Cx, 0.02);
    EXPECT_EQ(r.Points[50].CzExt, 0.0);

    // Maximum at row 144 of a long file: row 145 is never extended.
    text = kHeader;
    for (int i = 0; i < 150; ++i) {
        std::snprintf(buf, sizeof buf, "  %d  %.4f  0.02  0.001  -0.05  0.5  0.5\n", i, i <= 144 ? i / 200.0 : 0.5);
        text += buf;
    }
    writeBytes(dir / "X_25000.POL", text);
    ASSERT_TRUE(Read_Polar(store, dir / "X_25000.POL", 0));
    EXPECT_EQ(r.LastExtRow, 145);
    EXPECT_EQ(r.Points[145].CzExt, 0.5);
}

TEST(ReadPolar, StallCzTrailsSmallFallsAndIsLeftBehindByALargeOne) {
    TempDir dir;
    auto stall = [&](std::initializer_list<double> czs) {
        writeBytes(dir / "S_50000.POL", czSequence(czs));
        PolarStore store;
        EXPECT_TRUE(Read_Polar(store, dir / "S_50000.POL", 0));
        return store.Polars[0][1].Cz_Decroch;
    };
    // A fall of 0.15 pulls it along, a fall of 0.25 leaves it 0.2 below 0.95.
    EXPECT_EQ(stall({0.5, 0.8, 1.0, 0.85, 0.95, 0.70, 0.72}), 0.95 - 0.2);
    // A fall of exactly 0.2 still pulls it (the test is "at or under the Cz").
    EXPECT_EQ(stall({1.0, 0.8, 0.65}), 0.65 - 0.2);
    // Left behind, it is pulled again by a Cz that climbs back over it.
    EXPECT_EQ(stall({1.0, 0.7, 0.9}), 0.9 - 0.2);
}

TEST(ReadPolar, LaterRowWinsAmongEqualsForCzoptAlpha0AndTheRowOfK) {
    TempDir dir;
    writeBytes(dir / "E_100000.POL", polarText({{-2, -0.10, 0.0200, -0.04},
                                                 {-1, 0.00, 0.0120, -0.05},
                                                 {0, 0.10, 0.0100, -0.06},
                                                 {1, 0.20, 0.0100, -0.06},
                                                 {2, 0.00, 0.0300, -0.03},
                                                 {3, 0.40, 0.0150, -0.02},
                                                 {4, 0.50, 0.0150, -0.01}}));
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, dir / "E_100000.POL", 0));
    const PolarRecord& r = store.Polars[0][2];
    EXPECT_EQ(r.Cxmin, 0.01);
    EXPECT_EQ(r.Czopt, 0.2);
    EXPECT_EQ(r.Alpha0, 2.0);
    EXPECT_EQ(r.Cm0, -0.06);
    // Rows 5 and 6 both have Cd = 1.5 Cxmin: Cz 0.5 is taken, (0.005) / 0.3^2.
    EXPECT_EQ(r.k, 0.0555556);

    // Least drag at Cz 0: no parabola, k stays 0.
    writeBytes(dir / "Z_100000.POL", polarText({{0, 0.0, 0.006, 0.0}, {2, 0.2, 0.009, 0.0}}));
    ASSERT_TRUE(Read_Polar(store, dir / "Z_100000.POL", 0));
    EXPECT_EQ(r.k, 0.0);
    EXPECT_EQ(r.Czopt, 0.0);
}

TEST(ReadPolar, HeaderNanAndTheFieldsOfARow) {
    TempDir dir;
    writeBytes(dir / "F_220000.POL",
               std::string("junk before\n") + kHeader +
                   "  -1.0  0.10  0.0100  0.0050  -0.0500  0.9  0.9\n"
                   "   0.0  0.20  0.0110  0.0050  -0.0600\n"  // the CM column is the last: not a field
                   "   abc  0.30  0.0120  0.0050  -0.0700  0.9  0.9\n"
                   "   2.0  0.4x  0.0130  0.0050  -0.0800  0.9  0.9\n"
                   "   3.0  1e-400  0.0140  0.0050  -0.0900  0.9  0.9\n"
                   "\t4.0\t0.50\t0.0150\t0.0050\t-0.1000\t0.9\t0.9\r\n"
                   "   5.0  0.60  NaN  0.0050  -0.1100  0.9  0.9\n"
                   "   6.0  0.70  0.0160  0.0050  -0.1200  0.9  0.9\n");
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, dir / "F_220000.POL", 0));
    const PolarRecord& r = store.Polars[0][3];
    EXPECT_EQ(r.LastRow, 5);
    EXPECT_EQ(r.Points[0].Cm, -0.05);
    EXPECT_EQ(r.Points[1].Cm, 0.0);
    EXPECT_EQ(r.Points[1].Cx, 0.011);
    EXPECT_EQ(r.Points[2].Alpha, 0.0);
    EXPECT_EQ(r.Points[2].Cz, 0.3);
    EXPECT_EQ(r.Points[3].Cz, 0.0);
    EXPECT_EQ(r.Points[4].Cz, 0.0);
    EXPECT_EQ(r.Points[5].Alpha, 4.0);
    EXPECT_EQ(r.Points[5].Cm, -0.1);
    EXPECT_EQ(r.Cm0, -0.1);
    EXPECT_EQ(r.Points[6].Alpha, 0.0);  // nothing read from or after the NaN row
    EXPECT_EQ(store.PolarTables[0].size(), 6u);
    // The derivations still ran: maximum 0.5 at row 5, extension from 0.51.
    EXPECT_EQ(r.Points[6].CzExt, 0.51);

    // No line of dashes: the read fails, and the record is cleared.
    writeBytes(dir / "H_220000.POL", "   alpha    CL        CD\n  -1.0  0.10  0.0100  0.005  -0.05  0.9  0.9\n");
    EXPECT_FALSE(Read_Polar(store, dir / "H_220000.POL", 0));
    EXPECT_EQ(r.Cxmin, 0.0);
    EXPECT_EQ(r.Czopt, 0.0);
    EXPECT_EQ(r.Points[5].Cz, 0.0);
    EXPECT_EQ(store.PolarTables[0].size(), 6u);  // the last good table stays
}

TEST(ReadPolar, BadSlotOrIndexTouchesNothingAndAMissingFileClearsTheRecord) {
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, polarFile("CLARKY_220000.POL"), 0));
    const PolarRecord& r = store.Polars[0][3];
    EXPECT_FALSE(Read_Polar(store, polarFile("CLARKY_100000.POL"), 3));
    EXPECT_FALSE(Read_Polar(store, polarFile("CLARKY_100000.POL"), -1));
    EXPECT_FALSE(Read_Polar(store, polarFile("CLARKY_100000.POL"), 0, 6));
    EXPECT_EQ(r.Cxmin, 0.00955);
    EXPECT_EQ(store.PolarTables[0].size(), 73u);
    EXPECT_EQ(store.figures[0].T_CXMin, 0.00955);

    EXPECT_FALSE(Read_Polar(store, polarFile("NONE_220000.POL"), 0));
    EXPECT_EQ(r.Cxmin, 0.0);
    EXPECT_EQ(r.Points[72].Cz, 0.0);
    EXPECT_EQ(store.PolarTables[0].size(), 73u);
}

TEST(ReadPolar, DamagedFilesNeverThrowAndLeaveALookupThatAnswers) {
    TempDir dir;
    const std::string good = readBytes(polarFile("CLARKY_100000.POL"));
    std::vector<std::pair<std::string, std::string>> files = {
        {"empty", ""},
        {"dashes only", "------"},
        {"cut mid-row", good.substr(0, good.rfind("1.3324") + 4)},
        {"huge but finite", std::string(kHeader) + "  1e300  1e300  1e300 0 -1e300 1 1\n  1 -1e308 0.01 0 0 1 1\n"},
        {"long line", std::string(kHeader) + std::string(2'000'000, '7') + " 1 2 3 4 5 6\n"},
    };
    std::string junk = std::string(kHeader);
    for (int i = 0; i < 5000; ++i) junk.push_back(static_cast<char>((i * 131 + 7) & 0xFF));
    files.emplace_back("binary junk", junk);

    for (const auto& [what, text] : files) {
        writeBytes(dir / "D_100000.POL", text);
        PolarStore store;
        EXPECT_NO_THROW(Read_Polar(store, dir / "D_100000.POL", 1)) << what;
        for (double re : {0.0, -5.0, 1e4, 1e5, 1e7, std::nan("")})
            for (double cz : {-1e308, -0.5, 0.0, 0.5, 1e308, std::nan("")}) {
                const double cx = Get_Cx(store, 1, re, cz);
                EXPECT_TRUE(std::isfinite(cx)) << what << " " << re << " " << cz;
            }
    }

    // A number beyond the range of a double overflows: the read fails where
    // it met it, with the rows before it kept. So does a 1.5 Cxmin overflow.
    PolarStore store;
    writeBytes(dir / "O_100000.POL", polarText({{0, 0.1, 0.01, 0}, {1, 0.2, 0.012, 0}}) + "  2  0.3  1e400  0 0 1 1\n");
    EXPECT_FALSE(Read_Polar(store, dir / "O_100000.POL", 0));
    EXPECT_EQ(store.Polars[0][2].LastRow, 1);
    EXPECT_EQ(store.Polars[0][2].Points[2].Cz, 0.3);
    writeBytes(dir / "O_100000.POL", polarText({{0, 0.1, 0.01, 0}}) + "  1  0.2  -1.5e308  0 0 1 1\n");
    EXPECT_FALSE(Read_Polar(store, dir / "O_100000.POL", 0));
}

TEST(GetCx, RealPolarsAtTabulatedPointsStandardReynoldsAndBeyondTheTable) {
    PolarStore store;
    for (int re : kStandardReynolds)
        ASSERT_TRUE(Read_Polar(store, polarFile("CLARKY_" + std::to_string(re) + ".POL"), 0)) << re;

    // A tabulated Cz at its own standard Re gives the row's Cd to 4 decimals.
    EXPECT_EQ(Get_Cx(store, 0, 220000, 0.4192), 0.0096);
    EXPECT_EQ(Get_Cx(store, 0, 100000, 0.7725), 0.0172);
    // The ends of the table: 25000 uses the formula, 1500000 the top polar.
    EXPECT_EQ(Get_Cx(store, 0, 25000, 0.5), 0.0997);
    EXPECT_EQ(Get_Cx(store, 0, 1500000, 0.5), 0.0054);
    // Outside: sqrt(2) x 0.0997 and 0.5 x 0.0054.
    EXPECT_EQ(Get_Cx(store, 0, 12500, 0.5), 0.1409971);
    EXPECT_EQ(Get_Cx(store, 0, 6000000, 0.5), 0.0027);
    // Between two polars, linear in 1/Re: 0.0182 at 100000, 0.0096 at 220000.
    EXPECT_EQ(Get_Cx(store, 0, 150000, 0.5), 0.0129444);
    // In the extension of the 100000 polar (1.38 -> 0.05028, 1.39 -> 0.06028).
    EXPECT_EQ(Get_Cx(store, 0, 100000, 1.385), 0.0553);
}

TEST(GetCx, BracketsAlongCzOutsideThePolarAndOnAPolarThatTurnsBack) {
    PolarStore store;
    for (PolarRecord& r : store.Polars[0]) setExtended(r, {{0.2, 0.010}, {0.4, 0.012}, {0.6, 0.016}});
    EXPECT_EQ(Get_Cx(store, 0, 100000, 0.4), 0.012);
    EXPECT_EQ(Get_Cx(store, 0, 100000, 0.5), 0.014);
    // Below the first row and above the last: the line through the origin.
    EXPECT_EQ(Get_Cx(store, 0, 100000, 0.1), 0.005);
    EXPECT_EQ(Get_Cx(store, 0, 100000, 0.9), 0.024);
    EXPECT_EQ(Get_Cx(store, 0, 100000, -0.1), 0.005);  // the absolute value

    // low is the last row at or under Cz in file order (0.3), high the first
    // above it (0.5): 0.030 - 0.05 x 0.1.
    for (PolarRecord& r : store.Polars[1]) setExtended(r, {{0.2, 0.010}, {0.5, 0.020}, {0.3, 0.030}, {0.6, 0.040}});
    EXPECT_EQ(Get_Cx(store, 1, 220000, 0.4), 0.025);
}

TEST(GetCx, EmptyRecordsReuseTheLastSlopeAndABadSlotAnswersZero) {
    PolarStore store;
    EXPECT_EQ(Get_Cx(store, 2, 100000, 0.5), 0.0);

    // Record 0 has slope 0.02 and gives 0.014 at Cz 0.4; the empty record 1
    // keeps that slope through the origin: 0.008. Across 25000..50000 at
    // 40000: a = -0.006 / (1/50000 - 1/25000) = 300, b = 0.014 - 300/25000.
    setExtended(store.Polars[2][0], {{0.2, 0.010}, {0.6, 0.018}});
    EXPECT_EQ(Get_Cx(store, 2, 40000, 0.4), 0.0095);

    Workbench wb(std::filesystem::temp_directory_path());
    InstallWindowLogic(wb);
    std::string shown;
    wb.showMessage = [&](const std::string& text) { shown = text; };
    wb.polars = store;
    EXPECT_EQ(Get_Cx(wb, 3, 100000, 0.4), 0.0);
    EXPECT_EQ(shown, "[#4] Probleme Noprofil >2");
    EXPECT_EQ(Get_Cx(store, -1, 100000, 0.4), 0.0);
}

TEST(PolarReport, FiguresThenEveryRowThroughTheExtension) {
    TempDir dir;
    writeBytes(dir / "R_750000.POL", polarText({{0, 0.1, 0.01, -0.05}, {1, 1.37, 0.02, -0.04}}));
    PolarStore store;
    ASSERT_TRUE(Read_Polar(store, dir / "R_750000.POL", 0));
    std::ostringstream out;
    printPolarReport(store.Polars[0][4], out);
    EXPECT_EQ(out.str(),
              "Re=750000\nCxmin=0.01\nCz_Decroch=1.1700000000000002\nCzopt=0.10000000000000001\nk=0.02\n"
              "Alpha0=0\nCm0=-0.050000000000000003\nLastRow=1\nLastExtRow=3\n"
              "row,Alpha,Cz,Cx,CzExt,CxExt,Cm\n"
              "0,0,0.10000000000000001,0.01,0.10000000000000001,0.01,-0.050000000000000003\n"
              "1,1,1.3700000000000001,0.02,1.3700000000000001,0.02,-0.040000000000000001\n"
              "2,0,0,0,1.3800000000000001,0.030000000000000009,0\n"
              "3,0,0,0,1.3900000000000001,0.040000000000000022,0\n");
}

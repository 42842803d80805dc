// The NACA generator's calculation: stations, thickness forms, mean lines,
// surfaces, names and the outline file. Published figures are in per cent of
// chord; where each comes from is said beside it.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "airfoils/naca_generator.h"

namespace tarvokin {
namespace {

NacaAirfoil make(int family, std::array<int, 6> design, int points = 200, int distribution = 0) {
    NacaRequest r;
    r.family = family;
    r.design = design;
    r.points = points;
    r.distribution = distribution;
    NacaAirfoil a;
    std::string error;
    EXPECT_TRUE(GenerateNaca(r, a, error)) << error;
    return a;
}

// y of a surface at x, linearly between its points (per cent of chord).
double percentAt(const OutlinePoints& side, double xPercent) {
    const double x = xPercent / 100;
    for (size_t i = 1; i < side.size(); ++i) {
        if ((side[i - 1].x - x) * (side[i].x - x) <= 0) {
            const double w = (x - side[i - 1].x) / (side[i].x - side[i - 1].x);
            return 100 * (side[i - 1].y + w * (side[i].y - side[i - 1].y));
        }
    }
    return NAN;
}

TEST(NacaStations, DistributionsWithTheProgramsPi) {
    // N = 2 with both ends bunched: stations 0 and 1 (to the 7 decimals written).
    const auto both = NacaStations(2, 3);
    ASSERT_EQ(both.size(), 2u);
    EXPECT_EQ(both[0], 0.0);
    EXPECT_NEAR(both[1], 1.0, 5e-8);
    // The even distribution ends exactly at the trailing edge.
    const auto even = NacaStations(5, 0);
    EXPECT_DOUBLE_EQ(even[2], 0.5);
    EXPECT_DOUBLE_EQ(even[4], 1.0);
    // Bunched at the leading edge with pi = 3.14116: the last station stops
    // short of 1 by 1 - cos(3.14116 / 2).
    const auto le = NacaStations(3, 1);
    EXPECT_NEAR(le[2], 1 - std::cos(3.14116 / 2), 1e-15);
    EXPECT_LT(le[1], 0.5);  // denser forward
    const auto te = NacaStations(3, 2);
    EXPECT_GT(te[1], 0.5);  // denser aft
    EXPECT_TRUE(NacaStations(1, 0).empty());
    EXPECT_TRUE(NacaStations(0, 3).empty());
    EXPECT_TRUE(NacaStations(10, 4).empty());
}

TEST(NacaThickness, FourDigitAgainstNaca0012AndTheOpenTrailingEdge) {
    // NACA 0012, Abbott & von Doenhoff, Theory of Wing Sections, Appendix II.
    const std::pair<double, double> published[] = {{1.25, 1.894}, {5, 3.555}, {10, 4.683}, {30, 6.002},
                                                   {50, 5.294},   {80, 2.623}, {95, 0.807}, {100, 0.126}};
    for (auto [x, y] : published) EXPECT_NEAR(100 * NacaFourThickness(x / 100, 0.12), y, 0.0015) << x;
    // 1.4845 - 0.63 - 1.758 + 1.4215 - 0.5075 = 0.0105 at x = 1.
    EXPECT_NEAR(NacaFourThickness(1.0, 0.2), 0.0105 * 0.2, 1e-15);
    // Leading-edge radius 1.1019 t²: y² / (2 x) tends to it at the nose.
    const double x = 1e-8, y = NacaFourThickness(x, 0.12);
    EXPECT_NEAR(y * y / (2 * x), 1.1019 * 0.12 * 0.12, 1e-4);
}

TEST(NacaThickness, ModifiedFormsMeetSmoothlyAtTheirThickestPoint) {
    // Modified four-digit 0012-64 and the 16-series form (index 4, thickest at
    // 50 %): the largest thickness t/2 lies at m, where both parts meet with
    // the same slope (0) and the same curvature, and the trailing edge is
    // 0.002 x 5t.
    for (auto [I, m] : {std::pair{6.0, 0.4}, std::pair{4.0, 0.5}, std::pair{3.0, 0.3}}) {
        const double t = 0.12, h = 1e-4;
        EXPECT_NEAR(NacaModifiedThickness(m, t, I, m), t / 2, 1e-12);
        double largest = 0, where = 0;
        for (int i = 0; i <= 1000; ++i) {
            const double y = NacaModifiedThickness(i / 1000.0, t, I, m);
            if (y > largest) largest = y, where = i / 1000.0;
        }
        EXPECT_NEAR(where, m, 0.002) << I << " " << m;
        const double before = NacaModifiedThickness(m - h, t, I, m), after = NacaModifiedThickness(m + h, t, I, m);
        EXPECT_NEAR((after - before) / (2 * h), 0, 1e-6);
        const double c1 = (NacaModifiedThickness(m - 2 * h, t, I, m) - 2 * before + t / 2) / (h * h);
        const double c2 = (t / 2 - 2 * after + NacaModifiedThickness(m + 2 * h, t, I, m)) / (h * h);
        EXPECT_NEAR(c1, c2, 0.02 * std::fabs(c1)) << I << " " << m;
        EXPECT_NEAR(NacaModifiedThickness(1.0, t, I, m), 0.002 * 5 * t, 1e-12);
    }
}

TEST(NacaThickness, SixSeriesTablesAndBetweenThem) {
    std::vector<double> x{0.005, 0.05, 0.30, 0.50, 0.90, 1.0}, y;
    std::string error;
    // 64-012 as printed in NACA Report 824 (the published table kept).
    ASSERT_TRUE(Naca6Thickness("64", 12, x, y, error)) << error;
    const double p64[] = {0.978, 2.810, 5.844, 5.480, 0.786, 0.0};
    for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(100 * y[i], p64[i], 1e-9) << x[i];
    // 64A012 as printed: the 6A forms keep a finite trailing edge.
    ASSERT_TRUE(Naca6Thickness("64A", 12, x, y, error)) << error;
    const double p64a[] = {0.961, 2.788, 5.809, 5.605, 1.263, 0.025};
    for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(100 * y[i], p64a[i], 1e-9) << x[i];
    // 11 % lies half way between the 10 % (recomputed) and 12 % (published) forms.
    ASSERT_TRUE(Naca6Thickness("64", 11, {0.30}, y, error));
    EXPECT_NEAR(100 * y[0], (4.8570 + 5.844) / 2, 1e-9);
    // Between stations the nose keeps growing and stays between its neighbours.
    ASSERT_TRUE(Naca6Thickness("64", 12, {0.005, 0.006, 0.0075}, y, error));
    EXPECT_LT(y[0], y[1]);
    EXPECT_LT(y[1], y[2]);

    EXPECT_FALSE(Naca6Thickness("64", 25, x, y, error));
    EXPECT_NE(error.find("hors des tables"), std::string::npos);
    EXPECT_FALSE(Naca6Thickness("64A", 18, x, y, error));  // 6A tables stop at 15 %
    EXPECT_FALSE(Naca6Thickness("67", 10, x, y, error));   // 67 only at 12 and 15 %
    EXPECT_FALSE(Naca6Thickness("62", 12, x, y, error));
}

TEST(NacaMeanLines, AgainstThePublishedTables) {
    // Mean lines for a design lift of 1, Abbott & von Doenhoff Appendix II:
    // a = 1.0, and a = 0.8 (modified) of the 6A series, with their slopes.
    struct Row {
        double x, y, slope;
    };
    for (Row r : {Row{0.5, 0.250, 0.4212}, Row{5, 1.580, 0.2343}, Row{30, 4.860, 0.06745}, Row{50, 5.515, 0.0},
                  Row{90, 2.585, -0.17485}}) {
        // The printed a = 1.0 table differs from its own formula by up to
        // 0.002 (2.585 at 90 % where the symmetric formula gives 2.587).
        const MeanLinePoint p = NacaMeanLineA10(r.x / 100, 1.0);
        EXPECT_NEAR(100 * p.y, r.y, 0.0025) << r.x;
        EXPECT_NEAR(p.slope, r.slope, 2e-4) << r.x;
    }
    for (Row r : {Row{0.5, 0.281, 0.47539}, Row{5, 1.803, 0.27149}, Row{30, 5.742, 0.08595}, Row{50, 6.651, 0.00607},
                  Row{90, 2.452, -0.24521}, Row{100, 0.0, -0.24521}}) {
        const MeanLinePoint p = NacaMeanLineA08Modified(r.x / 100, 1.0);
        EXPECT_NEAR(100 * p.y, r.y, 0.0015) << r.x;
        EXPECT_NEAR(p.slope, r.slope, 2e-4) << r.x;
    }
    // The ends of the logarithmic lines are finite.
    for (double x : {0.0, 1.0}) {
        EXPECT_EQ(NacaMeanLineA10(x, 0.4).y, 0.0);
        EXPECT_TRUE(std::isfinite(NacaMeanLineA10(x, 0.4).slope));
        EXPECT_TRUE(std::isfinite(NacaMeanLineA(x, 0.8, 0.4).y));
    }
    // Five-digit: the 230 line is highest at 15 % (second digit 3), then
    // straight from m = 0.2025 with slope -k1 m³ / 6; the reflexed 231 line
    // comes down to the trailing edge much flatter. No constants for P = 0 or 6.
    MeanLinePoint p;
    ASSERT_TRUE(NacaFiveMeanLine(0.15, 2, 3, 0, p));
    EXPECT_NEAR(p.slope, 0, 2e-3);
    ASSERT_TRUE(NacaFiveMeanLine(0.5, 2, 3, 0, p));
    EXPECT_NEAR(p.slope, -15.957 * std::pow(0.2025, 3) / 6, 1e-12);
    MeanLinePoint reflexed;
    ASSERT_TRUE(NacaFiveMeanLine(1.0, 2, 3, 1, reflexed));
    EXPECT_NEAR(reflexed.y, 0, 1e-12);
    EXPECT_GT(reflexed.slope, p.slope / 5);
    EXPECT_FALSE(NacaFiveMeanLine(0.5, 2, 0, 0, p));
    EXPECT_FALSE(NacaFiveMeanLine(0.5, 2, 1, 1, p));
    EXPECT_FALSE(NacaFiveMeanLine(0.5, 2, 6, 0, p));
}

TEST(NacaAirfoils, SurfacesOfOneAirfoilOfEachFamily) {
    // 0012: camber 0 gives mirrored surfaces (with a position of 0 too).
    const NacaAirfoil sym = make(naca::Four, {0, 0, 12}, 50, 0);
    for (size_t i = 0; i < sym.upper.size(); ++i) {
        EXPECT_EQ(sym.upper[i].x, sym.lower[i].x);
        EXPECT_EQ(sym.upper[i].y, -sym.lower[i].y);
    }
    EXPECT_NEAR(sym.upper.back().y, 0.00126, 1e-7);  // 0.0105 t: the trailing edge stays open

    // NACA 23012, Abbott & von Doenhoff Appendix II (2 decimals, surface stations).
    const NacaAirfoil a23 = make(naca::Five, {2, 3, 0, 12}, 400, 0);
    const double upper[][2] = {{5, 4.91}, {20, 7.50}, {30, 7.55}, {50, 6.41}, {80, 3.08}};
    const double lower[][2] = {{5, -2.26}, {20, -3.97}, {30, -4.46}, {50, -4.17}, {80, -2.16}};
    for (auto& u : upper) EXPECT_NEAR(percentAt(a23.upper, u[0]), u[1], 0.02) << u[0];
    for (auto& l : lower) EXPECT_NEAR(percentAt(a23.lower, l[0]), l[1], 0.02) << l[0];

    // 64-212: the 64-012 form on the a = 1.0 line at 0.2 (Report 824 figures
    // above); the mean line of the file is the published line times 0.2.
    const NacaAirfoil a64 = make(naca::Series6, {64, 0, 2, 12}, 201, 0);
    EXPECT_EQ(a64.name, "NACA64-212");
    EXPECT_NEAR(100 * a64.camber[100].y, 0.2 * 5.515, 0.001);
    EXPECT_NEAR(a64.thickness, 12.0, 0.02);
    // 64A210 on the modified a = 0.8 line; 16-212; the biconvex arcs.
    const NacaAirfoil a6a = make(naca::Series6A, {64, 0, 2, 10}, 201, 0);
    EXPECT_NEAR(100 * a6a.camber[100].y, 0.2 * 6.651, 0.001);
    const NacaAirfoil a16 = make(naca::Series16, {16, 2, 12}, 201, 0);
    EXPECT_NEAR(a16.thickness, 12.0, 1e-6);
    const NacaAirfoil bi = make(naca::Biconvex, {8}, 201, 0);
    EXPECT_FALSE(bi.hasMeanLine);
    EXPECT_NEAR(bi.upper[100].y, 0.04, 1e-7);
    EXPECT_EQ(bi.upper.front().y, 0.0);
    EXPECT_NEAR(bi.upper.back().y, 0.0, 1e-7);
    // Thickness laid square to the mean line: the upper point of a cambered
    // section stands ahead of its station forward of the highest camber.
    const NacaAirfoil c = make(naca::Four, {4, 4, 12}, 21, 0);
    EXPECT_LT(c.upper[4].x, c.stations[4]);
    EXPECT_GT(c.lower[4].x, c.stations[4]);
}

TEST(NacaAirfoils, NamesOfEveryFamily) {
    auto name = [](int family, std::array<int, 6> d) {
        NacaRequest r;
        r.family = family;
        r.design = d;
        return NacaName(r);
    };
    EXPECT_EQ(name(naca::Four, {2, 4, 12}), "NACA2412");
    EXPECT_EQ(name(naca::Four, {0, 0, 9}), "NACA0009");
    EXPECT_EQ(name(naca::Five, {2, 3, 0, 12}), "NACA23012");
    EXPECT_EQ(name(naca::FourModified, {0, 0, 12, 6, 4}), "NACA0012-64");
    EXPECT_EQ(name(naca::FiveModified, {2, 3, 1, 15, 6, 3}), "NACA23115-63");
    EXPECT_EQ(name(naca::Series16, {16, 3, 9}), "NACA16-309");
    EXPECT_EQ(name(naca::Series6, {65, 1, 4, 15}), "NACA651-415");
    EXPECT_EQ(name(naca::Series6A, {63, 0, 2, 10}), "NACA63A210");
    EXPECT_EQ(name(naca::Biconvex, {6}), "BICONVEX6");
}

TEST(NacaAirfoils, BadInputIsRefusedWithAReason) {
    auto refuse = [](int family, std::array<int, 6> d, int points, int distribution, const char* words) {
        NacaRequest r{family, d, points, distribution};
        NacaAirfoil a;
        a.name = "kept";
        std::string error;
        EXPECT_FALSE(GenerateNaca(r, a, error));
        EXPECT_NE(error.find(words), std::string::npos) << error;
        EXPECT_EQ(a.name, "kept");
    };
    refuse(naca::Four, {10, 4, 12}, 100, 0, "hors des limites");
    refuse(naca::Four, {2, 4, 0}, 100, 0, "hors des limites");
    refuse(naca::Four, {2, 0, 12}, 100, 0, "division par zéro");
    refuse(naca::Four, {2, 4, 12}, 1, 0, "Nbre de Points");
    refuse(naca::Four, {2, 4, 12}, 0, 0, "Nbre de Points");
    refuse(naca::Four, {2, 4, 12}, 401, 0, "Nbre de Points");
    refuse(naca::Five, {2, 1, 1, 12}, 100, 0, "ligne moyenne");
    refuse(naca::Series6, {64, 0, 2, 24}, 100, 0, "hors des tables");
    refuse(naca::Series6A, {66, 0, 2, 12}, 100, 0, "hors des limites");
    refuse(9, {}, 100, 0, "Famille");
}

TEST(NacaAirfoils, OutlineFileOrderAndFormat) {
    const NacaAirfoil a = make(naca::Four, {2, 4, 12}, 4, 0);
    std::istringstream text(NacaOutlineText(a));
    std::vector<std::string> lines;
    for (std::string l; std::getline(text, l);) lines.push_back(l);
    // Upper from the trailing edge to the nose, then the lower from station 2.
    ASSERT_EQ(lines.size(), 2 * 4 - 1u);
    EXPECT_EQ(lines[3], "0.0000000 0.0000000");
    // The cambered trailing edge leans with the mean line: just behind x = 1 above, ahead below.
    EXPECT_EQ(lines[0].substr(0, 5), "1.000");
    EXPECT_EQ(lines[6].substr(0, 5), "0.999");
    EXPECT_EQ(lines[6][10], '-');
    for (const std::string& l : lines) {
        const size_t blank = l.find(' ');
        ASSERT_NE(blank, std::string::npos);
        EXPECT_EQ(blank - l.find('.'), 8u) << l;             // 7 decimals for x
        EXPECT_EQ(l.size() - 1 - l.rfind('.'), 7u) << l;     // and for y
    }
    const OutlinePoints pts = NacaOutline(a);
    EXPECT_GT(pts[1].y, 0);
    EXPECT_LT(pts[4].y, 0);
}

}  // namespace
}  // namespace tarvokin

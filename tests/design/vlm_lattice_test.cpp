// CalcVLM: strips, the reduction to four sections, the chord law, the
// influence of a horseshoe worked by hand, the inversion, and the physics of
// the result on simple wings.
#include <gtest/gtest.h>

#include <cmath>

#include "design/vlm.h"
#include "designs.h"

namespace tarvokin {
namespace {

using test::Bench;
using test::setRow;

// A rectangular untwisted wing of one panel, `half` mm a side.
void rectangle(Sheet& s, double chord, double half, double zeroLift) {
    setRow(s, grid::kRoot, {chord});
    setRow(s, grid::kTip, {chord});
    setRow(s, grid::kLength, {half});
    setRow(s, grid::kSweep, {0});
    setRow(s, grid::kTwist, {0});
    s.set(F_GEO_SF::j12, plain(zeroLift));
}

double cz(const Sheet& s) { return toNumber(s.text(F_VLM::P25)); }

TEST(VlmStrips, EdgesAndStationsAreExactDecimalsSymmetricAboutTheRoot) {
    const auto e = StripEdges();
    const auto c = ControlStations();
    EXPECT_EQ(e.front(), -1.0);
    EXPECT_EQ(e[20], 0.0);
    EXPECT_EQ(e.back(), 1.0);
    EXPECT_EQ(e[1], -0.95);  // a running sum of 0.05 unrounded drifts off the decimal
    EXPECT_EQ(c.front(), -0.975);
    EXPECT_EQ(c.back(), 0.975);
    for (size_t i = 0; i < c.size(); ++i) {
        EXPECT_DOUBLE_EQ(c[i], -c[c.size() - 1 - i]);
        EXPECT_NEAR(c[i], (e[i] + e[i + 1]) / 2, 1e-12);  // the station is the strip's middle
    }
}

TEST(VlmSections, EachPanelCountGivesItsBreaks) {
    // Panels of 100..500 mm; chords fall by 20 mm a panel from 200; sweeps and
    // twists at the tips 10, 20.. mm and -1, -2.. degrees.
    std::array<VlmPanel, 5> p{};
    for (size_t k = 0; k < 5; ++k) {
        const double m = static_cast<double>(k);
        p[k] = {200 - 20 * m, 180 - 20 * m, 100 * (m + 1), 10 * (m + 1), -(m + 1)};
    }
    struct Case {
        int n;
        double half;
        std::array<double, 4> stations;  // mm: three inner breaks and the tip
    };
    const Case cases[] = {
        {1, 100, {25, 50, 75, 100}},
        {2, 300, {100.0 / 3, 200.0 / 3, 100, 300}},
        {3, 600, {50, 100, 300, 600}},
        {4, 1000, {100, 300, 600, 1000}},
        {5, 1500, {200, 600, 1000, 1500}},  // first break between the tips of panels 1 (100) and 2 (300)
    };
    for (const Case& c : cases) {
        VlmSections s{};
        double half = 0;
        ASSERT_TRUE(ReduceToSections(p, c.n, s, &half)) << c.n;
        EXPECT_DOUBLE_EQ(half, c.half) << c.n;
        EXPECT_EQ(s[0].station, 0);
        EXPECT_DOUBLE_EQ(s[0].chord, 200 / c.half);
        for (size_t b = 0; b < 4; ++b) EXPECT_NEAR(s[b + 1].station, c.stations[b] / c.half, 1e-12) << c.n << " " << b;
    }
    VlmSections s{};
    // One panel: chord, sweep and twist a quarter of the way along.
    ASSERT_TRUE(ReduceToSections(p, 1, s));
    EXPECT_DOUBLE_EQ(s[1].chord, 195.0 / 100);
    EXPECT_DOUBLE_EQ(s[1].sweep, 2.5 / 100);
    EXPECT_DOUBLE_EQ(s[1].twist, -0.25);
    // Five panels: the merged break takes the means of the two tips.
    ASSERT_TRUE(ReduceToSections(p, 5, s));
    EXPECT_DOUBLE_EQ(s[1].chord, (180.0 + 160.0) / 2 / 1500);
    EXPECT_NEAR(s[1].sweep, 15.0 / 1500, 1e-9);
    EXPECT_DOUBLE_EQ(s[1].twist, -1.5);
    EXPECT_DOUBLE_EQ(s[4].twist, -5);

    EXPECT_FALSE(ReduceToSections(p, 0, s));
    EXPECT_FALSE(ReduceToSections(p, 6, s));
    std::array<VlmPanel, 5> none{};
    EXPECT_FALSE(ReduceToSections(none, 1, s));  // no span to divide by
}

TEST(VlmSections, ChordLawRoundsItsSlopesAndClosesSectionsAtTheirOuterBreak) {
    VlmSections s{};
    s[0] = {0, 0.4, 0, 0};
    s[1] = {0.3, 0.35, 0, 0};    // slope -0.16666.. -> -0.167
    s[2] = {0.6, 0.3, 0, 0};
    s[3] = {0.8, 0.25, 0, 0};
    s[4] = {1.0, 0.1, 0.2, 0};   // slope -0.75 is kept whole
    ChordLaw law = MakeChordLaw(s);
    EXPECT_DOUBLE_EQ(law.b[0], -0.167);
    EXPECT_DOUBLE_EQ(law.b[3], -0.75);
    EXPECT_DOUBLE_EQ(law.at(1), 0.1);
    EXPECT_EQ(law.section(0.3), 0);  // on the break: the inner section
    EXPECT_EQ(law.section(0.30001), 1);
    EXPECT_DOUBLE_EQ(law.at(0.3), 0.4 - 0.167 * 0.3);
    EXPECT_DOUBLE_EQ(SweepAt(s, 0.9), 0.1);
}

TEST(VlmInfluence, TwoHorseshoesWorkedByHand) {
    // Horseshoes on y = -1..0 and 0..1 at x = 0, control points half a unit
    // behind them at y = -0.5 and 0.5. For the own horseshoe:
    //   T1 = -2 (1/r + 1/r) = -2.82842.. -> -2.8284,  T2 = T3 = -2 (1 + 0.5/r) = -3.41421..
    // and for the neighbour:
    //   T1 = -2 (-0.5/r + 1.5/r2) = -0.48315.. -> -0.4832, T2 = 3.41421.. -> 3.4142,
    //   T3 = -(2/3)(1 + 0.5/r2) = -0.87748.., with r = sqrt(0.5), r2 = sqrt(2.5).
    const double r = std::sqrt(0.5), r2 = std::sqrt(2.5);
    const double own = (-2.8284 - 3.4142 + -2 * (1 + 0.5 / r)) * kOneOverFourPi;
    const double next = (-0.4832 + 3.4142 + -(2.0 / 3.0) * (1 + 0.5 / r2)) * kOneOverFourPi;
    const double a00 = InfluenceCoefficient(0.5, -0.5, 0, -1, 0, 0);
    const double a01 = InfluenceCoefficient(0.5, -0.5, 0, 0, 0, 1);
    EXPECT_NEAR(a00, own, 1e-14);
    EXPECT_NEAR(a01, next, 1e-14);
    // The mirror image swaps the roles of T2 (four decimals) and T3 (fifteen):
    // it agrees only to what the coarser rounding leaves.
    EXPECT_NEAR(InfluenceCoefficient(0.5, 0.5, 0, 0, 0, 1), a00, 1e-14);
    EXPECT_NEAR(InfluenceCoefficient(0.5, 0.5, 0, -1, 0, 0), a01, 5e-5 * kOneOverFourPi);
    EXPECT_NE(InfluenceCoefficient(0.5, 0.5, 0, -1, 0, 0), a01);

    // Solved for an incidence of 0.1 rad, both circulations are positive (a
    // downwash factor is negative) and equal: -0.1 / (a00 + a01).
    std::vector<double> inv;
    ASSERT_TRUE(InvertMatrix({a00, a01, a01, a00}, 2, inv));
    const double g0 = inv[0] * -0.1 + inv[1] * -0.1, g1 = inv[2] * -0.1 + inv[3] * -0.1;
    EXPECT_NEAR(g0, -0.1 / (a00 + a01), 1e-12);
    EXPECT_NEAR(g0, g1, 1e-15);
    EXPECT_GT(g0, 0);
}

TEST(VlmInversion, LuWithPivotingInvertsAndRefusesSingularMatrices) {
    // A zero in the first pivot place needs the row exchange.
    std::vector<double> inv;
    ASSERT_TRUE(InvertMatrix({0, 2, 1, 3}, 2, inv));
    EXPECT_NEAR(inv[0], -1.5, 1e-15);
    EXPECT_NEAR(inv[1], 1, 1e-15);
    EXPECT_NEAR(inv[2], 0.5, 1e-15);
    EXPECT_NEAR(inv[3], 0, 1e-15);

    const std::vector<double> before{7, 7, 7, 7};
    inv = before;
    EXPECT_FALSE(InvertMatrix({1, 2, 2, 4}, 2, inv));  // zero pivot
    EXPECT_FALSE(InvertMatrix({0, 0, 1, 2}, 2, inv));  // zero row
    EXPECT_FALSE(InvertMatrix({1, 2, 3}, 2, inv));     // not square
    EXPECT_FALSE(InvertMatrix({1, NAN, 0, 1}, 2, inv));
    EXPECT_EQ(inv, before);
}

TEST(CalcVlm, SingularSystemBeepsAndLeavesTheLastResult) {
    Bench b;
    rectangle(b.s, 200, 1000, -2);
    ASSERT_TRUE(CalcVLM(b.wb));
    const std::string p25 = b.s.text(F_VLM::P25);
    const std::vector<VlmRow> cl = b.wb.vlm.VlmCl;
    int beeps = 0;
    b.wb.beep = [&beeps] { ++beeps; };
    // A sweep far beyond any wing overflows the distances: no usable matrix.
    setRow(b.s, grid::kSweep, {1e300});
    EXPECT_FALSE(CalcVLM(b.wb));
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(b.s.text(F_VLM::P25), p25);
    ASSERT_EQ(b.wb.vlm.VlmCl.size(), cl.size());
    EXPECT_EQ(b.wb.vlm.VlmCl[5].value, cl[5].value);
}

TEST(CalcVlm, ZeroAngleOfAHighAspectRatioWingLiftsAboutPointElevenPerDegreeOfCamber) {
    Bench b;
    rectangle(b.s, 200, 4000, -3);  // aspect ratio 40
    b.s.set(F_VLM::N25, "0");
    ASSERT_TRUE(CalcVLM(b.wb));
    EXPECT_NEAR(cz(b.s), 0.11 * 3, 0.11 * 3 * 0.08);
    ASSERT_EQ(b.wb.vlm.VlmCl.size(), 40u);
    EXPECT_DOUBLE_EQ(b.wb.vlm.VlmCl.back().y, 0.975 * 4000);  // y in mm
}

TEST(CalcVlm, RectangularUntwistedWingIsSymmetricAndBelowElliptic) {
    Bench b;
    rectangle(b.s, 180, 900, -2.5);
    b.s.set(F_VLM::N25, "2");
    ASSERT_TRUE(CalcVLM(b.wb));
    const VlmState& v = b.wb.vlm;
    for (size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(v.VlmCl[i].value, v.VlmCl[39 - i].value) << i;
        EXPECT_EQ(v.VlmGamma[i].y, -v.VlmGamma[39 - i].y) << i;
        EXPECT_GT(v.VlmGamma[i].value, 0) << i;
    }
    // Loading falls towards the tips; the ellipse of the same total peaks higher at the root.
    EXPECT_LT(v.VlmGamma[0].value, v.VlmGamma[19].value);
    EXPECT_GT(v.VlmEllipse[19].value, v.VlmGamma[19].value);
    const double oswald = toNumber(b.s.text(F_VLM::S25));
    EXPECT_LT(oswald, 1);
    EXPECT_GT(oswald, 0.7);
}

TEST(CalcVlm, LiftSlopeOfARectangularWingMatchesTheLiftingLineEstimate) {
    // Aspect ratio 6. One chordwise row of horseshoes (the three-quarter-chord
    // rule) is a lifting-surface estimate, and for a rectangular planform it
    // reads some 5 to 7 % below the lifting-line estimate
    // a = 2 pi A / (2 + sqrt(A² + 4)), which assumes near-elliptic loading;
    // the circulations carry four decimals (about 0.3 % here). 10 % covers
    // that and still separates a lost factor of 2, of pi, of 4 pi or of
    // degrees against radians.
    Bench b;
    rectangle(b.s, 200, 600, 0);
    b.s.set(F_VLM::N25, "0");
    ASSERT_TRUE(CalcVLM(b.wb));
    EXPECT_EQ(cz(b.s), 0);
    EXPECT_EQ(b.s.text(F_VLM::S25), "-");  // no lift, no factor
    b.s.set(F_VLM::N25, "5");
    ASSERT_TRUE(CalcVLM(b.wb));
    const double slope = cz(b.s) / (5 / kVlmDegreesPerRadian);
    const double a = 2 * M_PI * 6 / (2 + std::sqrt(36.0 + 4));
    EXPECT_NEAR(slope, a, a * 0.10);
    b.s.set(F_VLM::N25, "-5");
    ASSERT_TRUE(CalcVLM(b.wb));
    EXPECT_NEAR(cz(b.s), -slope * 5 / kVlmDegreesPerRadian, 1e-6);
    EXPECT_EQ(b.s.text(F_VLM::S25), "-");
}

TEST(CalcVlm, WashoutUnloadsTheTips) {
    Bench b;
    rectangle(b.s, 200, 1000, -2);
    ASSERT_TRUE(CalcVLM(b.wb));
    const double flatTip = b.wb.vlm.VlmCl[0].value;
    const double flatCz = cz(b.s);
    setRow(b.s, grid::kTwist, {-3});
    ASSERT_TRUE(CalcVLM(b.wb));
    EXPECT_LT(b.wb.vlm.VlmCl[0].value, flatTip * 0.8);
    EXPECT_LT(cz(b.s), flatCz);
}

}  // namespace
}  // namespace tarvokin

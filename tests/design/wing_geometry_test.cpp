// Wing formulas on hand-computed designs.
#include <gtest/gtest.h>

#include "design/geometry.h"
#include "designs.h"

namespace tarvokin {
namespace {

using test::Bench;
using test::setRow;

TEST(WingGeometry, RectangularWing) {
    Bench b;
    test::rectangularWing(b.s);
    EXPECT_DOUBLE_EQ(PanelArea(b.s, 1), 20.0);
    EXPECT_DOUBLE_EQ(WingArea(b.s), 20.0);
    EXPECT_DOUBLE_EQ(Span(b.s), 1000.0);
    EXPECT_DOUBLE_EQ(MeanChordPlain(b.s), 200.0);
    EXPECT_DOUBLE_EQ(AspectRatio(b.s), 5.0);
    EXPECT_DOUBLE_EQ(LiftSlopeFactor(b.s), 5.0 / 7.0);
    EXPECT_DOUBLE_EQ(EllipticAspectRatio(b.s), 6.35);
    EXPECT_DOUBLE_EQ(WingFoyer(b.s), 50.0);
    EXPECT_DOUBLE_EQ(MeanChordStation(b.s), 250.0);
    // 200 mm at 36 km/h = 10 m/s: 200 × 70 × 10.
    EXPECT_DOUBLE_EQ(Reynolds(b.s, 200), 140000.0);
    EXPECT_DOUBLE_EQ(WingLoading(b.s, 500), 25.0);
    EXPECT_DOUBLE_EQ(AspectRatioSI(b.s), 5.0);
    EXPECT_DOUBLE_EQ(AverageChordCheck(b.s), 0.2);
    EXPECT_EQ(CountFilledPanels(b.s), 1);
}

// Three tapered, swept panels: 250/220 × 400 sweep 10, 220/180 × 350 sweep 40,
// 180/120 × 250 sweep 90, roots chained from the tips.
void taperedWing(Sheet& s) {
    setRow(s, grid::kRoot, {250, 220, 180});
    setRow(s, grid::kTip, {220, 180, 120});
    setRow(s, grid::kLength, {400, 350, 250});
    setRow(s, grid::kSweep, {10, 40, 90});
}

TEST(WingGeometry, TaperedThreePanelWing) {
    Bench b;
    taperedWing(b.s);
    EXPECT_DOUBLE_EQ(PanelArea(b.s, 1), 18.8);
    EXPECT_DOUBLE_EQ(PanelArea(b.s, 3), 7.5);
    EXPECT_DOUBLE_EQ(WingArea(b.s), 40.3);
    // Panel 1: 220 + 30 × 720 / 1410; panel 2: 180 + 40 × 620 / 1200.
    EXPECT_NEAR(PanelMac(b.s, 1), 235.3191489, 1e-6);
    EXPECT_NEAR(PanelMac(b.s, 2), 200.6666667, 1e-6);
    // Sweep shift of panel 2: (40 - 10) × 580 / 1200 = 14.5, on top of F(1) = 10.
    EXPECT_DOUBLE_EQ(PanelSweepShift(b.s, 2), 14.5);
    EXPECT_NEAR(PanelPointAt(b.s, 2, 0.25), 10 + 14.5 + 200.6666667 / 4, 1e-6);
    EXPECT_DOUBLE_EQ(Span(b.s), 2000.0);
    EXPECT_NEAR(MeanChordPlain(b.s), 207.775021, 1e-6);
    EXPECT_DOUBLE_EQ(MeanChord(b.s), 207.78);
    EXPECT_NEAR(AspectRatio(b.s), 9.9255583, 1e-6);
    EXPECT_DOUBLE_EQ(AspectRatio5(b.s), 9.92556);
    EXPECT_NEAR(WingFoyer(b.s), 74.5244003, 1e-6);
    // Stations add the inner sweeps, not the inner spans: y = 400, 360, 300.
    EXPECT_DOUBLE_EQ(MeanChordStation(b.s), 183.75);
    EXPECT_EQ(CountFilledPanels(b.s), 3);
}

TEST(WingGeometry, TipOfZeroEndsTheChain) {
    Bench b;
    taperedWing(b.s);
    b.s.set(F_GEO_SF::d6, "0");
    EXPECT_EQ(PanelSweepShift(b.s, 3), 0.0);
    EXPECT_EQ(PanelPointAt(b.s, 3, 0.25), 0.0);
}

// Five panels, the fifth (Text8 = 4) a winglet of 90/60 × 100.
void wingletWing(Sheet& s) {
    setRow(s, grid::kRoot, {200, 180, 150, 120, 90});
    setRow(s, grid::kTip, {180, 150, 120, 90, 60});
    setRow(s, grid::kLength, {300, 300, 250, 150, 100});
    setRow(s, grid::kSweep, {0, 20, 45, 70, 90});
    s.set(F_3D::Ch_Winglets, "1");
    s.set(F_3D::Text8, "4");
}

TEST(WingGeometry, WingletHasNoSurfaceButCountsInTheFullSpan) {
    Bench b;
    wingletWing(b.s);
    EXPECT_EQ(WingletPanel(b.s), 5);
    EXPECT_EQ(PanelArea(b.s, 5), 0.0);
    EXPECT_EQ(PanelMac(b.s, 5), 0.0);
    EXPECT_EQ(PanelPointAt(b.s, 5, 0.25), 0.0);
    EXPECT_DOUBLE_EQ(WingArea(b.s), 31.2);
    EXPECT_DOUBLE_EQ(Span(b.s), 2000.0);
    EXPECT_DOUBLE_EQ(SpanAll(b.s), 2200.0);
    EXPECT_NEAR(MeanChordPlain(b.s), 161.9871795, 1e-6);
    EXPECT_DOUBLE_EQ(WingFoyer(b.s), 56.25);
    EXPECT_DOUBLE_EQ(AspectRatio5(b.s), 12.82051);
}

TEST(WingGeometry, WingletIndexOutOfRangeMeansNoWinglet) {
    Bench b;
    wingletWing(b.s);
    for (const char* t : {"0", "5"}) {
        b.s.set(F_3D::Text8, t);
        EXPECT_EQ(WingletPanel(b.s), 0) << t;
        EXPECT_DOUBLE_EQ(WingArea(b.s), 32.7) << t;
        EXPECT_DOUBLE_EQ(Span(b.s), 2200.0) << t;
    }
    b.s.set(F_3D::Text8, "4");
    b.s.set(F_3D::Ch_Winglets, "0");
    EXPECT_DOUBLE_EQ(WingArea(b.s), 32.7);
}

TEST(WingGeometry, AreaIsReadBackFromItsTwoDecimals) {
    Bench b;
    setRow(b.s, grid::kRoot, {100.005});
    setRow(b.s, grid::kTip, {100});
    setRow(b.s, grid::kLength, {1});
    // 1 × 200.005 / 10000 = 0.0200005 → "0.02".
    EXPECT_DOUBLE_EQ(WingArea(b.s), 0.02);
}

TEST(WingGeometry, ZeroAreaWingRefusesTheRatios) {
    Bench b;
    test::rectangularWing(b.s);
    b.s.set(F_GEO_SF::b7, "0");
    EXPECT_EQ(WingArea(b.s), 0.0);
    EXPECT_THROW(AspectRatio(b.s), RunError);
    EXPECT_THROW(MeanChordPlain(b.s), RunError);
    EXPECT_THROW(WingLoading(b.s, 500), RunError);
}

TEST(WingGeometry, BlankInputIsAFormatError) {
    Bench b;
    test::rectangularWing(b.s);
    b.s.set(F_GEO_SF::b7, "");
    try {
        WingArea(b.s);
        FAIL();
    } catch (const RunError& e) {
        EXPECT_EQ(e.code(), kErrTypeMismatch);
    }
}

TEST(LibraryHelpers, IntPartTruncatesTowardZero) {
    EXPECT_EQ(IntPart(12.9), 12.0);
    EXPECT_EQ(IntPart(-3.5), -3.0);
    EXPECT_EQ(IntPart(7.0), 7.0);
    // Ten decimals first: a value a hair below a whole number becomes it.
    EXPECT_EQ(IntPart(2.99999999999), 3.0);
}

TEST(LibraryHelpers, CmZeroHasSevenDecimals) {
    Bench b;
    b.s.set(F_GEO_SF::j11, "-0.123456789");
    EXPECT_DOUBLE_EQ(CmZero(b.s), -0.1234568);
}

}  // namespace
}  // namespace tarvokin

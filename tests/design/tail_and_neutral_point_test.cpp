// Tail, fuselage, downwash, neutral point and air on hand-computed designs.
#include <gtest/gtest.h>

#include <cmath>

#include "design/geometry.h"
#include "designs.h"

namespace tarvokin {
namespace {

using test::Bench;
using test::setRow;

// One stabiliser panel 100/70 × 300, sweep 15.
void oneStabPanel(Sheet& s) {
    setRow(s, grid::kStabRoot, {100});
    setRow(s, grid::kStabTip, {70});
    setRow(s, grid::kStabLength, {300});
    setRow(s, grid::kStabSweep, {15});
}

TEST(TailGeometry, FlatStabiliser) {
    Bench b;
    test::rectangularWing(b.s);
    oneStabPanel(b.s);
    b.s.set(F_3D::D20, "35");
    b.s.set(F_3D::d21, "2.5");
    EXPECT_DOUBLE_EQ(StabArea(b.s), 5.1);
    EXPECT_DOUBLE_EQ(StabSpan(b.s), 600.0);
    EXPECT_NEAR(StabMeanChord(b.s), 85.8823529, 1e-6);
    // Shift 15 × 240 / 510, plus a quarter of the mean chord.
    EXPECT_NEAR(StabFoyer(b.s), 28.5294118, 1e-6);
    EXPECT_NEAR(StabAspectRatio(b.s), 7.0588235, 1e-6);
    EXPECT_NEAR(StabLiftSlope(b.s), 0.7792208, 1e-6);
    EXPECT_DOUBLE_EQ(StabEllipticRatio(b.s), 7.62);
    // 180°: the projection keeps the area, up to the library's pi.
    EXPECT_NEAR(StabProjectedArea(b.s), 5.1, 1e-6);
    EXPECT_DOUBLE_EQ(StabHeight(b.s), 35.0);
    EXPECT_EQ(FinPercent(b.s), 0.0);
    // 600 + 28.53 - 50 mm between the neutral points.
    EXPECT_NEAR(StabLever(b.s), 578.5294118, 1e-6);
}

TEST(TailGeometry, VTailProjectsAndRaisesTheTail) {
    Bench b;
    test::rectangularWing(b.s);
    oneStabPanel(b.s);
    b.s.setListIndex(F_GEO_STAB::b21, 1);  // 120°
    b.s.set(F_3D::D20, "35");
    b.s.set(F_3D::d21, "2.5");
    EXPECT_EQ(OpeningAngle(b.s), 120.0);
    // sin²(60° with pi 3.14116) and (600 / 2) × cos(same) / 2.5.
    EXPECT_NEAR(StabProjectedArea(b.s), 3.8243630, 1e-6);
    EXPECT_NEAR(StabHeight(b.s), 60.0149869, 1e-6);
    EXPECT_DOUBLE_EQ(FinPercent(b.s), 0.025);
}

TEST(TailGeometry, NoStabiliserRootKeepsTheNeutralPointAtAQuarter) {
    Bench b;
    test::rectangularWing(b.s);  // tail rows all zero
    EXPECT_EQ(StabArea(b.s), 0.0);
    EXPECT_EQ(StabLever(b.s), 1.0);
    EXPECT_EQ(StabLiftSlope(b.s), 0.000001);
    EXPECT_EQ(StabProjectedArea(b.s), 0.0);
    EXPECT_EQ(StabVolume(b.s), 0.0);
    EXPECT_DOUBLE_EQ(NeutralPoint(b.s), 0.25);
    b.s.set(F_GEO_SF_REGLAGES::C29, "5");
    EXPECT_DOUBLE_EQ(CgPoint(b.s), 0.20);
    EXPECT_DOUBLE_EQ(CgStation(b.s), 40.0);
    EXPECT_DOUBLE_EQ(NeutralStation(b.s), 50.0);
}

TEST(TailGeometry, ZeroLeverFieldIsRewrittenAsZeroPointZero) {
    Bench b;
    test::rectangularWing(b.s);
    for (const char* lever : {"0", ""}) {
        b.s.set(F_GEO_STAB::b20, lever);
        EXPECT_EQ(StabLever(b.s), 1.0);
        EXPECT_EQ(b.s.text(F_GEO_STAB::b20), "0.0");
    }
    b.s.set(F_GEO_STAB::b20, "450");
    StabLever(b.s);
    EXPECT_EQ(b.s.text(F_GEO_STAB::b20), "450");
}

TEST(TailGeometry, FinAreaDoublesForTwinFins) {
    Bench b;
    b.s.set(F_GEO_STAB::Text12, "150");
    b.s.set(F_GEO_STAB::Text11, "90");
    b.s.set(F_GEO_STAB::Text10, "180");
    EXPECT_DOUBLE_EQ(FinArea(b.s), 2.16);
    b.s.set(F_GEO_STAB::Check2, "1");
    EXPECT_DOUBLE_EQ(FinArea(b.s), 4.32);
}

TEST(FuselageGeometry, GliderFuselage) {
    Bench b;
    test::glider(b.wb);
    EXPECT_EQ(FuselageType(b.s), 2);
    EXPECT_EQ(TailType(b.s), 2);
    EXPECT_DOUBLE_EQ(FuselageFoyerPercent(b.s), 20.0);
    EXPECT_DOUBLE_EQ(FuselagePlanArea(b.s), 1.1 * 0.06 * 0.7);
    EXPECT_NEAR(FuselageWetArea(b.s), 0.1886580696, 1e-9);
    EXPECT_DOUBLE_EQ(FuselageShapeFactor(b.s), 1.2);
    EXPECT_NEAR(FuselageSlope(b.s), 0.0891994911, 1e-9);
    b.s.set(F_GEO_FUS::j26, "20");
    EXPECT_DOUBLE_EQ(FuselageFoyerStation(b.s), 220.0);
    b.s.set(F_GEO_FUS::j26, "-");
    EXPECT_EQ(FuselageFoyerStation(b.s), 0.0);
}

TEST(FuselageGeometry, SlopeIsClampedAndFixedWithoutTail) {
    Bench b;
    test::glider(b.wb);
    b.s.set(F_GEO_FUS::D24, "1000");  // raw 0.0204 + a little
    EXPECT_DOUBLE_EQ(FuselageSlope(b.s), 0.05);
    b.s.set(F_GEO_FUS::D24, "20");  // raw above 0.2
    EXPECT_DOUBLE_EQ(FuselageSlope(b.s), 0.11);
    b.s.set(F_GEO_STAB::b18, "0");
    EXPECT_DOUBLE_EQ(FuselageSlope(b.s), 0.04);
}

TEST(FuselageGeometry, NoFuselageAddsNothingAndNeverDividesByItsWidth) {
    Bench b;
    test::rectangularWing(b.s);
    EXPECT_THROW(FuselageSlopeRaw(b.s), RunError);
    EXPECT_EQ(FuselageArea100(b.s), 0.0);
    EXPECT_EQ(FuselageWetArea(b.s), 0.0);
    EXPECT_EQ(FuselageShift(b.s), 0.0);
    EXPECT_DOUBLE_EQ(NeutralPoint(b.s), 0.25);
}

TEST(NeutralPoint, GliderBalancesWingTailAndFuselage) {
    Bench b;
    test::glider(b.wb);
    b.s.set(F_3D::D20, "30");
    b.s.set(F_GEO_FUS::j26, "20");
    EXPECT_NEAR(DownwashSlope(b.s), 0.2666287091, 1e-9);
    EXPECT_NEAR(SlopeSum(b.s), 5.7947128615, 1e-9);
    EXPECT_NEAR(TailShift(b.s), 0.5178746337, 1e-9);
    EXPECT_NEAR(DownwashShift(b.s), 0.0714230711, 1e-9);
    EXPECT_NEAR(FuselageShift(b.s), 0.0448190177, 1e-9);
    EXPECT_NEAR(NeutralPoint(b.s), 0.4016325449, 1e-9);
    EXPECT_NEAR(CgPoint(b.s), 0.3516325449, 1e-9);
    EXPECT_NEAR(CgStation(b.s), 79.2189543, 1e-6);
    EXPECT_NEAR(NeutralStation(b.s), 88.7304047, 1e-6);
    EXPECT_NEAR(StabVolume(b.s), 0.3824088048, 1e-9);
    EXPECT_NEAR(DownwashAngle(b.s), 1.0442051043, 1e-9);
}

TEST(NeutralPoint, DownwashOfALiftingLine) {
    EXPECT_NEAR(DownwashSlopeOf(10, 0.5, 0.05), 0.3775355653, 1e-9);
    EXPECT_THROW(DownwashSlopeOf(10, 0, 0), RunError);
}

TEST(Air, StandardDayFromTheSettings) {
    Bench b;
    b.wb.settings.temperature = 20;
    b.wb.settings.altitude = 300;
    EXPECT_NEAR(AirPressure(b.wb), 977.8439817, 1e-6);
    EXPECT_NEAR(SaturationPressure(b.wb), 23.3809351, 1e-6);
    EXPECT_NEAR(VapourPressure(b.wb), 10.0538021, 1e-6);
    EXPECT_NEAR(DryPressure(b.wb), 967.7901796, 1e-6);
    EXPECT_NEAR(AirDensity(b.wb), 1.1575265691, 1e-9);
    // While the performance panel is open its own altitude and temperature
    // count: 1000 m and 10 °C.
    b.s.set(F_GEO_3::Text2, "1000");
    b.s.set(F_GEO_3::Text3, "10");
    EXPECT_NEAR(AirDensity(b.wb), 1.1575265691, 1e-9);
    b.wb.setOpen(button::Performances, true);
    EXPECT_NEAR(AirPressure(b.wb), 899.9667442, 1e-6);
    EXPECT_NEAR(AirDensity(b.wb), 1.1048114340, 1e-9);
    b.s.set(F_GEO_3::Check3, "0");
    EXPECT_EQ(DragFactorRef(b.wb), 1.1);
    b.s.set(F_GEO_3::Check3, "1");
    EXPECT_EQ(DragFactorRef(b.wb), 1);
}

}  // namespace
}  // namespace tarvokin

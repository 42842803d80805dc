// Servo torque and travel of the four control surfaces.
#include <gtest/gtest.h>

#include "entry/entry_path.h"
#include "design/designs.h"
#include "entry/field_rules.h"
#include "design/recalc.h"
#include "power/servos.h"

using namespace tarvokin;
using tarvokin::test::Bench;

namespace {

// Elevator: 300 mm long, chords 40 and 60 mm, 20° of surface for 45° of servo.
void elevator(Sheet& s) {
    using namespace F_SERVOS;
    for (auto [c, v] : {std::pair{b5, "100"}, {B10, "20"}, {b12, "45"}, {b9, "300"}, {b7, "40"}, {b8, "60"}})
        s.set(c, v);
}

}  // namespace

TEST(Servos, TorqueAndTravelByHandWithTheSquareOfSpeedAndChords) {
    // 300 x 100^2 x 50^2 x sin 20° x tan 20° / tan 45° / 423241618 / 0.981 / 6.5,
    // the angles through pi = 3.14116: 0.34592 Kg/cm; travel 40 x tan 20° = 14.557 mm.
    EXPECT_NEAR(ServoTorque(100, 20, 45, 300, 40, 60), 0.345923, 1e-6);
    EXPECT_NEAR(ServoTravel(40, 20), 14.5566, 1e-4);
    const double t = ServoTorque(100, 20, 45, 300, 40, 60);
    EXPECT_NEAR(ServoTorque(200, 20, 45, 300, 40, 60), 4 * t, 1e-12);
    EXPECT_NEAR(ServoTorque(100, 20, 45, 300, 80, 120), 4 * t, 1e-12);
    Bench b;
    elevator(b.s);
    Calc_Servos(b.wb);
    EXPECT_EQ(b.s.text(F_SERVOS::b13), "0.35");
    EXPECT_EQ(b.s.text(F_SERVOS::b11), "14.56");
}

TEST(Servos, EachColumnAndTheSecondFlapPosition) {
    Bench b;
    using namespace F_SERVOS;
    elevator(b.s);
    // The flap column: same figures but its own angles; the second position at 40°.
    for (auto [cell, v] : {std::pair{h10, "20"}, {h12, "45"}, {h9, "300"}, {h7, "40"}, {h8, "60"}, {k10, "40"}})
        b.s.set(cell, v);
    enterField(b.wb, b5, "200");
    EXPECT_EQ(b.s.text(b13), "1.38");  // four times 0.3459
    EXPECT_EQ(b.s.text(h13), "1.38");
    EXPECT_EQ(b.s.text(k11), "33.56");  // 40 x tan 40°
    EXPECT_NE(b.s.text(k13), b.s.text(h13));
    // A servo angle of 0 leaves nothing to divide by; an empty angle is no number.
    EXPECT_EQ(b.s.text(d13), "-");
    enterField(b.wb, b12, "");
    EXPECT_EQ(b.s.text(b13), "-");
    EXPECT_EQ(b.s.text(b11), "14.56");
}

TEST(Servos, RecalculationRefreshesThemWhileTheWindowIsOpenAndCharts) {
    Bench b;
    test::glider(b.wb);
    elevator(b.s);
    RecalcAll(b.wb);
    EXPECT_EQ(b.s.text(F_SERVOS::b13), "-");
    b.wb.setOpen(button::Servos, true);
    RecalcAll(b.wb);
    EXPECT_EQ(b.s.text(F_SERVOS::b13), "0.35");
    const auto charts = ServoCharts(b.wb);
    ASSERT_EQ(charts.size(), 4u);
    EXPECT_EQ(charts[0].title, "Gouvernes classiques - profondeur");
    EXPECT_EQ(charts[3].title, "Gouvernes classiques - Volets");
    ASSERT_EQ(charts[0].series.size(), 1u);
    EXPECT_NEAR(charts[0].series[0].points[10].y, 0.345923 / 4, 1e-6);
}

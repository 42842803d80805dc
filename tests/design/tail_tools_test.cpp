// The cross tail / V tail calculators.
#include <gtest/gtest.h>

#include "entry/entry_path.h"
#include "design/designs.h"
#include "entry/field_rules.h"
#include "design/tail_tools.h"

using namespace tarvokin;
using tarvokin::test::Bench;

TEST(TailTools, CrossToVWithTheSystemsPi) {
    Bench b;
    using namespace F_STAB;
    enterField(b.wb, D11, "10");
    enterField(b.wb, D12, "10");
    EXPECT_EQ(b.s.text(D14), "10.00");
    // atan(1) x 180 / 3.14116 = 45.0062; the V angle follows the two-decimal dihedral.
    EXPECT_EQ(b.s.text(D15), "45.01");
    EXPECT_EQ(b.s.text(D16), "89.98");
    enterField(b.wb, D12, "5");
    EXPECT_EQ(b.s.text(D15), "26.57");
    enterField(b.wb, D11, "0");
    EXPECT_EQ(b.s.text(D15), "-");
    EXPECT_EQ(b.s.text(D16), "-");
}

TEST(TailTools, VToCrossFromTheHalfOpening) {
    Bench b;
    using namespace F_STAB;
    // 110° of opening: t = tan 55° = 1.42778, 2 x 10 / 2.42778 = 8.24, then 8.24 x t.
    enterField(b.wb, D22, "10");
    EXPECT_EQ(b.s.text(Angle_V), "110");
    EXPECT_EQ(b.s.text(D24), "8.24");
    EXPECT_EQ(b.s.text(D25), "11.76");
    // 90°: half panels at 45° give the same surface to both.
    enterField(b.wb, Angle_V, "90");
    EXPECT_EQ(b.s.text(D24), "10.00");
    EXPECT_EQ(b.s.text(D25), "10.00");
    EXPECT_EQ(b.s.text(D15), "-");  // the other frame still has no surfaces
}

TEST(TailTools, EquivalenceOfChordsAndLength) {
    Bench b;
    using namespace F_STAB_VE;
    for (auto [c, v] : {std::pair{Corde1V, "200"}, {Corde2V, "150"}, {LongueurV, "401"}}) b.s.set(c, v);
    // At 180° the sine is 1 but for its last digits: the values stay.
    enterField(b.wb, OuvertureV, "180");
    EXPECT_EQ(b.s.text(Corde1N), "0");  // a change of the opening computes nothing
    enterField(b.wb, Command1, "1");
    EXPECT_EQ(b.s.text(Corde1N) + " " + b.s.text(Corde2N) + " " + b.s.text(LongueurN), "200 150 401");
    // An empty opening is 110 for the way back: sin 55° = 0.81908.
    b.s.set(OuvertureV, "");
    b.s.set(Corde1N, "164");
    enterField(b.wb, Command2, "1");
    EXPECT_EQ(b.s.text(OuvertureV), "110");
    EXPECT_EQ(b.s.text(Corde1V), "200");  // 200.23 to the millimetre
    enterField(b.wb, Command1, "1");
    EXPECT_EQ(b.s.text(Corde1N), "164");  // 163.82
    enterField(b.wb, OuvertureV, "0");
    enterField(b.wb, Command2, "1");
    EXPECT_EQ(b.s.text(Corde1V), "-");
}

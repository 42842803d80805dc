// The relations of the power train against figures worked out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "power/motor_relations.h"

using namespace tarvokin;

TEST(MotorRelations, EfficiencyFollowsQualityListOrderAndMotorType) {
    // The list shows "Haute", "Basse", "Moyenne"; its position + 1 is q.
    EXPECT_DOUBLE_EQ(MotorEfficiency(QualityNumber(" moyenne "), MotorTypeNumber("Brushless")), 0.85);
    EXPECT_DOUBLE_EQ(MotorEfficiency(QualityNumber("Haute"), 2), 0.65);
    EXPECT_DOUBLE_EQ(MotorEfficiency(QualityNumber("Basse"), MotorTypeNumber("Classique")), 0.65);
    EXPECT_DOUBLE_EQ(MotorEfficiency(3, MotorTypeNumber("Classique")), 0.75);
    EXPECT_TRUE(std::isnan(QualityNumber("Excellente")));
}

TEST(MotorRelations, PropellerSpeedThrustAndPitchSpeed) {
    // 189 W at 85 % into a 10x6 of constant 1.33: n^3 = 160.65 / (1.33 x 6 x 10^4 / (1000^3 x 12^5)).
    const double n = PropellerSpeed(1.33, 1, 0.85, 189, 6, 10);
    EXPECT_NEAR(n, 7941.97, 0.01);
    // The inverse gives the shaft power back, in whole watts.
    EXPECT_EQ(ShaftPower(1.33, 6, 10, 8000), 164);
    EXPECT_EQ(ShaftPower(1.33, 6, 10, n), 160);
    EXPECT_LT(PropellerSpeed(1.33, RendementReduction(3), 0.85, 189, 6, 10), n);
    EXPECT_NEAR(KvFromSpeed(8500, 10), 1000, 1e-9);
    // 6 x 10^3 x 8000^2 x 0.72e-10 ounces, in grams; 60000 inches a minute.
    EXPECT_NEAR(StaticThrust(6, 10, 8000), 783.82, 0.01);
    EXPECT_NEAR(PitchSpeedKmh(6, 10000), 91.442, 0.001);
    EXPECT_NEAR(PitchSpeedMs(6, 10000), 25.4005, 0.0001);
    // 40 g/dm²: 5.9533 x sqrt(40 / 3.051) km/h.
    EXPECT_NEAR(StallSpeed(40), 5.98776, 1e-5);
    EXPECT_EQ(PitchSpeedAdvice(6), "m/s      [idéalement de 15.0 à 18.0]");
}

TEST(MotorRelations, BatteryRunDischargeClimbAndTwoThirds) {
    EXPECT_NEAR(RunTime(2200, 20), 6.27, 1e-9);
    EXPECT_NEAR(DischargeRate(20, 2200), 9.0909, 1e-4);
    EXPECT_NEAR(MaxReasonableCurrent(MaxContinuousCurrent(2200, 10)), 22.0 * 2 / 3, 1e-12);
    EXPECT_TRUE(std::isnan(RunTime(2200, 0)));
    EXPECT_TRUE(std::isnan(DischargeRate(20, 0)));
    // 100 W useful lifts 1 kg at 100 / 9.81 m/s, less the sink.
    EXPECT_NEAR(ClimbRate(100, 1000, 0.5), 9.6937, 1e-4);
    EXPECT_TRUE(std::isnan(ClimbRate(100, 0, 0.5)));
    EXPECT_NEAR(PropellerEfficiency(0.8, 6, 10), 0.72727, 1e-5);  // 2 / 2.2 of the table value
}

TEST(MotorRelations, CellVoltagesNimhFactorAndPropellerNames) {
    // The calculation takes 1.1 V a NiCd element under load, the design window 1 V.
    EXPECT_DOUBLE_EQ(BatteryTable("NiCd / NiMh").TensionElement, 1.1);
    EXPECT_DOUBLE_EQ(DesignWindowVoltage("NiCd / NiMh", 6), 6);
    EXPECT_DOUBLE_EQ(DesignWindowVoltage("A123", 4), 11.2);
    EXPECT_TRUE(std::isnan(BatteryTable("Plomb").TensionElement));
    // A battery text holding NIMH turns Kv x elements by 3.4, whatever the voltage.
    EXPECT_EQ(NoLoadSpeed(1000, 7, "NiCd / NiMh"), 23800);
    EXPECT_EQ(NoLoadSpeed(1000, 3, "Lipo / Li-ion"), 3000);
    EXPECT_DOUBLE_EQ(PropellerByName("apc 10x6 E").CoefHelice, 1.11);
    EXPECT_DOUBLE_EQ(PropellerByName("Camprop").CoefHelice, 1.18);
    EXPECT_DOUBLE_EQ(PropellerByName("GWS").CoefHelice, 1.33);
    EXPECT_DOUBLE_EQ(PropellerByChoice(3).CoefHelice, 1.1);
    EXPECT_DOUBLE_EQ(PropellerByChoice(7).CoefHelice, 1.33);
}

TEST(MotorRelations, ModelRowsCarryTheValuesTheyLeaveOut) {
    EXPECT_DOUBLE_EQ(ModelTable(5).ToursRef, 1.2);  // left out: Remorqueur's
    EXPECT_DOUBLE_EQ(ModelTable(7).ToursRef, 1.2);
    EXPECT_DOUBLE_EQ(ModelTable(7).PuissanceMassique, 220);
    EXPECT_DOUBLE_EQ(ModelTable(2).RatioPasDiametre, 0.8);  // Planeur début's
    EXPECT_DOUBLE_EQ(ModelTable(6).PartGaz, 1);             // Racer's
    EXPECT_TRUE(std::isnan(ModelTable(9).PuissanceMassique));
}

TEST(MotorRelations, OperatingCurrentTakesTheRootBelowTheStall) {
    // A 0.01, Ra 0.1, V 10, Io 1: -0.0001 I^2 + 1.02 I - 2 = 0, roots 1.9612 and 10198.04.
    const auto I = OperatingCurrent(0.01, 0.1, 10, 1);
    ASSERT_TRUE(I);
    EXPECT_NEAR(*I, 1.96116, 1e-5);
    // No-load current above the stall current: both roots drop more than V.
    EXPECT_FALSE(OperatingCurrent(0.01, 1, 1, 5));
    // No real root, and no resistance (nothing to divide by).
    EXPECT_FALSE(OperatingCurrent(10, 1, 1, 5));
    EXPECT_FALSE(OperatingCurrent(0.01, 0, 10, 1));
}

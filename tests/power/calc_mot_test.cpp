// The motor calculation window: the proposal, the chosen set and the curves,
// with figures worked out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "power/calc_mot.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "support/installed_workbench.h"

using namespace tarvokin;
using tarvokin::test::TempDir;

namespace {

struct CalcMot {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Sheet& s = wb.sheet;
    const std::string& t(Cell c) { return s.text(c); }
};

// No cell of the power windows may ever show inf or nan.
void expectNoInfinity(const Sheet& s) {
    for (uint16_t i = 0; i < kCellCount; ++i) {
        const Form f = cellTable()[i].form;
        if (f != Form::F_CALC_MOT && f != Form::F_3D) continue;
        std::string lower = s.text(Cell{i});
        for (char& ch : lower) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
        EXPECT_EQ(lower.find("inf"), std::string::npos) << cellPath(Cell{i}) << "=" << s.text(Cell{i});
        EXPECT_EQ(lower.find("nan"), std::string::npos) << cellPath(Cell{i}) << "=" << s.text(Cell{i});
    }
}

}  // namespace

TEST(Calc08, ProposesFromClassMassAndBattery) {
    CalcMot c;  // a 1 kg "Planeur début" on three Lipo cells, 40 g/dm²
    CALC08(c.wb);
    using namespace F_CALC_MOT;
    EXPECT_EQ(c.t(PM), "125");   // 100 W/kg / 0.8
    EXPECT_EQ(c.t(IM), "11.9");  // 125 / 10.5 V
    EXPECT_EQ(c.t(kv), "1200");  // 10000 / 0.8 / 10.5 = 1190 to the hundred
    EXPECT_EQ(c.t(Régime_standard), "2988");  // 1200 x 3 x 0.83
    EXPECT_EQ(c.t(cb), "992");  // ten minutes at half of 11.905 A
    EXPECT_EQ(c.t(I_Max_Rais), "6.6");  // two thirds of 9.92
    EXPECT_EQ(c.t(L21), "71");  // 0.5 x 1000 x 100/70 x 100 x 0.001
    EXPECT_EQ(c.t(Temps_Moteur), "4.7");
    // Pitch 2.8 x 5.988 m/s x 60 / 10000 = 4.0 inches, diameter 8.7: a 9x4.
    EXPECT_EQ(c.t(HP), "4");
    EXPECT_EQ(c.t(HD), "9");
    EXPECT_EQ(c.t(PLT), "2916");
}

TEST(Calc08, NicdTakesOnePointOneVoltAndTheNimhSpeedFactor) {
    CalcMot c;
    c.s.setListIndex(F_CALC_MOT::G13, 0);
    CALC08(c.wb);
    using namespace F_CALC_MOT;
    EXPECT_EQ(c.t(IM), "37.9");              // 125 W / (3 x 1.1 V)
    EXPECT_EQ(c.t(Regime_a_vide), "38760");  // Kv 12500 / 3.3 = 3788 -> 3800, x 3 x 3.4
}

TEST(Calc08, ZeroMassCellsOrMotorsShowDashesNeverInfinity) {
    CalcMot c;
    using namespace F_CALC_MOT;
    enterField(c.wb, G4, "0");
    EXPECT_EQ(c.t(PM), "0");
    for (Cell cell : {T_Decharge, Temps_Moteur, V_ASC}) EXPECT_EQ(c.t(cell), "-") << cellPath(cell);
    expectNoInfinity(c.s);
    enterField(c.wb, G4, "1000");
    enterField(c.wb, G15, "0");
    for (Cell cell : {IM, kv, Regime_a_vide, cb, T_Decharge, L212}) EXPECT_EQ(c.t(cell), "-") << cellPath(cell);
    expectNoInfinity(c.s);
    enterField(c.wb, L40a, "");
    EXPECT_EQ(c.t(Lpitch), "-");
    expectNoInfinity(c.s);
}

TEST(Calc08, ChosenSetBalancesMotorAndPropeller) {
    CalcMot c;
    using namespace F_CALC_MOT;
    // An AXI 2820/10 on a 10x6 APC and 2200 mAh cells.
    for (auto [cell, v] : {std::pair{G29, "1200"}, {Ra, "0.039"}, {Io, "2.3"}, {N51, "6"}, {L51, "10"}, {L33, "2200"}})
        c.s.set(cell, v);
    c.s.setListIndex(choix_helice, 1);
    CALC08(c.wb);
    // A = 1.11 x 6/12 x (10/12)^4 x 1.2^3 = 0.4625; I - 2.3 = A (10.5 - 0.039 I)^2
    // has its root below the stall at 39.444 A: 414 W, which is 39.43 A.
    EXPECT_EQ(c.t(PElec0), "414");
    EXPECT_EQ(c.t(I0), "39.43");
    EXPECT_EQ(c.t(Regime_Moteur0), "10754");  // (10.5 - 39.43 x 0.039) x 1200
    EXPECT_EQ(c.t(Ratio_Helice), "0.60");
    EXPECT_EQ(c.t(PLT0), "6000");
    EXPECT_EQ(c.t(L34), "88");  // 40 g an element of 1000 mAh
    EXPECT_EQ(c.t(I_Max_Rais0), "14.7");
    // No-load current above what the battery can push through the winding.
    enterField(c.wb, Io, "400");
    for (Cell cell : {I0, PElec0, Régime_Helice0, L58, vh, L61, V_ASC_0, Temps_Moteur0})
        EXPECT_EQ(c.t(cell), "-") << cellPath(cell);
    EXPECT_EQ(c.t(PLT0), "6000");
    expectNoInfinity(c.s);
}

TEST(Calc08, CurvesOfTheChosenSet) {
    CalcMot c;
    using namespace F_CALC_MOT;
    for (auto [cell, v] : {std::pair{G29, "1000"}, {Ra, "0.1"}, {Io, "1"}, {L51, "10"}, {N51, "6"}}) c.s.set(cell, v);
    const MotorPropInputs in = ChosenSetInputs(c.wb);
    const auto byPitch = graph_Moteur_Helice(in);
    ASSERT_EQ(byPitch.size(), 6u);
    const auto& amps = byPitch[1].series[0].points;
    ASSERT_EQ(amps.size(), 19u);
    // A longer pitch loads the motor: 12.6 A on a 3 inch pitch, 27.8 A on 12.
    EXPECT_NEAR(amps.front().y, 12.577, 0.001);
    EXPECT_NEAR(amps.back().y, 27.786, 0.001);

    const auto byCurrent = Chart_Helice_Mot(in);
    ASSERT_EQ(byCurrent.size(), 2u);
    ASSERT_EQ(byCurrent[0].series[0].points.size(), 61u);
    // At 20 A: (10.5 - 2) x 19 W on the shaft, 210 W drawn.
    EXPECT_NEAR(byCurrent[0].series[2].points[19].y, 161.5, 1e-9);
    EXPECT_NEAR(byCurrent[1].series[0].points[19].y, 100 * 161.5 / 210, 1e-9);
    // The propeller at 0 A turns at 10500 rpm: 1.32 x (10/12)^4 x 0.5 x 10.5^3.
    EXPECT_NEAR(byCurrent[0].series[0].points[0].y, 1.32 * std::pow(10.0 / 12, 4) * 0.5 * std::pow(10.5, 3), 1e-9);
}

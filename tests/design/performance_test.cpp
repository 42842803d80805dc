// The performance kernel, the speed-polar curves and the controls of the
// performance windows. Hand values were worked out from the formulas on a
// design whose geometry is simple enough to follow with a calculator.
#include <gtest/gtest.h>

#include <cmath>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "design/performance.h"
#include "design/recalc.h"
#include "designs.h"

namespace tarvokin {
namespace {

using test::Bench;
using test::setRow;

// Every polar of the slot: Cx = cx0 + slope * Cz, the same at all six Reynolds numbers.
void linearPolar(PolarStore& store, int slot, double cx0, double slope) {
    for (PolarRecord& r : store.Polars[static_cast<size_t>(slot)]) {
        r.Points[0] = {0, 0, cx0, 0, cx0, 0};
        r.Points[1] = {10, 2, cx0 + 2 * slope, 2, cx0 + 2 * slope, 0};
        r.LastRow = r.LastExtRow = 1;
    }
}

// Wing 2 x 500 mm of 200 mm chord (20 dm², A = 5); flat tail 2 x 200 mm of
// 100 mm chord (4 dm², lever 575 mm, A 4); fin 1.5 dm²; fuselage 1000 mm,
// 60 x 80 mm, round, short cone. Masses 800 and 1000 g, margin 5 %, Cz 0.4,
// Cm0 -0.05; air at 300 m and 20 °C (rho 1.1575266).
void trainer(Bench& b) {
    Sheet& s = b.s;
    test::rectangularWing(s);
    setRow(s, grid::kStabRoot, {100});
    setRow(s, grid::kStabTip, {100});
    setRow(s, grid::kStabLength, {200});
    s.set(F_GEO_STAB::b20, "600");
    s.set(F_GEO_STAB::Text12, "100");
    s.set(F_GEO_STAB::Text11, "100");
    s.set(F_GEO_STAB::Text10, "150");
    s.set(F_GEO_FUS::b24, "1000");
    s.set(F_GEO_FUS::b25, "300");
    s.set(F_GEO_FUS::D24, "60");
    s.set(F_GEO_FUS::D25, "80");
    s.set(F_GEO_SF_REGLAGES::H30, "800");
    s.set(F_GEO_SF_REGLAGES::I30, "1000");
    s.set(F_GEO_SF_REGLAGES::C29, "5");
    s.set(F_GEO_SF_REGLAGES::F29, "0.4");
    s.set(F_3D::F29, "0.4");
    b.wb.catalogue.rows = {CatalogueRow{"TESTFOIL", -0.05, -2.5, "DATA/TESTFOIL.DAT"}};
    s.setItems(F_3D::Combo5, {"TESTFOIL"});
    s.setListIndex(F_3D::Combo5, 0);
    RecalcAll(b.wb);
    for (int slot = 0; slot < 3; ++slot) linearPolar(b.wb.polars, slot, 0.01 + 0.001 * slot, 0.01);
}

bool finite(const PerfTableT& t) {
    for (const PerfPoint& p : t)
        for (double v : {p.CzAvion, p.CxTotal, p.V, p.VKmh, p.Vz, p.Finesse, p.PuissanceAero, p.CzStab, p.Trainee})
            if (!std::isfinite(v)) return false;
    return true;
}

void expectRel(double actual, double expected) { EXPECT_NEAR(actual, expected, std::fabs(expected) * 1e-9); }

TEST(PerformanceKernel, HandComputedPointWithEachContribution) {
    Bench b;
    trainer(b);
    CalculPerformances(b.wb, 0, 0);
    const PerfTableT& t = b.wb.perf.PerfTable[0];
    ASSERT_EQ(t.size(), 26u);
    const PerfPoint& p = t[9];  // Cz 0.5 of the section
    expectRel(p.V, 13.778217263427898);
    EXPECT_EQ(p.ReAile, 183709);
    EXPECT_EQ(p.CxProfil, 0.015);
    expectRel(p.CxInduit, 0.008121268601928158);
    expectRel(p.CxFuselage, 0.002964946760572669);
    EXPECT_EQ(p.ReStab, 91854);
    EXPECT_EQ(p.CxStab, 0.0028694);
    EXPECT_EQ(p.CzStab, -0.0788442);
    expectRel(p.CxInduitStab, 9.895083143870416e-05);
    expectRel(p.CxTotal, 0.03196002281333349);
    expectRel(p.Vz, -1.2329859865854187);
    expectRel(p.PuissanceAero, 9.676474022722367);

    // The heavier mass flies faster at the same Cz.
    CalculPerformances(b.wb, 0, 1, 3);
    expectRel(b.wb.perf.PerfTable[3][0].V, 48.71335429815711);
    expectRel(b.wb.perf.PerfTable[3][0].CxTotal, 0.023316059406994338);

    // The panel's switches count only while it is open.
    b.s.set(F_GEO_3::Check1, "0");
    b.s.set(F_GEO_3::Check2, "0");
    b.s.set(F_GEO_3::Check3, "0");
    CalculPerformances(b.wb, 0, 0);
    expectRel(b.wb.perf.PerfTable[0][9].CxTotal, 0.03196002281333349);
    b.wb.setOpen(button::Performances, true);
    CalculPerformances(b.wb, 0, 0);
    for (const PerfPoint& q : b.wb.perf.PerfTable[0]) {
        EXPECT_EQ(q.CxTotal, q.CxInduit + q.CxProfil);
        EXPECT_EQ(q.CxStab + q.CxFuselage + q.CxInduitStab, 0);
    }
    b.s.set(F_GEO_3::Check1, "1");
    CalculPerformances(b.wb, 0, 0);
    const PerfPoint& stab = b.wb.perf.PerfTable[0][9];
    EXPECT_EQ(stab.CxTotal, stab.CxInduit + stab.CxProfil + stab.CxStab + stab.CxInduitStab);
    b.s.set(F_GEO_3::Check1, "0");
    b.s.set(F_GEO_3::Check2, "1");
    b.s.set(F_GEO_3::Check3, "1");
    CalculPerformances(b.wb, 0, 0);
    const PerfPoint& body = b.wb.perf.PerfTable[0][9];
    EXPECT_EQ(body.CxTotal, (body.CxInduit + body.CxProfil + body.CxFuselage) * 1.1);
}

TEST(PerformanceKernel, StabExtremesCellsAndTheAllowGate) {
    Bench b;
    trainer(b);
    b.wb.perf.PerfTable[0] = {PerfPoint{}, PerfPoint{}};
    b.wb.perf.PerfTable[0][1].PolCz = 0.7;
    b.wb.perf.PerfTable[0][1].Spare2 = 3;
    CalculPerformances(b.wb, 0, 0);
    const PerfTableT& t = b.wb.perf.PerfTable[0];
    // Polar values come over by index; the table is rebuilt to 26 points.
    EXPECT_EQ(t[1].PolCz, 0.7);
    EXPECT_EQ(t[1].Spare2, 3);
    EXPECT_EQ(t[2].PolCz, 0);
    // The trim Cz grows with Cz from -0.086 at the fastest point.
    EXPECT_EQ(b.wb.perf.CzStabMin, t.front().CzStab);
    EXPECT_EQ(b.wb.perf.CzStabMax, t.back().CzStab);
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::C32), fixed(std::max(-t.front().CzStab, t.back().CzStab), 2));
    EXPECT_EQ(b.s.text(F_3D::C32), b.s.text(F_GEO_SF_REGLAGES::C32));
    EXPECT_EQ(b.s.text(F_3D::CX0_STAB), fixed(t.front().CxStab, 4));

    // A heavier-mass run leaves the extremes unset and the cells alone.
    b.s.set(F_3D::C32, "old");
    CalculPerformances(b.wb, 0, 1, 3);
    EXPECT_EQ(b.wb.perf.CzStabMin, 9999);
    EXPECT_EQ(b.wb.perf.CzStabMax, -9999);
    EXPECT_EQ(b.s.text(F_3D::C32), "old");

    // With the gate closed nothing moves, the slot included.
    const double before = t[5].Vz;
    b.s.set(F_GEO_SF_REGLAGES::H30, "2000");
    b.s.set(F_GEO_SF_REGLAGES::T_ALLOW, "0");
    CalculPerformances(b.wb, 0, 0);
    EXPECT_EQ(b.wb.perf.PerfTable[0][5].Vz, before);
    EXPECT_EQ(b.wb.perf.CzStabMin, 9999);
}

TEST(PerformanceKernel, MissingPartsGiveZerosNeverInfOrNan) {
    Bench b;
    trainer(b);
    // No tail: no trim term and no tail drag.
    for (const grid::Row* r : {&grid::kStabRoot, &grid::kStabTip, &grid::kStabLength}) setRow(b.s, *r, {});
    RecalcAll(b.wb);
    CalculPerformances(b.wb, 0, 0);
    ASSERT_TRUE(finite(b.wb.perf.PerfTable[0]));
    for (const PerfPoint& p : b.wb.perf.PerfTable[0]) EXPECT_EQ(p.CzStab + p.CxStab + p.CxInduitStab, 0);

    // No mass, then no wing, and empty polars: every point keeps its Cz and
    // nothing else, through the curves and the read-out too.
    b.wb.setOpen(button::Performances, true);
    b.s.set(F_GEO_SF_REGLAGES::H30, "0");
    b.wb.polars = PolarStore{};
    Courbes_Performances(b.wb);
    const PerfPoint& still = b.wb.perf.PerfTable[0][3];
    EXPECT_NEAR(still.CzProfil, 0.2, 1e-12);
    EXPECT_EQ(still.V + still.Vz + still.CxTotal + still.Finesse, 0);
    setRow(b.s, grid::kLength, {0});
    RecalcAll(b.wb);
    Courbes_Performances(b.wb);
    for (const PerfTableT& t : b.wb.perf.PerfTable) EXPECT_TRUE(finite(t));
    EXPECT_EQ(b.s.text(F_GEO_3::Text5[0]), "0.00");
}

TEST(SpeedPolar, FoldsTheStalledEndOntoOneSpeed) {
    Bench b;
    trainer(b);
    // Drag that explodes past Cz 1: the slow end sinks steeply.
    for (PolarRecord& r : b.wb.polars.Polars[0]) {
        r.Points[1] = {10, 1.0, 0.02, 1.0, 0.02, 0};
        r.Points[2] = {12, 1.3, 2.0, 1.3, 2.0, 0};
        r.LastRow = r.LastExtRow = 2;
    }
    for (int slot = 0; slot < 6; ++slot) CalculPerformances(b.wb, slot % 3, slot / 3, slot);
    const auto raw = b.wb.perf.PerfTable;
    Courbes_Performances(b.wb);
    double lowest = 9999;
    for (const PerfTableT& t : raw)
        for (const PerfPoint& p : t) lowest = std::min(lowest, p.Vz);
    const PerfTableT& t = b.wb.perf.PerfTable[0];
    int folded = 0;
    for (size_t i = 1; i < t.size(); ++i) {
        if (raw[0][i].VKmh < 50 && raw[0][i].Vz < lowest / 2) {
            ++folded;
            EXPECT_EQ(t[i].Vz, lowest / 2);
            EXPECT_EQ(t[i].VKmh, t[i - 1].VKmh);
        } else {
            EXPECT_EQ(t[i].Vz, raw[0][i].Vz);
        }
    }
    EXPECT_GE(folded, 2);
}

TEST(SpeedPolar, ChartsOfTheShownAirfoils) {
    Bench b;
    trainer(b);
    b.s.setItems(F_PROFILS::CB_1[0], {"CLARKY", "E387"});
    b.s.setListIndex(F_PROFILS::CB_1[0], 1);
    b.s.set(F_PROFILS::Check2[1], "0");
    Courbes_Performances(b.wb);
    const PerformanceCharts& c = b.wb.perf.charts;
    EXPECT_FALSE(c.readoutShown[1]);
    EXPECT_EQ(b.s.text(F_GEO_3::Check5[1]), "0");
    const ChartData& sink = c.speedPolar[0];
    ASSERT_EQ(sink.series.size(), 4u);  // slots 0, 2, 3, 5
    EXPECT_EQ(sink.series[0].name, "E387 masse mini");
    EXPECT_EQ(sink.series[1].name, "Profil 3 masse mini");
    EXPECT_EQ(sink.series[2].code, 3);
    EXPECT_EQ(sink.series[2].style, linestyle::Dashed);
    EXPECT_EQ(sink.series[1].colour, (Rgb{0, 255, 0}));
    EXPECT_EQ(sink.series[0].points.size(), 51u);
    ASSERT_EQ(sink.markers.size(), 4u);
    EXPECT_TRUE(sink.markers[0].label.ends_with(" Km/h)"));
    EXPECT_EQ(c.speedPolar[3].series[0].code, 16);

    // The smoothed table halves each step and pulls the old points in.
    const PerfTableT& raw = b.wb.perf.PerfTable[0];
    const PerfTableT& smooth = b.wb.perf.PerfTableLisse[0];
    EXPECT_DOUBLE_EQ(smooth[1].VKmh, (raw[0].VKmh + raw[1].VKmh) / 2);
    EXPECT_DOUBLE_EQ(smooth[4].Vz, raw[2].Vz / 2 + (raw[1].Vz + 2 * raw[2].Vz + raw[3].Vz) / 8);

    // A flying wing draws no trim lift.
    const ChartData& lift = c.speedPolar[2];
    EXPECT_EQ(lift.series[3].name, "cz stab masse maxi");
    EXPECT_NE(lift.series[2].points[3].y, 0);
    b.s.set(F_GEO_SF_REGLAGES::Ch_Aile, "1");
    Courbes_Performances(b.wb);
    for (int k : {2, 3})
        for (const ChartPoint& p : c.speedPolar[2].series[static_cast<size_t>(k)].points) EXPECT_EQ(p.y, 0);
}

TEST(SpeedPolar, SmoothingAndFinesseCleanUp) {
    const std::vector<ChartPoint> s = Smooth_Curve({{0, 0}, {2, 4}, {4, 0}});
    ASSERT_EQ(s.size(), 5u);
    EXPECT_EQ(s[1].y, 2);
    EXPECT_EQ(s[2].y, 3);  // 4 * 0.5 + 0.25 * (2 + 2)

    PerfTableT t(6);
    const double finesse[6] = {5, 8, 6, 10, 9, 4};
    for (size_t i = 0; i < 6; ++i) t[i].Finesse = finesse[i];
    KeepSingleFinesseMaximum(t);
    EXPECT_EQ(t[2].Finesse, 7.8);  // 8 less a tenth of the drop of 2
    EXPECT_EQ(t[3].Finesse, 10);
    EXPECT_EQ(t[4].Finesse, 9);  // past the maximum nothing changes
}

TEST(SpeedPolar, CursorReadsTheCurvesAtThePointsSpeed) {
    Bench b;
    PerformanceState& perf = b.wb.perf;
    perf.charts.readoutShown = {true, false, false};
    perf.PerfTable[0].resize(26);
    for (size_t i = 0; i < 26; ++i) perf.PerfTable[0][i] = {.CzAvion = 0.1 + 0.02 * i, .VKmh = 60.0 - i};
    perf.PerfTableLisse[0] = {{.VKmh = 70, .Vz = -1, .Finesse = 10, .PuissanceAero = 5},
                              {.VKmh = 50, .Vz = -0.5, .Finesse = 20, .PuissanceAero = 3}};
    perf.PerfTableLisse[3] = {{.VKmh = 80}, {.VKmh = 60}};
    b.s.set(F_GEO_3::Text12, "6");
    Affiche_Curseur(b.wb);
    EXPECT_EQ(b.s.text(F_GEO_3::T_Cz), "0.20");
    EXPECT_EQ(b.s.text(F_GEO_3::T_Vitesse), "55.00");
    EXPECT_EQ(b.s.text(F_GEO_3::Text5[0]), "-0.63");  // three quarters of the way from 70 to 50 km/h
    EXPECT_EQ(b.s.text(F_GEO_3::Text6[0]), "17.5");
    EXPECT_EQ(b.s.text(F_GEO_3::Text7[0]), "3.50");
    EXPECT_EQ(b.s.text(F_GEO_3::Text8[0]), "-");  // the heavier mass never flies at 55 km/h

    F_GEO_3_Command2_Click(b.wb, -1);
    EXPECT_EQ(b.s.text(F_GEO_3::T_Vitesse), "56.00");
    b.s.set(F_GEO_3::Text12, "25");
    F_GEO_3_Command2_Click(b.wb, 1);
    EXPECT_EQ(b.s.text(F_GEO_3::Text12), "25");
}

TEST(PerformancePanel, StepsSwitchesAndRefresh) {
    Bench b;
    trainer(b);
    b.wb.setOpen(button::Performances, true);
    RecalcAll(b.wb);  // the workbench's refresh of button 17
    ASSERT_EQ(b.wb.perf.PerfTable[5].size(), 26u);
    EXPECT_EQ(b.s.text(F_GEO_3::Text1), "1.16");
    EXPECT_EQ(b.s.text(F_GEO_3::Text4[2]), "40.0");  // 800 g on 20 dm²

    b.s.set(F_GEO_3::Text2, "50");
    F_GEO_3_Command1_Click(b.wb, AirStep::AltitudeDown);
    EXPECT_EQ(b.s.text(F_GEO_3::Text2), "0");
    F_GEO_3_Command1_Click(b.wb, AirStep::TemperatureDown);
    EXPECT_EQ(b.s.text(F_GEO_3::Text1), "1.22");  // 0 m, 15 °C

    b.s.set(F_GEO_3::Command3, "175");
    F_GEO_3_Command3_Click(b.wb, 1);
    EXPECT_EQ(b.s.text(F_GEO_3::Command3), "180");

    // The version box toggles its caption and changes no result.
    const double vz = b.wb.perf.PerfTable[0][8].Vz;
    enterField(b.wb, F_GEO_3::Check6, "1");
    EXPECT_EQ(b.s.text(F_GEO_3::Check6_Caption), "V2.23");
    EXPECT_EQ(b.wb.perf.PerfTable[0][8].Vz, vz);
    enterField(b.wb, F_GEO_3::Check5[2], "0");
    EXPECT_EQ(b.s.text(F_PROFILS::Check2[2]), "0");
    EXPECT_FALSE(b.wb.perf.charts.readoutShown[2]);

    // Constant speed: 14 points at 36 km/h.
    b.s.set(F_GEO_5::Text2, "31");
    F_GEO_5_Command1_Click(b.wb, 1);
    EXPECT_EQ(b.s.text(F_GEO_5::Text2), "36");
    const PerfTableT& r = b.wb.perf.ReConstant[0];
    ASSERT_EQ(r.size(), 14u);
    EXPECT_NEAR(r[13].CzProfil, 1.35, 1e-12);
    EXPECT_DOUBLE_EQ(r[4].V, 10);
    // Drag force on 0.2 m² at 10 m/s, times the speed.
    expectRel(r[4].PuissanceAero, 10 * 0.5 * DensiteAir(b.wb) * 0.2 * 100 * r[4].CxTotal);
    F_GEO_5_VScroll_Change(b.wb, 2, 40);
    EXPECT_EQ(b.s.text(F_GEO_5::Text4), "40");
    EXPECT_EQ(b.wb.perf.charts.constantReynolds[1].yMax, 40);
}

}  // namespace
}  // namespace tarvokin

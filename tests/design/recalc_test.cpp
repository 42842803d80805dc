// The master recalculation on whole designs: outputs with their decimals, the
// "-" of outputs without meaning, chaining, guards, incidences and summaries.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "design/recalc.h"
#include "designs.h"

namespace tarvokin {
namespace {

using test::Bench;
using test::setRow;

std::string t(const Sheet& s, Cell c) { return s.text(c); }

TEST(RecalcAll, GliderOutputs) {
    Bench b;
    test::glider(b.wb);
    RecalcAll(b.wb);
    const Sheet& s = b.s;
    // Height of the tail above the wing: 20 + 10.
    EXPECT_EQ(t(s, F_3D::D20), "30");
    EXPECT_EQ(t(s, F_GEO_SF::c5), "200");
    // Wing.
    EXPECT_EQ(t(s, F_GEO_SF::j4), "52.40");
    EXPECT_EQ(t(s, F_3D::j5), "190.23");
    EXPECT_EQ(t(s, F_GEO_SF::j6), "2800");
    EXPECT_EQ(t(s, F_GEO_SF::j7), "14.96");
    EXPECT_EQ(t(s, F_3D::j8), "16.16");
    EXPECT_EQ(t(s, F_GEO_SF::j9), "59.89");
    EXPECT_EQ(t(s, F_GEO_SF::j99), "59.89 mm (=  25 % de la CAM)");
    // Reynolds at 40 km/h: root 220, smallest tip 140, mean chord 190.23.
    EXPECT_EQ(t(s, F_GEO_SF::b12), "171111");
    EXPECT_EQ(t(s, F_GEO_SF::c12), "108888");
    EXPECT_EQ(t(s, F_GEO_SF::D12), "147956");
    EXPECT_EQ(t(s, F_GEO_SF::j11), "-0.05");
    EXPECT_EQ(t(s, F_GEO_SF::j12), "-2.5");
    // Tail and fin.
    EXPECT_EQ(t(s, F_GEO_STAB::j15), "5.25");
    EXPECT_EQ(t(s, F_GEO_STAB::j16), "105.7");
    EXPECT_EQ(t(s, F_GEO_STAB::j17), "500.0");
    EXPECT_EQ(t(s, F_3D::j17), "500.0");
    EXPECT_EQ(t(s, F_GEO_STAB::j18), "4.76");
    EXPECT_EQ(t(s, F_GEO_STAB::j19), "5.29");
    EXPECT_EQ(t(s, F_GEO_STAB::J20), "36.0");
    EXPECT_EQ(t(s, F_3D::J20), "36.0");
    EXPECT_EQ(t(s, F_GEO_STAB::j21), "726");
    EXPECT_EQ(t(s, F_GEO_STAB::j22), "0.38");
    EXPECT_EQ(t(s, F_3D::d21), "2.16");
    // Fuselage and loadings.
    EXPECT_EQ(t(s, F_GEO_FUS::j24), "18.9");
    EXPECT_EQ(t(s, F_GEO_FUS::j25), "4.6");
    EXPECT_EQ(t(s, F_GEO_FUS::j26), "20");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::H32), "17.2");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::I32), "22.9");
    // Mirrors.
    EXPECT_EQ(t(s, F_3D::j4), "52.40");
    EXPECT_EQ(t(s, F_3D::j6), "2800");
    EXPECT_EQ(t(s, F_3D::j7), "14.96");
    EXPECT_EQ(t(s, F_3D::j11), "-0.05");
    EXPECT_EQ(t(s, F_3D::j22), "0.38");
    EXPECT_EQ(t(s, F_3D::j26a), "20 %");
    // Centre of gravity and neutral point.
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::B30), "35.2");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::B31), "40.16");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::C30), "79.22");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::C31), "88.73");
}

// Incidence on the glider, sliders at the wing station 280 and the lever 750:
// A = 2800² / 52.4 / 1e4, c = 190.23, Foy = 59.89, l = 750 + 36.0 - 59.89,
// N = 0.4015922, Vc = 0.3672414, G = 0.2852507.
TEST(RecalcAll, GliderIncidence) {
    Bench b;
    test::glider(b.wb);
    RecalcAll(b.wb);
    const Sheet& s = b.s;
    using namespace F_GEO_SF_REGLAGES;
    EXPECT_EQ(t(s, F31), "1.42");
    EXPECT_EQ(t(s, F30), "0.37");
    EXPECT_EQ(t(s, F32), "1.04");
    EXPECT_EQ(t(s, D30), "0.49");
    EXPECT_EQ(t(s, D31), "0.33");
    EXPECT_EQ(t(s, F_3D::F31), "1.42");
    EXPECT_EQ(t(s, F_3D::F32), "1.04");
    EXPECT_EQ(t(s, F_3D::f31a), "1.42 °");
    EXPECT_EQ(t(s, F_3D::f32a), "1.04 °");
    EXPECT_EQ(t(s, F_3D::f30a), "0.37 °");
    EXPECT_EQ(t(s, F_3D::b30), "CG : 79.22 mm (35.20 % cam)\nCz aile = 0.49");
    EXPECT_EQ(t(s, F_3D::T_CG), "35.2");
    EXPECT_EQ(t(s, F_3D::j9), "88.73 mm (= 40.16 % cam),  Cz aile = 0.33)");
}

// The same glider with a 120° V-tail. The neutral point projects the tail
// area with sin², the incidence with sin alone, and each raises the tail by
// its own projected span.
TEST(RecalcAll, VTailGliderIncidence) {
    Bench b;
    test::glider(b.wb);
    b.s.setListIndex(F_GEO_STAB::b21, 1);
    RecalcAll(b.wb);
    const Sheet& s = b.s;
    using namespace F_GEO_SF_REGLAGES;
    EXPECT_EQ(t(s, F_GEO_STAB::j22), "0.29");
    EXPECT_EQ(t(s, B30), "28.6");
    EXPECT_EQ(t(s, B31), "33.59");
    EXPECT_EQ(t(s, C30), "66.72");
    EXPECT_EQ(t(s, C31), "76.23");
    EXPECT_EQ(t(s, F31), "1.42");
    EXPECT_EQ(t(s, F30), "0.90");
    EXPECT_EQ(t(s, F32), "0.52");
    EXPECT_EQ(t(s, D30), "0.72");
    EXPECT_EQ(t(s, D31), "0.42");
}

TEST(RecalcAll, CamberedTailSectionIsSetApart) {
    Bench b;
    test::glider(b.wb);
    RecalcAll(b.wb);
    const double flat = b.s.num(F_GEO_SF_REGLAGES::F30);
    b.s.setListIndex(F_3D::Combo7, 1);
    RecalcAll(b.wb);
    // 0.37484 + 1.5, rounded once.
    EXPECT_EQ(t(b.s, F_GEO_SF_REGLAGES::F30), "1.87");
    EXPECT_NEAR(b.s.num(F_GEO_SF_REGLAGES::F30) - flat, 1.5, 0.011);
}

TEST(RecalcAll, SummaryLines) {
    Bench b;
    test::glider(b.wb);
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_3D::Label17), "Aile");
    EXPECT_EQ(t(b.s, F_3D::Label_2[0]), "Profil : TESTFOIL");
    EXPECT_EQ(t(b.s, F_3D::Label_2[1]), "Envergure : 2800 mm");
    EXPECT_EQ(t(b.s, F_3D::Label_2[2]), "Surface : 52.40 dm²");
    EXPECT_EQ(t(b.s, F_3D::Label_2[3]), "Allongement : 14.96");
    EXPECT_EQ(t(b.s, F_3D::Label_2[6]), "Masses : 900 gr / 1200 gr");
}

TEST(RecalcAll, RootsAreChainedAsTextAndATiplessPanelHasNoRoot) {
    Bench b;
    test::glider(b.wb);
    setRow(b.s, grid::kTip, {200.50, 140, 0, 60});
    b.s.set(F_GEO_SF::b6, "200.50");
    setRow(b.s, grid::kLength, {600, 800, 0, 100});
    b.s.set(F_GEO_SF::d5, "77");
    setRow(b.s, grid::kStabTip, {90, 60});
    setRow(b.s, grid::kStabLength, {250, 80});
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_GEO_SF::c5), "200.50");
    EXPECT_EQ(t(b.s, F_GEO_SF::d5), "0");
    EXPECT_EQ(t(b.s, F_GEO_SF::e5), "0");  // the tip of panel 3 is 0
    EXPECT_EQ(t(b.s, F_GEO_STAB::c16), "90");
    // Smallest real tip is panel 4's 60 mm, not the zero of panel 3.
    EXPECT_EQ(t(b.s, F_GEO_SF::c12), "46666");
}

TEST(RecalcAll, SmallestTipUsesTheDesignWindowSpeed) {
    Bench b;
    test::glider(b.wb);
    b.s.set(F_3D::a12, "72");  // 20 m/s: 140 × 70 × 20
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_GEO_SF::c12), "196000");
    EXPECT_EQ(t(b.s, F_GEO_SF::b12), "171111");
}

TEST(RecalcAll, EmptyTailPanelsLoseTheirRootOnlyWhileAllowed) {
    Bench b;
    test::glider(b.wb);
    b.s.set(F_GEO_STAB::D16, "55");
    b.s.set(F_GEO_STAB::Text4, "40");
    b.s.set(F_GEO_SF_REGLAGES::T_ALLOW, "0");
    b.s.set(F_3D::D20, "12");
    b.wb.wingReady = false;  // only the first two steps may run
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_3D::D20), "12");
    EXPECT_EQ(t(b.s, F_GEO_STAB::D16), "55");
    b.s.set(F_GEO_SF_REGLAGES::T_ALLOW, "1");
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_3D::D20), "50");
    EXPECT_EQ(t(b.s, F_GEO_STAB::D16), "0");
}

TEST(RecalcAll, AnyClearedReadyMarkComputesNothing) {
    for (int which = 0; which < 5; ++which) {
        Bench b;
        test::glider(b.wb);
        switch (which) {
            case 0: b.wb.wingReady = false; break;
            case 1: b.wb.stabReady = false; break;
            case 2: b.wb.fuselageReady = false; break;
            case 3: b.s.set(F_GEO_SF::Text1, "0"); break;
            case 4: b.s.set(F_GEO_STAB::Text3, "0"); break;
        }
        b.s.set(F_GEO_SF::j4, "unchanged");
        b.s.set(F_GEO_SF::c5, "123");
        RecalcAll(b.wb);
        EXPECT_EQ(t(b.s, F_GEO_SF::j4), "unchanged") << which;
        EXPECT_EQ(t(b.s, F_GEO_SF::c5), "123") << which;
        EXPECT_EQ(t(b.s, F_3D::Label17), "") << which;
    }
}

TEST(RecalcAll, ZeroLeverOfAModelWithoutTailShowsZeroPointZero) {
    Bench b;
    test::glider(b.wb);
    for (const grid::Row* r : {&grid::kStabRoot, &grid::kStabTip, &grid::kStabLength, &grid::kStabSweep})
        setRow(b.s, *r, {});
    b.s.set(F_GEO_STAB::b20, "0");
    b.s.set(F_GEO_SF_REGLAGES::Ch_Aile, "1");
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_GEO_STAB::b20), "0.0");
    EXPECT_EQ(t(b.s, F_GEO_STAB::j21), "-");
}

TEST(RecalcAll, NoTailNoFuselageShowsDashes) {
    Bench b;
    test::glider(b.wb);
    for (const grid::Row* r : {&grid::kStabRoot, &grid::kStabTip, &grid::kStabLength, &grid::kStabSweep})
        setRow(b.s, *r, {});
    b.s.set(F_GEO_FUS::D24, "0");
    RecalcAll(b.wb);
    const Sheet& s = b.s;
    for (Cell c : {F_GEO_STAB::j15, F_GEO_STAB::j16, F_GEO_STAB::j17, F_GEO_STAB::j18, F_GEO_STAB::j19,
                   F_GEO_STAB::J20, F_GEO_STAB::j21, F_GEO_STAB::j22, F_3D::j17, F_3D::J20, F_3D::j22,
                   F_GEO_FUS::j24, F_GEO_FUS::j25, F_GEO_FUS::j26})
        EXPECT_EQ(t(s, c), "-") << cellPath(c);
    // The design window keeps the unit of the fuselage neutral point.
    EXPECT_EQ(t(s, F_3D::j26a), "- %");
    // A lever field that holds a length is left as typed.
    EXPECT_EQ(t(s, F_GEO_STAB::b20), "750");
    // Neutral point on the wing's quarter chord; without tail and fuselage there
    // is no stabiliser setting, and the Cz at the neutral point has no value.
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::B31), "25.00");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::B30), "20.0");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::F31), "1.42");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::F30), "-");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::F32), "-");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::D30), "-1.00");  // 0.05 / (0.25 - 0.05 - 0.25)
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::D31), "-");
    EXPECT_EQ(t(s, F_3D::f30a), "-");
}

TEST(RecalcAll, WingWithoutAreaShowsDashes) {
    Bench b;
    test::glider(b.wb);
    setRow(b.s, grid::kLength, {0, 0});
    RecalcAll(b.wb);
    const Sheet& s = b.s;
    EXPECT_EQ(t(s, F_GEO_SF::j4), "0.00");
    EXPECT_EQ(t(s, F_GEO_SF::j6), "0");
    using namespace F_GEO_SF_REGLAGES;
    for (Cell c : {F_3D::j5, F_GEO_SF::j7, F_GEO_SF::j9, F_GEO_SF::D12, F_GEO_STAB::j21, F_GEO_STAB::j22, H32, I32, B30, B31, C30,
                   C31, F30, F31, F32, F_3D::j7})
        EXPECT_EQ(t(s, c), "-") << cellPath(c);
    EXPECT_EQ(t(s, F_GEO_STAB::j15), "5.25");
    EXPECT_EQ(t(s, F_3D::b30).substr(0, 16), "CG : - mm (- % c");
}

TEST(RecalcAll, FlyingWingCentresOnTheRootPanel) {
    Bench b;
    Sheet& s = b.s;
    test::rectangularWing(s);
    s.set(F_GEO_SF::b5, "300");
    s.set(F_GEO_SF::b6, "180");
    s.set(F_GEO_SF::b7, "700");
    s.set(F_GEO_SF::b8, "120");
    s.set(F_GEO_SF_REGLAGES::C29, "5");
    s.set(F_GEO_SF_REGLAGES::Ch_Aile, "1");
    for (Cell c : {F_GEO_SF_REGLAGES::F30, F_GEO_SF_REGLAGES::F31, F_GEO_SF_REGLAGES::F32}) s.set(c, "9.99");
    RecalcAll(b.wb);
    // Foyer 116.25 mm, CG 116.25 - 245 × 5 %: 104 mm = 42.449 % of 245.
    EXPECT_EQ(t(s, F_3D::j5), "245.00");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::B30), "42.45");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::F31), "9.99");
    EXPECT_EQ(t(s, F_GEO_SF_REGLAGES::F30), "9.99");
    EXPECT_EQ(t(s, F_3D::f30a), "9.99 °");
}

TEST(RecalcAll, AirfoilChoice) {
    Bench b;
    test::glider(b.wb);
    b.wb.catalogue.rows.push_back(CatalogueRow{"OTHER", -0.1, -4, ""});
    b.s.setItems(F_3D::Combo5, {"TESTFOIL", "OTHER"});
    // Nothing chosen: the first entry is taken.
    b.s.setListIndex(F_3D::Combo5, -1);
    RecalcAll(b.wb);
    EXPECT_EQ(b.s.listIndex(F_3D::Combo5), 0);
    EXPECT_EQ(t(b.s, F_GEO_SF::j11), "-0.05");
    // A name the catalogue does not know leaves the figures as they were.
    b.s.set(F_3D::Combo5, "NOSUCH");
    b.s.set(F_GEO_SF::j11, "-0.07");
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_GEO_SF::j11), "-0.07");
    EXPECT_EQ(t(b.s, F_GEO_SF::j12), "-2.5");
    b.s.setListIndex(F_3D::Combo5, 1);
    RecalcAll(b.wb);
    EXPECT_EQ(t(b.s, F_GEO_SF::j11), "-0.1");
    EXPECT_EQ(t(b.s, F_GEO_SF::j12), "-4");
}

TEST(RecalcAll, RefreshesOpenPanelsInOrder) {
    Bench b;
    test::glider(b.wb);
    std::vector<int> calls;
    for (int button : {15, 17, 18, 21, 29, 20})
        b.wb.panelRefresh[button] = [&calls, button](Workbench&) { calls.push_back(button); };
    for (int button : {15, 17, 18, 21, 20}) b.wb.setOpen(button, true);
    RecalcAll(b.wb);
    EXPECT_EQ(calls, (std::vector<int>{18, 21, 15, 17}));
}

TEST(RecalcAll, StopsWithTheDivisionErrorKeepingEarlierWrites) {
    Bench b;
    test::rectangularWing(b.s);
    // Both neutral points 50 mm behind their leading edges, no lever between
    // them and no height: the downwash has nothing to divide by.
    setRow(b.s, grid::kStabRoot, {200});
    setRow(b.s, grid::kStabTip, {200});
    setRow(b.s, grid::kStabLength, {250});
    b.s.set(F_GEO_STAB::b20, "0");
    b.s.set(F_GEO_STAB::Text4, "0");
    b.s.set(F_GEO_FUS::Text5, "0");
    try {
        RecalcAll(b.wb);
        FAIL() << "no error";
    } catch (const RunError& e) {
        EXPECT_EQ(e.code(), kErrDivisionByZero);
    }
    EXPECT_EQ(t(b.s, F_GEO_SF::j4), "20.00");
    EXPECT_EQ(t(b.s, F_GEO_STAB::b20), "0.0");
    EXPECT_EQ(t(b.s, F_GEO_STAB::j21), "0");
    EXPECT_EQ(t(b.s, F_GEO_SF_REGLAGES::B30), "0");  // never reached
}

}  // namespace
}  // namespace tarvokin

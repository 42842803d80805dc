// What typing into the design panels does: the key check of each field, the
// replacement of blank or zero values, and which entries recalculate.
#include <gtest/gtest.h>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "designs.h"

namespace tarvokin {
namespace {

using test::Bench;

TEST(FieldRules, SweepsTwistAndDihedralTakeASignChordsAndSpansDoNot) {
    for (Cell c : {F_GEO_SF::b6, F_GEO_SF::e7, F_GEO_STAB::D16, F_GEO_STAB::f18, F_GEO_SF_REGLAGES::H30})
        EXPECT_EQ(entryCheckOf(c), EntryCheck::Decimal) << cellPath(c);
    for (Cell c : {F_GEO_SF::f8, F_GEO_STAB::e19, F_GEO_SF::B10, F_GEO_SF::c9, F_GEO_STAB::T_Prof_PosR})
        EXPECT_EQ(entryCheckOf(c), EntryCheck::DecimalSigned) << cellPath(c);
    // The chained roots and the results are written by the recalculation.
    for (Cell c : {F_GEO_SF::c5, F_GEO_SF::j4, F_GEO_SF_REGLAGES::B30})
        EXPECT_EQ(entryCheckOf(c), EntryCheck::None) << cellPath(c);
}

TEST(FieldRules, BlankChordOrSpanBecomesZeroWithoutRecalculating) {
    Bench b;
    test::glider(b.wb);
    for (Cell c : {F_GEO_SF::c7, F_GEO_SF::b6, F_GEO_STAB::b18, F_GEO_STAB::b16}) {
        b.s.set(c, " ");
        onFieldChange(b.wb, c);
        EXPECT_EQ(b.s.text(c), "0") << cellPath(c);
    }
    EXPECT_EQ(b.s.text(F_GEO_SF::j4), "0");
    // A blank sweep is left to the user.
    b.s.set(F_GEO_SF::b8, "");
    onFieldChange(b.wb, F_GEO_SF::b8);
    EXPECT_EQ(b.s.text(F_GEO_SF::b8), "");
}

TEST(FieldRules, EnterOnAGridFieldRecalculates) {
    Bench b;
    test::glider(b.wb);
    enterField(b.wb, F_GEO_SF::c7, "700");
    EXPECT_EQ(b.s.text(F_GEO_SF::j6), "2600");
    enterField(b.wb, F_GEO_STAB::b18, "");
    EXPECT_EQ(b.s.text(F_GEO_STAB::b18), "0");
    EXPECT_EQ(b.s.text(F_GEO_STAB::j15), "-");
}

TEST(FieldRules, SpeedIsKeptAboveZeroAndMirrored) {
    Bench b;
    test::glider(b.wb);
    for (const char* typed : {"", "0"}) {
        b.s.set(F_3D::a12, "40");
        enterField(b.wb, F_GEO_SF::a12, typed);
        EXPECT_EQ(b.s.text(F_GEO_SF::a12), "10") << typed;
        EXPECT_EQ(b.s.text(F_3D::a12), "10") << typed;
        // 220 mm at 10 km/h.
        EXPECT_EQ(b.s.text(F_GEO_SF::b12), "42777") << typed;
    }
    enterField(b.wb, F_3D::a12, "72");
    EXPECT_EQ(b.s.text(F_GEO_SF::a12), "72");
    EXPECT_EQ(b.s.text(F_GEO_SF::c12), "196000");
}

TEST(FieldRules, MassesMarginAndDesignCzRecalculateOnChange) {
    Bench b;
    test::glider(b.wb);
    b.s.set(F_GEO_SF_REGLAGES::H30, "0");
    onFieldChange(b.wb, F_GEO_SF_REGLAGES::H30);
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::H30), "500");
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::H32), "9.5");  // 500 g on 52.4 dm²

    b.s.set(F_GEO_SF_REGLAGES::C29, "");
    onFieldChange(b.wb, F_GEO_SF_REGLAGES::C29);
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::C29), "0");
    // No margin: the CG sits on the neutral point.
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::C30), b.s.text(F_GEO_SF_REGLAGES::C31));

    b.s.set(F_3D::F29, "0.5");
    onFieldChange(b.wb, F_3D::F29);
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::F29), "0.5");
    // 0.5 × (18.2 / 14.9618 + 1 / 0.11) - 2.5
    EXPECT_EQ(b.s.text(F_GEO_SF_REGLAGES::F31), "2.65");
}

}  // namespace
}  // namespace tarvokin

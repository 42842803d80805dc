// Designs built in code for the geometry and recalculation tests. Expected
// values in the tests were worked out by hand from the formulas.
#pragma once

#include <initializer_list>
#include <string>

#include "design/grid_cells.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "entry/window_logic.h"

namespace tarvokin::test {

inline void setRow(Sheet& s, const grid::Row& row, std::initializer_list<double> values) {
    size_t k = 0;
    for (double v : values) s.set(row[k++], plain(v));
    for (; k < 5; ++k) s.set(row[k], "0");
}

// A workbench on a fresh folder, every panel ready, nothing open.
struct Bench {
    TempDir dir;
    Workbench wb{dir.path()};
    Sheet& s = wb.sheet;
    Bench() { InstallWindowLogic(wb); }
};

// A plain rectangular wing: 2 × 500 mm of 200 mm chord, no tail, no fuselage.
inline void rectangularWing(Sheet& s) {
    setRow(s, grid::kRoot, {200});
    setRow(s, grid::kTip, {200});
    setRow(s, grid::kLength, {500});
    setRow(s, grid::kSweep, {0});
    for (const grid::Row* r : {&grid::kStabRoot, &grid::kStabTip, &grid::kStabLength, &grid::kStabSweep})
        setRow(s, *r, {});
    s.set(F_GEO_FUS::D24, "0");
    s.set(F_GEO_SF::a12, "36");
}

// A two-panel glider with a flat tail, a fin and a fuselage; the airfoil
// "TESTFOIL" (Cm0 -0.05, Alpha0 -2.5) is the only one in the catalogue.
inline void glider(Workbench& wb) {
    Sheet& s = wb.sheet;
    setRow(s, grid::kRoot, {220, 200});
    setRow(s, grid::kTip, {200, 140});
    setRow(s, grid::kLength, {600, 800});
    setRow(s, grid::kSweep, {5, 40});
    s.set(F_GEO_SF::a12, "40");
    s.set(F_3D::a12, "40");
    setRow(s, grid::kStabRoot, {120});
    setRow(s, grid::kStabTip, {90});
    setRow(s, grid::kStabLength, {250});
    setRow(s, grid::kStabSweep, {20});
    s.set(F_GEO_STAB::b20, "750");
    s.set(F_GEO_STAB::Text4, "20");
    s.setListIndex(F_GEO_STAB::b21, 0);
    s.set(F_GEO_STAB::Text12, "150");
    s.set(F_GEO_STAB::Text11, "90");
    s.set(F_GEO_STAB::Text10, "180");
    s.set(F_GEO_FUS::b24, "1100");
    s.set(F_GEO_FUS::b25, "280");
    s.set(F_GEO_FUS::D24, "60");
    s.set(F_GEO_FUS::D25, "70");
    s.set(F_GEO_FUS::Text5, "10");
    s.setListIndex(F_3D::Combo9, 1);   // oval section
    s.setListIndex(F_3D::Combo10, 1);  // tapered cone: 20 %
    s.setListIndex(F_3D::Combo7, 0);
    s.set(F_GEO_SF_REGLAGES::H30, "900");
    s.set(F_GEO_SF_REGLAGES::I30, "1200");
    s.set(F_GEO_SF_REGLAGES::C29, "5");
    s.set(F_GEO_SF_REGLAGES::F29, "0.38");
    s.set(F_3D::Slider1[0], "280");
    s.set(F_3D::Slider1[5], "750");
    wb.catalogue.rows = {CatalogueRow{"TESTFOIL", -0.05, -2.5, "DATA/TESTFOIL.DAT"}};
    s.setItems(F_3D::Combo5, {"TESTFOIL"});
    s.setListIndex(F_3D::Combo5, 0);
}

}  // namespace tarvokin::test

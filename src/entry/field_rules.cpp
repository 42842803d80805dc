#include "entry/field_rules.h"

#include <vector>

#include "airfoils/airfoil_selection.h"
#include "design/aspect_ratio.h"
#include "design/grid_cells.h"
#include "design/performance.h"
#include "design/recalc.h"
#include "design/tail_tools.h"
#include "design/vlm.h"
#include "power/power_fields.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

void mark(std::vector<EntryCheck>& t, std::initializer_list<Cell> cells, EntryCheck k) {
    for (Cell c : cells) t[c.id] = k;
}

void mark(std::vector<EntryCheck>& t, const grid::Row& row, EntryCheck k) {
    for (Cell c : row) t[c.id] = k;
}

const std::vector<EntryCheck>& entryChecks() {
    static const std::vector<EntryCheck> table = [] {
        std::vector<EntryCheck> t(kCellCount, EntryCheck::None);
        constexpr EntryCheck plain = EntryCheck::Decimal, sign = EntryCheck::DecimalSigned;
        // Wing: only the first root is typed, the other roots follow the tips.
        mark(t, {F_GEO_SF::b5}, plain);
        mark(t, grid::kTip, plain);
        mark(t, grid::kLength, plain);
        // Sweeps may point forward; twist and dihedral may be negative.
        mark(t, grid::kSweep, sign);
        mark(t, grid::kTwist, sign);
        mark(t, grid::kDihedral, sign);
        mark(t, grid::kStabRoot, plain);
        mark(t, grid::kStabTip, plain);
        mark(t, grid::kStabLength, plain);
        mark(t, grid::kStabSweep, sign);
        mark(t, {F_GEO_SF::a12, F_3D::a12}, plain);
        {
            using namespace F_GEO_SF_REGLAGES;
            mark(t, {H30, I30, C29, F29, F_3D::F29}, plain);
        }
        // Movable surfaces: chord percentages are positive, span positions signed.
        mark(t,
             {F_GEO_SF::T_Ail_Pourc, F_GEO_SF::T_Ail_PourcD, F_GEO_SF::T_Flap_Pourc, F_GEO_SF::T_Flap_PourcD,
              F_GEO_STAB::T_Prof_Pourc, F_GEO_STAB::T_Prof_PourcD},
             plain);
        mark(t,
             {F_GEO_SF::T_Ail_PosL, F_GEO_SF::T_Ail_PosR, F_GEO_SF::T_Flap_PosL, F_GEO_SF::T_Flap_PosR,
              F_GEO_STAB::T_Prof_PosL, F_GEO_STAB::T_Prof_PosR},
             sign);
        // Tail lever and fin: lengths; the heights and the fin sweep are signed.
        {
            using namespace F_GEO_STAB;
            mark(t, {b20, Text12, Text11, Text10, Text13, Text14, T_Deriv_PosH, T_Deriv_PosB}, plain);
            mark(t, {Text4, Text9, Text2}, sign);
        }
        mark(t, {F_3D::T_Deriv_PosH, F_3D::T_Deriv_PosB}, plain);
        // Fuselage: lengths, and the height of the wing on it (signed).
        mark(t, {F_GEO_FUS::b24, F_GEO_FUS::b25, F_GEO_FUS::D24, F_GEO_FUS::D25}, plain);
        mark(t, {F_GEO_FUS::Text5}, sign);
        // Performance windows: altitude and speed are positive, the temperature signed.
        mark(t, {F_GEO_3::Text2, F_GEO_5::Text2}, plain);
        mark(t, {F_GEO_3::Text3}, sign);
        mark(t, {F_GEO_3::Text12}, EntryCheck::Integer);
        // Aspect-ratio panel: area, masses, aspect ratio, turn and chart limits.
        for (uint16_t id = 0; id < kCellCount; ++id)
            if (allongement::IsTypedField(Cell{id})) t[id] = plain;
        // Lattice panel: the angle setting and the roll are whole, the deflections signed.
        mark(t, {F_VLM::B33, F_VLM::Text1}, EntryCheck::Integer);
        mark(t, {F_VLM::T_Flap_AngL, F_VLM::T_Flap_AngR, F_VLM::T_Ail_AngL, F_VLM::T_Ail_AngR}, sign);
        // Power train: counts are whole, the rest are positive figures.
        {
            using namespace F_CALC_MOT;
            mark(t, {G6, G15, N29}, EntryCheck::Integer);
            mark(t, {G4, L40a, G29, I10, Ra, Io, N51, L51, L33}, plain);
        }
        mark(t, {F_3D::b6, F_3D::d6, F_3D::d7, F_3D::f5, F_3D::f6}, plain);
        mark(t, {F_MOTORISATIONS::T_Ra, F_MOTORISATIONS::T_Io, F_MOTORISATIONS::d8}, plain);
        {
            using namespace F_SERVOS;
            mark(t, {b5, B10, b12, b9, b7, b8, d10, d12, d9, d7, d8, f10, f12, f9, f7, f8, h10, h12, h9, h7, h8, k10},
                 plain);
        }
        mark(t, {F_STAB::D11, F_STAB::D12, F_STAB::D22}, plain);
        {
            using namespace F_STAB_VE;
            mark(t, {Corde1V, Corde2V, LongueurV, Corde1N, Corde2N, LongueurN, OuvertureV}, plain);
        }
        // The airfoil generators: digits and counts are whole, the panel's sizes positive.
        for (int i = 0; i < 6; ++i) t[F_NACA::T_DESIGN[i].id] = EntryCheck::Integer;
        mark(t, {F_NACA::T_NPP, F_RIBS::Text4}, EntryCheck::Integer);
        mark(t, {F_RIBS::Text1, F_RIBS::Text2, F_RIBS::Text3, F_RIBS::Text5}, plain);
        return t;
    }();
    return table;
}

bool inRow(const grid::Row& row, Cell c) { return grid::column(row, c) >= 0; }

// Chords and spans of both grids: a blank is taken as a zero, so that the
// recalculation always reads a number there.
bool blankMeansZero(Cell c) {
    return c == F_GEO_SF::b5 || inRow(grid::kTip, c) || inRow(grid::kLength, c) || inRow(grid::kStabRoot, c) ||
           inRow(grid::kStabTip, c) || inRow(grid::kStabLength, c);
}

// The geometry grids recalculate on Enter (and only there, so that the
// recalculation's own writes into them never start another run).
bool recalcOnEnter(Cell c) {
    for (const grid::Row* row : {&grid::kRoot, &grid::kTip, &grid::kLength, &grid::kSweep, &grid::kTwist,
                                 &grid::kDihedral, &grid::kStabRoot, &grid::kStabTip, &grid::kStabLength,
                                 &grid::kStabSweep}) {
        if (inRow(*row, c)) return true;
    }
    using namespace F_GEO_STAB;
    for (Cell other : {F_GEO_SF::a12, b20, Text4, Text12, Text11, Text10, Text9, Text13, Text14, Text2,
                       F_GEO_FUS::b24, F_GEO_FUS::b25, F_GEO_FUS::D24, F_GEO_FUS::D25, F_GEO_FUS::Text5,
                       // control surfaces of the design window: they move the hinge lines of the drawing
                       F_GEO_SF::T_Ail_PosL, F_GEO_SF::T_Ail_PosR, F_GEO_SF::T_Ail_Pourc, F_GEO_SF::T_Ail_PourcD,
                       F_GEO_SF::T_Flap_PosL, F_GEO_SF::T_Flap_PosR, F_GEO_SF::T_Flap_Pourc, F_GEO_SF::T_Flap_PourcD,
                       T_Prof_PosL, T_Prof_PosR, T_Prof_Pourc, T_Prof_PourcD}) {
        if (c == other) return true;
    }
    return false;
}

// Choices and flags that reshape the design recalculate as soon as they change.
bool recalcOnChoice(Cell c) {
    for (Cell other : {F_3D::Combo5, F_3D::Combo7, F_3D::Combo9, F_3D::Combo10, F_3D::Ch_Winglets, F_3D::Text8,
                       F_GEO_STAB::b21, F_GEO_STAB::Check2, F_GEO_SF_REGLAGES::Ch_Aile}) {
        if (c == other) return true;
    }
    return false;
}

void copyIfDifferent(Sheet& s, Cell from, Cell to) {
    if (s.text(to) != s.text(from)) s.set(to, s.text(from));
}

// A speed that is blank or not above zero would give no Reynolds number.
void keepSpeed(Sheet& s, Cell c) {
    if (!(s.val(c) > 0)) s.set(c, "10");
}

}  // namespace

EntryCheck entryCheckOf(Cell c) { return entryChecks()[c.id]; }

void onFieldChange(Workbench& wb, Cell c) {
    // The power windows and the tail calculators compute on their own.
    if (PowerFieldChange(wb, c) || TailToolFieldChange(wb, c)) return;
    Sheet& s = wb.sheet;
    // The Reynolds estimate of the airfoil window follows each of its three
    // entries, typed or set from the command line alike.
    if (c == F_PROFILS::b6 || c == F_PROFILS::b5 || c == F_PROFILS::B4) {
        refreshReynoldsEstimate(wb);
        return;
    }
    if (performanceFieldChange(wb, c) || vlm::CellChanged(wb, c)) return;
    if (cellTable()[c.id].form == Form::F_ALLONGEMENT) {
        allongement::CellChanged(wb, c);
        return;
    }
    if (blankMeansZero(c)) {
        if (trim(s.text(c)).empty()) s.set(c, "0");
        return;
    }
    if (c == F_GEO_SF::a12) {
        keepSpeed(s, c);
        copyIfDifferent(s, F_GEO_SF::a12, F_3D::a12);
        return;
    }
    if (c == F_3D::a12) {
        keepSpeed(s, c);
        copyIfDifferent(s, F_3D::a12, F_GEO_SF::a12);
        RecalcAll(wb);
        return;
    }
    using namespace F_GEO_SF_REGLAGES;
    if (c == H30 || c == I30) {
        if (s.val(c) == 0) s.set(c, "500");
        RecalcAll(wb);
    } else if (c == C29) {
        if (trim(s.text(c)).empty()) s.set(c, "0");
        RecalcAll(wb);
    } else if (c == F29) {
        copyIfDifferent(s, F29, F_3D::F29);
        RecalcAll(wb);
    } else if (c == F_3D::F29) {
        copyIfDifferent(s, F_3D::F29, F29);
        RecalcAll(wb);
    } else if (recalcOnChoice(c)) {
        RecalcAll(wb);
    }
}

void onFieldEnter(Workbench& wb, Cell c) {
    if (performanceFieldEnter(wb, c) || vlm::CellEntered(wb, c)) return;
    if (recalcOnEnter(c)) RecalcAll(wb);
}

void installFieldRules(Workbench& wb) {
    auto cellOf = [](const Action& a) {
        Cell c{0};
        std::string path = a.form + "." + a.control;
        if (a.index >= 0) path += "(" + std::to_string(a.index) + ")";
        findCell(path, c);
        return c;
    };
    const auto& table = cellTable();
    std::vector<bool> done(256, false);
    for (const CellDef& d : table) {
        const auto f = static_cast<size_t>(d.form);
        if (done[f]) continue;
        done[f] = true;
        const char* form = formName(d.form);
        wb.handlers.on(form, "*", Act::Change, [cellOf](Workbench& w, const Action& a) { onFieldChange(w, cellOf(a)); });
        wb.handlers.on(form, "*", Act::Enter, [cellOf](Workbench& w, const Action& a) { onFieldEnter(w, cellOf(a)); });
        // A slider's move is the change of the number it stands for.
        wb.handlers.on(form, "*", Act::Scroll, [cellOf](Workbench& w, const Action& a) { onFieldChange(w, cellOf(a)); });
    }
}

}  // namespace tarvokin

// The master recalculation. Every derived cell is recomputed from the inputs,
// top to bottom, in a fixed order: later steps read what earlier ones wrote
// (the chained panel roots, j5, j26, J20, the CG and neutral-point cells), and
// the windows listening to the sheet see the writes in that order.
//
// An output that has no meaning for the design at hand (no tail, no fuselage,
// a wing without area) shows "-". What still cannot be computed ends the run
// with RunError, the cells keeping what was written up to there.
#include <string>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "design/recalc.h"
#include "design/summary.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr const char* kDash = "-";

// The text of a cell with two decimals when it holds a number, else as it is.
std::string twoDecimals(const Sheet& s, Cell c) {
    double v = 0;
    if (tryNumber(s.text(c), v)) return fixed(v, 2);
    return s.text(c);
}

std::string withSuffix(const std::string& value, const char* suffix) {
    return value == kDash ? value : value + suffix;
}

// Each panel's root takes the tip of the panel inside it, as text, so the
// chain reads exactly what the user typed; a panel without tip has no root.
void chainRoots(Sheet& s, const grid::Row& root, const grid::Row& tip) {
    for (size_t k = 1; k < 5; ++k) {
        if (s.num(tip[k]) != 0)
            s.set(root[k], s.text(tip[k - 1]));
        else
            s.set(root[k], "0");
    }
}

void writeLoadings(Sheet& s, bool hasWing) {
    using namespace F_GEO_SF_REGLAGES;
    if (!hasWing) {
        s.set(H32, kDash);
        s.set(I32, kDash);
        return;
    }
    s.setFixed(H32, WingLoading(s, s.num(H30)), 1);
    s.setFixed(I32, WingLoading(s, s.num(I30)), 1);
}

void writeStabOutputs(Sheet& s, bool hasWing) {
    using namespace F_GEO_STAB;
    if (!(StabArea(s) > 0)) {
        for (Cell c : {j15, j16, j17, j18, j19, J20, j21, j22}) s.set(c, kDash);
        s.set(F_3D::j17, kDash);
        s.set(F_3D::J20, kDash);
    } else {
        s.setFixed(j15, StabArea(s), 2);
        s.setFixed(j16, StabMeanChord(s), 1);
        s.setFixed(j17, StabSpan(s), 1);
        s.set(F_3D::j17, s.text(j17));
        s.setFixed(j18, StabAspectRatio(s), 2);
        if (s.num(b16) != 0)
            s.setFixed(j19, StabEllipticRatio(s), 2);
        else
            s.set(j19, kDash);
        s.setFixed(J20, StabFoyer(s), 1);
        s.set(F_3D::J20, s.text(J20));
        // The lever and the volume are measured against the wing.
        if (hasWing) {
            s.setFixed(j21, StabLever(s), 0);
            s.setFixed(j22, StabVolume(s), 2);
        } else {
            s.set(j21, kDash);
            s.set(j22, kDash);
        }
    }
    s.setFixed(F_3D::d21, FinArea(s), 2);
}

void writeFuselageOutputs(Sheet& s) {
    using namespace F_GEO_FUS;
    const double wet = 100 * FuselageWetArea(s);
    if (wet > 0)
        s.setFixed(j24, wet, 1);
    else
        s.set(j24, kDash);
    const double plan = FuselagePlanArea(s);
    if (100 * plan > 0)
        s.setFixed(j25, 100 * plan, 1);
    else
        s.set(j25, kDash);
    if (plan > 0)
        s.setPlain(j26, FuselageFoyerPercent(s));
    else
        s.set(j26, kDash);
}

void selectAirfoil(Workbench& wb) {
    Sheet& s = wb.sheet;
    if (s.text(F_3D::Combo5).empty() && !s.items(F_3D::Combo5).empty()) s.setListIndex(F_3D::Combo5, 0);
    const std::string& name = s.text(F_3D::Combo5);
    if (name.empty()) return;
    const size_t row = wb.catalogue.Find_Profil(name);
    if (row == kNotFound || row >= wb.catalogue.rows.size()) return;
    s.setPlain(F_GEO_SF::j11, wb.catalogue.rows[row].Cm0);
    s.setPlain(F_GEO_SF::j12, wb.catalogue.rows[row].Alpha0);
}

// A flying wing is centred on its root panel alone: the neutral point of the
// first trapezium, moved forward by the static margin.
void flyingWingCentre(Sheet& s) {
    const double c0 = s.num(F_GEO_SF::b5), c1 = s.num(F_GEO_SF::b6);
    double mac = 0;
    if (c0 + c1 == 0 || !tryNumber(s.text(F_3D::j5), mac) || mac == 0) {
        s.set(F_GEO_SF_REGLAGES::B30, kDash);
        return;
    }
    const double d = c1 + s.num(F_GEO_SF::b8) - c0;
    const double foyer = (d / 3) * (c0 + 2 * c1) / (c0 + c1) + (c0 * c0 + c0 * c1 - c1 * c1) / (2 * (c0 + c1));
    const double cg = foyer - mac * s.num(F_GEO_SF_REGLAGES::C29) / 100;
    s.setFixed(F_GEO_SF_REGLAGES::B30, cg / mac * 100, 2);
}

void refreshOpenPanels(Workbench& wb) {
    static constexpr int kOrder[] = {button::Allongement, button::Servos, button::View2D, button::Performances,
                                     button::Wizard, button::Aero};
    for (int b : kOrder) {
        // Button 29's Tag holds the lattice panel's surface: 1 wing, 2 stabiliser.
        const bool open = b == button::Wizard ? wb.sheet.val(F_Main::Toolbar2[b]) != 0 : wb.isOpen(b);
        if (!open) continue;
        auto it = wb.panelRefresh.find(b);
        if (it != wb.panelRefresh.end() && it->second) it->second(wb);
    }
}

}  // namespace

void RecalcAll(Workbench& wb) {
    Sheet& s = wb.sheet;

    // A project load clears T_ALLOW around its own run, so that the stored
    // stabiliser height and panel roots survive as they were saved.
    if (s.val(F_GEO_SF_REGLAGES::T_ALLOW) != 0) {
        s.setPlain(F_3D::D20, s.num(F_GEO_STAB::Text4) + s.num(F_GEO_FUS::Text5));
        for (size_t k = 2; k < 5; ++k) {
            if (s.num(grid::kStabTip[k]) + s.num(grid::kStabLength[k]) == 0) s.set(grid::kStabRoot[k], "0");
        }
    }

    if (!(wb.wingReady && wb.stabReady && wb.fuselageReady)) return;
    if (!s.on(F_GEO_SF::Text1) || !s.on(F_GEO_STAB::Text3)) return;

    chainRoots(s, grid::kRoot, grid::kTip);

    // Reynolds number at the smallest real tip chord: the most critical section.
    double smallest = 9999;
    for (int k = 4; k >= 0; --k) {
        const double ct = s.num(grid::kTip[static_cast<size_t>(k)]);
        if (ct < smallest && ct > 0) smallest = ct;
    }
    s.setPlain(F_GEO_SF::c12, Reynolds(smallest, s.num(F_3D::a12)));

    chainRoots(s, grid::kStabRoot, grid::kStabTip);

    const double area = WingArea(s);
    const bool hasWing = area > 0;
    s.setFixed(F_GEO_SF::j4, area, 2);
    if (hasWing)
        s.setFixed(F_3D::j5, MeanChord(s), 2);
    else
        s.set(F_3D::j5, kDash);
    s.setPlain(F_GEO_SF::j6, Span(s));
    if (hasWing)
        s.setFixed(F_GEO_SF::j7, AspectRatio(s), 2);
    else
        s.set(F_GEO_SF::j7, kDash);
    if (s.num(F_GEO_SF::b5) != 0)
        s.setFixed(F_3D::j8, EllipticAspectRatio(s), 2);
    else
        s.set(F_3D::j8, kDash);
    if (hasWing)
        s.setFixed(F_GEO_SF::j9, WingFoyer(s), 2);
    else
        s.set(F_GEO_SF::j9, kDash);
    s.set(F_GEO_SF::j99, withSuffix(s.text(F_GEO_SF::j9), " mm (=  25 % de la CAM)"));

    s.setPlain(F_GEO_SF::b12, Reynolds(s, s.num(F_GEO_SF::b5)));
    double meanChord = 0;
    if (tryNumber(s.text(F_3D::j5), meanChord))
        s.setPlain(F_GEO_SF::D12, Reynolds(s, meanChord));
    else
        s.set(F_GEO_SF::D12, kDash);

    selectAirfoil(wb);

    writeStabOutputs(s, hasWing);
    writeFuselageOutputs(s);
    writeLoadings(s, hasWing);

    s.set(F_3D::j4, s.text(F_GEO_SF::j4));
    s.set(F_3D::j6, s.text(F_GEO_SF::j6));
    s.set(F_3D::j7, s.text(F_GEO_SF::j7));
    s.set(F_3D::j11, s.text(F_GEO_SF::j11));
    s.set(F_3D::j12, s.text(F_GEO_SF::j12));
    s.set(F_3D::j22, s.text(F_GEO_STAB::j22));
    // The design window always shows the unit, "- %" included.
    s.set(F_3D::j26a, s.text(F_GEO_FUS::j26) + " %");

    {
        using namespace F_GEO_SF_REGLAGES;
        if (hasWing) {
            s.setFixed(B30, 100 * CgPoint(s), 1);
            s.setFixed(B31, 100 * NeutralPoint(s), 2);
            s.setFixed(C30, CgStation(s), 2);
            s.setFixed(C31, NeutralStation(s), 2);
        } else {
            for (Cell c : {B30, B31, C30, C31}) s.set(c, kDash);
        }
    }

    if (s.val(F_GEO_SF_REGLAGES::Ch_Aile) == 1)
        flyingWingCentre(s);
    else
        Incidence(wb);

    {
        using namespace F_GEO_SF_REGLAGES;
        s.set(F_3D::b30, "CG : " + twoDecimals(s, C30) + " mm (" + twoDecimals(s, B30) + " % cam)" + kLabelLineEnd +
                             "Cz aile = " + s.text(D30));
        s.set(F_3D::T_CG, s.text(B30));
        s.set(F_3D::F31, s.text(F31));
        s.set(F_3D::F32, s.text(F32));
        s.set(F_3D::f31a, withSuffix(s.text(F31), " °"));
        s.set(F_3D::f32a, withSuffix(s.text(F32), " °"));
        s.set(F_3D::f30a, withSuffix(twoDecimals(s, F30), " °"));
    }

    writeLoadings(s, hasWing);
    // The design window's copies of the loadings, which the performance panel shows.
    s.set(F_3D::H32, s.text(F_GEO_SF_REGLAGES::H32));
    s.set(F_3D::I32, s.text(F_GEO_SF_REGLAGES::I32));

    {
        using namespace F_GEO_SF_REGLAGES;
        s.set(F_3D::j9, twoDecimals(s, C31) + " mm (= " + s.text(B31) + " % cam),  Cz aile = " + s.text(D31) + ")");
    }

    refreshOpenPanels(wb);

    if (wb.isOpen(button::View3D)) {
        auto it = wb.panelRefresh.find(button::View3D);
        if (it != wb.panelRefresh.end() && it->second) it->second(wb);
    }
    BuildSummary(s, wb.settings.languageCode);
}

}  // namespace tarvokin

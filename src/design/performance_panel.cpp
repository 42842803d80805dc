// What the controls of the performance windows F_GEO_3 and F_GEO_5 do: the
// steppers, the switches, the read-out choice, and the refresh that the
// recalculation runs while toolbar button 17 is down.
#include <algorithm>

#include "design/performance.h"
#include "design/recalc.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr int kCursorFirst = 1, kCursorLast = kPerfPoints - 1;
constexpr double kRotationMin = 20, kRotationMax = 180;
constexpr double kSpeedStep = 5;

void blankIsZero(Sheet& s, Cell c) {
    if (trim(s.text(c)).empty()) s.set(c, "0");
}

bool inGroup(const CellGroup& g, Cell c) { return c.id >= g.firstId && c.id < g.firstId + g.count; }

int indexIn(const CellGroup& g, Cell c) { return g.firstIndex + (c.id - g.firstId); }

}  // namespace

void RefreshPerformancePanels(Workbench& wb) {
    Courbes_Performances(wb);
    if (wb.perf.constantReynoldsOpen) Courbes_ReConstant(wb);
}

void registerPerformancePanels(Workbench& wb) { wb.panelRefresh[button::Performances] = RefreshPerformancePanels; }

void F_GEO_3_Command1_Click(Workbench& wb, AirStep step) {
    Sheet& s = wb.sheet;
    switch (step) {
        case AirStep::AltitudeUp: s.setPlain(F_GEO_3::Text2, s.val(F_GEO_3::Text2) + 100); break;
        case AirStep::AltitudeDown: s.setPlain(F_GEO_3::Text2, std::max(0.0, s.val(F_GEO_3::Text2) - 100)); break;
        case AirStep::TemperatureUp: s.setPlain(F_GEO_3::Text3, s.val(F_GEO_3::Text3) + 5); break;
        case AirStep::TemperatureDown: s.setPlain(F_GEO_3::Text3, s.val(F_GEO_3::Text3) - 5); break;
    }
    RecalcAll(wb);
}

void F_GEO_3_Command2_Click(Workbench& wb, int direction) {
    Sheet& s = wb.sheet;
    const double point = s.val(F_GEO_3::Text12) + (direction < 0 ? -1 : 1);
    s.setPlain(F_GEO_3::Text12, std::clamp(point, double(kCursorFirst), double(kCursorLast)));
    Affiche_Curseur(wb);
}

void F_GEO_3_Command3_Click(Workbench& wb, int direction) {
    Sheet& s = wb.sheet;
    const double angle = s.val(F_GEO_3::Command3) + (direction < 0 ? -10 : 10);
    s.setPlain(F_GEO_3::Command3, std::clamp(angle, kRotationMin, kRotationMax));
}

void F_GEO_3_Command4_Click(Workbench& wb) {
    wb.perf.constantReynoldsOpen = true;
    Courbes_ReConstant(wb);
}

void F_GEO_3_Option1_Click(Workbench& wb, int index) {
    if (!F_GEO_3::Option1.holds(index)) return;
    Sheet& s = wb.sheet;
    for (int i = 0; i < 2; ++i) s.set(F_GEO_3::Option1[i], i == index ? "1" : "0");
    Affiche_Curseur(wb);
}

void F_GEO_5_Command1_Click(Workbench& wb, int direction) {
    Sheet& s = wb.sheet;
    // The speed stays above 0: a model at rest has no Reynolds number.
    const double speed = s.val(F_GEO_5::Text2) + (direction < 0 ? -kSpeedStep : kSpeedStep);
    s.setPlain(F_GEO_5::Text2, std::max(kSpeedStep, speed));
    Courbes_ReConstant(wb);
}

void F_GEO_5_VScroll_Change(Workbench& wb, int which, double value) {
    if (which != 1 && which != 2) return;
    Sheet& s = wb.sheet;
    const double limit = std::max(0.0, value);
    s.setPlain(which == 1 ? F_GEO_5::VScroll1 : F_GEO_5::VScroll2, limit);
    s.setPlain(which == 1 ? F_GEO_5::Text3 : F_GEO_5::Text4, limit);
    Courbes_ReConstant(wb);
}

void F_GEO_5_Unload(Workbench& wb) { wb.perf.constantReynoldsOpen = false; }

bool performanceFieldChange(Workbench& wb, Cell c) {
    Sheet& s = wb.sheet;
    using namespace F_GEO_3;
    // The contribution switches and the two inert boxes re-run the
    // calculation; VLM and the version box change nothing in the results.
    if (c == Check1 || c == Check2 || c == Check3 || c == Check4) {
        RecalcAll(wb);
        return true;
    }
    if (c == Check6) {
        s.set(Check6_Caption, s.text(Check6_Caption) == "V2.22" ? "V2.23" : "V2.22");
        RecalcAll(wb);
        return true;
    }
    if (inGroup(Check5, c)) {
        // The airfoil window's choice is the one that counts; this box mirrors it.
        s.set(F_PROFILS::Check2[indexIn(Check5, c)], s.on(c) ? "1" : "0");
        RecalcAll(wb);
        return true;
    }
    if (inGroup(Option1, c)) {
        if (s.on(c)) F_GEO_3_Option1_Click(wb, indexIn(Option1, c));
        return true;
    }
    if (inGroup(F_GEO_5::Check2, c)) {
        Courbes_ReConstant(wb);
        return true;
    }
    return false;
}

bool performanceFieldEnter(Workbench& wb, Cell c) {
    using namespace F_GEO_3;
    // A field left empty is confirmed as 0.
    if (c == Text2 || c == Text3) {
        blankIsZero(wb.sheet, c);
        RecalcAll(wb);
        return true;
    }
    if (c == Text12) {
        Affiche_Curseur(wb);
        return true;
    }
    if (c == F_GEO_5::Text2) {
        blankIsZero(wb.sheet, c);
        Courbes_ReConstant(wb);
        return true;
    }
    return false;
}

}  // namespace tarvokin

#include "entry/interpolation_logic.h"

#include <cmath>

#include "airfoils/polar_interpolation.h"
#include "airfoils/polar_lookup.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr const char* kForm = "F_TEST_POL";

double fieldValue(const Sheet& s, Cell c, double fallback) {
    double v = 0;
    return tryNumber(trim(s.text(c)), v) && std::isfinite(v) ? v : fallback;
}

}  // namespace

void RefreshInterpolation(Workbench& wb) {
    const Sheet& s = wb.sheet;
    const double re = fieldValue(s, F_TEST_POL::Text1, 0), cz = fieldValue(s, F_TEST_POL::Text2, 0);
    wb.sheet.set(F_TEST_POL::T_Cx, re > 0 ? fixed(Get_Cx(wb.testPolars, 0, re, cz), 7) : "-");
}

void installInterpolationLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    auto choose = [](Workbench& w) {
        if (w.sheet.text(F_TEST_POL::CB_1).empty() && !w.sheet.items(F_TEST_POL::CB_1).empty()) {
            if (!w.sheet.selectText(F_TEST_POL::CB_1, w.sheet.text(F_PROFILS::CB_1[0])))
                w.sheet.setListIndex(F_TEST_POL::CB_1, 0);
        }
        ReadTestPolars(w, w.sheet.text(F_TEST_POL::CB_1));
        RefreshInterpolation(w);
    };
    wb.panelOpening[button::TestPol] = choose;
    h.on(kForm, "CB_1", Act::Change, [choose](Workbench& w, const Action&) { choose(w); });
    // Re in thousands and Cz in hundredths on the sliders.
    h.on(kForm, "Slider1", Act::Scroll, [](Workbench& w, const Action& a) {
        w.sheet.setPlain(F_TEST_POL::Text1, leadingNumber(a.text) * 1000);
        RefreshInterpolation(w);
    });
    h.on(kForm, "Slider2", Act::Scroll, [](Workbench& w, const Action& a) {
        w.sheet.setPlain(F_TEST_POL::Text2, leadingNumber(a.text) / 100);
        RefreshInterpolation(w);
    });
    h.on(kForm, "Text1", Act::Enter, [](Workbench& w, const Action&) {
        const double v = fieldValue(w.sheet, F_TEST_POL::Text1, 0);
        if (v > 0 && v < 1e9) w.sheet.setPlain(F_TEST_POL::Slider1, std::round(v / 1000));
        RefreshInterpolation(w);
    });
    h.on(kForm, "Text2", Act::Enter, [](Workbench& w, const Action&) {
        const double v = fieldValue(w.sheet, F_TEST_POL::Text2, 0);
        if (std::fabs(v) < 1e6) w.sheet.setPlain(F_TEST_POL::Slider2, std::round(v * 100));
        RefreshInterpolation(w);
    });
    for (const char* c : {"Slider1", "Slider2", "Slider4", "Slider5"})
        h.on(kForm, c, Act::ScrollEnd, [](Workbench&, const Action&) {});
    for (const char* c : {"Slider4", "Slider5"}) h.on(kForm, c, Act::Scroll, [](Workbench&, const Action&) {});
    h.on(kForm, "*", Act::Change, [](Workbench&, const Action&) {});
}

}  // namespace tarvokin

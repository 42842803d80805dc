#include "entry/pressure_logic.h"

#include <cmath>

#include "airfoils/outline.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr const char* kForm = "F_AERO";

WaitHooks hooksOf(Workbench& wb) {
    WaitHooks h;
    h.betweenWaits = wb.serveEvents;
    auto it = wb.solverProgress.find(kForm);
    if (it != wb.solverProgress.end()) h.progress = it->second;
    return h;
}

// A field in tenths moves its slider (a value that isn't a number leaves it).
void sliderFromField(Sheet& s, Cell field, Cell slider) {
    double v = 0;
    if (tryNumber(trim(s.text(field)), v) && std::isfinite(v) && std::fabs(v) < 1e6)
        s.setPlain(slider, std::round(v * 10.0));
}

void fieldFromSlider(Sheet& s, Cell field, const std::string& value) {
    double v = 0;
    if (tryNumber(trim(value), v) && std::isfinite(v)) s.setPlain(field, v / 10.0);
}

void loadOutline(Workbench& wb) {
    const std::string name = wb.sheet.text(F_AERO::Combo5);
    if (name.empty()) return;
    Load_Profil(wb, pressureOutline(wb, name).string(), wb.outlines.slot, OutlineWindow::F_AERO);
}

}  // namespace

void PreparePressureWindow(Workbench& wb) {
    Sheet& s = wb.sheet;
    if (s.text(F_AERO::Combo5).empty() && !s.items(F_AERO::Combo5).empty()) {
        if (s.text(F_3D::Combo5).empty() || !s.selectText(F_AERO::Combo5, s.text(F_3D::Combo5)))
            s.setListIndex(F_AERO::Combo5, 0);
    }
    s.set(F_AERO::Text5, std::to_string(wb.settings.iterations));
    // The incidence is the operating parameter unless the Cl is chosen.
    if (!s.on(F_AERO::Option1[1])) s.set(F_AERO::Option1[0], "1");
}

void RunPressure(Workbench& wb) {
    if (!wb.isOpen(button::Aero)) return;
    PressureState& st = wb.pressure;
    if (st.running) {
        st.again = true;
        return;
    }
    st.running = true;
    struct Done {
        PressureState& st;
        ~Done() { st.running = false; }
    } done{st};
    do {
        st.again = false;
        Calc_Pressure(wb, hooksOf(wb));
    } while (st.again);
}

void installPressureLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    auto run = [](Workbench& w, const Action&) { RunPressure(w); };
    wb.panelOpening[button::Aero] = [](Workbench& w) {
        PreparePressureWindow(w);
        loadOutline(w);
        RunPressure(w);
    };
    // The four files go with the window, as far as a run left any.
    wb.panelClosing[button::Aero] = [](Workbench& w) {
        removePressureFiles(w.home());
        w.pressure.shown = PressureDistribution{};
    };

    h.on(kForm, "Combo5", Act::Change, [](Workbench& w, const Action&) {
        loadOutline(w);
        RunPressure(w);
    });
    for (const char* c : {"Ch_Visc", "Check1", "Check2", "Check3", "Check4", "Check5", "Combo1", "Type"})
        h.on(kForm, c, Act::Change, run);
    // The two option buttons exclude each other.
    h.on(kForm, "Option1", Act::Change, [](Workbench& w, const Action& a) {
        const int chosen = a.index == 1 ? 1 : 0;
        w.sheet.set(F_AERO::Option1[chosen], "1");
        w.sheet.set(F_AERO::Option1[1 - chosen], "0");
        RunPressure(w);
    });
    h.on(kForm, "T_Alpha", Act::Scroll, [](Workbench& w, const Action& a) {
        fieldFromSlider(w.sheet, F_AERO::T_alphad, a.text);
    });
    h.on(kForm, "T_Cl", Act::Scroll, [](Workbench& w, const Action& a) {
        fieldFromSlider(w.sheet, F_AERO::T_Cld, a.text);
    });
    for (const char* c : {"T_Alpha", "T_Cl"}) h.on(kForm, c, Act::ScrollEnd, run);
    h.on(kForm, "T_alphad", Act::Enter, [](Workbench& w, const Action&) {
        sliderFromField(w.sheet, F_AERO::T_alphad, F_AERO::T_Alpha);
        RunPressure(w);
    });
    h.on(kForm, "T_Cld", Act::Enter, [](Workbench& w, const Action&) {
        sliderFromField(w.sheet, F_AERO::T_Cld, F_AERO::T_Cl);
        RunPressure(w);
    });
    // The viscous run takes the window's Reynolds number unless given its own.
    h.on(kForm, "T_Re", Act::Enter, [](Workbench& w, const Action&) {
        w.sheet.set(F_AERO::T_Visc, w.sheet.text(F_AERO::T_Re));
        RunPressure(w);
    });
    for (const char* c : {"T_Visc", "T_Red", "Text4", "Text5", "Text8", "Text9"}) h.on(kForm, c, Act::Enter, run);
    // An undo or a redo puts fields of the window back; the recalculation
    // that ends it computes the restored point once, however many fields.
    h.on(kForm, "*", Act::Restored, [](Workbench& w, const Action&) { w.pressure.stale = true; });
    wb.panelRefresh[button::Aero] = [](Workbench& w) {
        if (!w.pressure.stale) return;
        w.pressure.stale = false;
        RunPressure(w);
    };
    // Keys typed into a field wait for Enter.
    h.on(kForm, "*", Act::Change, [](Workbench&, const Action&) {});
}

}  // namespace tarvokin

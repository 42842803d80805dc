#include "entry/naca_logic.h"

#include "airfoils/naca_panel.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

Cell cellOf(const Action& a) {
    Cell c{0};
    std::string path = a.form + "." + a.control;
    if (a.index >= 0) path += "(" + std::to_string(a.index) + ")";
    findCell(path, c);
    return c;
}

}  // namespace

void installNacaLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    // A family or a distribution: by its option button (a click, or the flag
    // set as the option's cell), the others of the group cleared.
    h.on("F_NACA", "Option1", Act::Click, [](Workbench& w, const Action& a) { NacaFamilyChosen(w, a.index); });
    h.on("F_NACA", "Option1", Act::Change, [](Workbench& w, const Action& a) {
        if (w.sheet.on(F_NACA::Option1[a.index])) NacaFamilyChosen(w, a.index);
    });
    h.on("F_NACA", "Option2", Act::Click, [](Workbench& w, const Action& a) { NacaDistributionChosen(w, a.index); });
    h.on("F_NACA", "Option2", Act::Change, [](Workbench& w, const Action& a) {
        if (w.sheet.on(F_NACA::Option2[a.index])) NacaDistributionChosen(w, a.index);
    });
    // Every other field, slider and switch: the outline follows at once.
    auto changed = [](Workbench& w, const Action& a) { NacaInputChanged(w, cellOf(a)); };
    h.on("F_NACA", "*", Act::Change, changed);
    h.on("F_NACA", "*", Act::Scroll, changed);
    h.on("F_NACA", "*", Act::Enter, [](Workbench& w, const Action&) { Module1(w); });
    // The outline is no cell: after an undo or a redo it is made again from
    // the fields put back.
    h.on("F_NACA", "*", Act::Restored, [](Workbench& w, const Action&) { Module1(w); });
    h.on("F_NACA", "Command2", Act::Click, [](Workbench& w, const Action&) {
        bool ok = false;
        const std::string line = SaveNaca(w, ok);
        w.sheet.set(F_NACA::StatusBar1, line);
    });
}

}  // namespace tarvokin

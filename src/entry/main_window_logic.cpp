#include "entry/main_window_logic.h"

#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/session.h"

namespace tarvokin {

void installMainWindowLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.on("F_Main", "Toolbar2", Act::Click, [](Workbench& w, const Action& a) {
        if (a.index == button::CloseAll)
            CloseAllPanels(w);
        else
            TogglePanel(w, a.index);
    });
    h.on("F_Main", "IM_UNDO", Act::Click, [](Workbench& w, const Action&) { Undo(w); });
    h.on("F_Main", "IM_REDO", Act::Click, [](Workbench& w, const Action&) { Redo(w); });
    h.on("F_Main", "IM_RECENT", Act::Click, [](Workbench& w, const Action& a) { RecentClicked(w, a.index); });
}

}  // namespace tarvokin

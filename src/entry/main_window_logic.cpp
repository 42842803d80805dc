#include "entry/main_window_logic.h"

#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/report_logic.h"
#include "entry/workbook_logic.h"
#include "entry/session.h"

namespace tarvokin {

void installMainWindowLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.on("F_Main", "Toolbar2", Act::Click, [](Workbench& w, const Action& a) {
        if (a.index == button::CloseAll)
            CloseAllPanels(w);
        else if (a.index == button::Save)
            SaveCurrentProject(w);
        else if (a.index == button::Report)
            ReportCommand(w);
        else if (a.index == button::Export)
            ExportWorkbookCommand(w, a.text);
        else
            TogglePanel(w, a.index);
    });
    // Open and save as take the file the dialog gave; an empty one is no command.
    h.on("F_Main", "IM_OPEN_PROJ", Act::Click, [](Workbench& w, const Action& a) { OpenProject(w, a.text); });
    h.on("F_Main", "IM_SAVE_PROJ", Act::Click, [](Workbench& w, const Action& a) { SaveProjectAs(w, a.text); });
    h.on("F_Main", "IM_Language", Act::Click,
         [](Workbench& w, const Action& a) { ChangeLanguage(w, std::to_string(a.index)); });
    h.on("F_Main", "IM_UNDO", Act::Click, [](Workbench& w, const Action&) { Undo(w); });
    h.on("F_Main", "IM_REDO", Act::Click, [](Workbench& w, const Action&) { Redo(w); });
    h.on("F_Main", "IM_RECENT", Act::Click, [](Workbench& w, const Action& a) { RecentClicked(w, a.index); });
}

}  // namespace tarvokin

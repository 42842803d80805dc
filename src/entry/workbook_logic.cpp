#include "entry/workbook_logic.h"

#include <filesystem>

#include "core/numbers.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/project_io.h"
#include "project/workbook.h"
#include "core/messages.h"

namespace tarvokin {

void ExportWorkbookCommand(Workbench& wb, const std::string& file) {
    if (file.empty()) return;  // the dialog was cancelled
    std::string error;
    if (!ExportWorkbook(wb, file, error)) throw RunError(75, error);
    ShowNotice(wb, "[#10] ", file);
}

void ImportWorkbookCommand(Workbench& wb, const std::string& file) {
    if (file.empty()) return;
    std::string error;
    const std::optional<XlsxWorkbook> book = ReadXlsx(file, error);
    std::optional<ProfileDocument> doc;
    if (book) doc = ImportedDocument(wb, *book, error);
    if (!doc) throw RunError(13, "Classeur refusé (" + file + ") : " + error);
    // Brought back like a project opened: its history starts with it.
    ClearHistory(wb);
    LoadProjectDocument(wb, *doc);
}

void installWorkbookLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.on("F_Main", "IM_IMPORT", Act::Click, [](Workbench& w, const Action& a) { ImportWorkbookCommand(w, a.text); });
    // The models' workbook is the user's own file: shown, never an entry.
    h.onView("F_Main", "IM_PARAM_MODELES", Act::Click, [](Workbench& w, const Action&) {
        const std::filesystem::path f = w.home() / "MODELES" / "MODELES.XLS";
        std::error_code ec;
        if (!std::filesystem::is_regular_file(f, ec) || !w.openDocument || !w.openDocument(f.string())) {
            ShowMessage(w, "[#3] ", "");
        }
    });
}

}  // namespace tarvokin

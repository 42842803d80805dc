#include "entry/report_logic.h"

#include <filesystem>
#include <map>
#include <system_error>

#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "entry/session.h"
#include "project/model_name.h"
#include "project/report_page.h"
#include "core/messages.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

// The window whose chart a picture shows, by toolbar position; 0 for the 3D view.
int buttonOf(ReportSource s) {
    switch (s) {
        case ReportSource::GlobalChart: return button::View2D;
        case ReportSource::Performance: return button::Performances;
        case ReportSource::AspectRatio: return button::Allongement;
        case ReportSource::View3D: break;
    }
    return 0;
}

}  // namespace

std::string WriteReport(Workbench& wb) {
    const std::string model = ReportModelName(wb.sheet);
    if (!AcceptableFileName(model) || !AcceptableFileName(model + "_Img_11.PNG"))
        throw RunError(52, "Nom de fichier incorrect pour le rapport : \"" + model + "\"");
    const fs::path folder = wb.home() / "MODELES";
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) fs::create_directories(folder, ec);
    if (!fs::is_directory(folder, ec)) throw RunError(76, "Dossier introuvable : " + folder.string());
    if (!wb.paintPicture) throw RunError(5, "Pas d'écran pour dessiner les images du rapport");

    // Windows that are closed are opened for their pictures and closed
    // again, so the report leaves the screen as it found it.
    const std::vector<ReportPicture> pictures = ReportPictures(model);
    std::map<int, bool> opened;
    for (const ReportPicture& p : pictures) {
        const int b = buttonOf(p.source);
        if (b == 0 || opened.count(b)) continue;
        opened[b] = !wb.isOpen(b);
        if (opened[b]) {
            wb.setOpen(b, true);
            PanelOpened(wb, b);
        }
    }
    auto closeAgain = [&] {
        for (const auto& [b, wasClosed] : opened)
            if (wasClosed) wb.setOpen(b, false);
    };
    for (const ReportPicture& p : pictures) {
        const fs::path target = folder / p.file;
        const fs::path part = folder / (p.file + ".part");
        bool drawn = false;
        try {
            drawn = wb.paintPicture(wb, static_cast<int>(p.source), p.index, part);
        } catch (...) {
            fs::remove(part, ec);
            closeAgain();
            throw;
        }
        if (drawn) fs::rename(part, target, ec);
        if (!drawn || ec) {
            fs::remove(part, ec);
            closeAgain();
            throw RunError(75, "Impossible d'écrire l'image " + target.string());
        }
    }
    closeAgain();

    std::string page;
    for (const std::string& line : ReportPageLines(wb.sheet, model)) page += line + "\n";
    const fs::path file = folder / (model + ".HTM");
    // Latin-1 like every text file of the program: a page without a declared
    // encoding is read so by browsers.
    if (!replaceFile(file, utf8ToLatin1(page))) throw RunError(75, "Impossible d'écrire " + file.string());
    return file.string();
}

void ReportCommand(Workbench& wb) {
    const std::string page = WriteReport(wb);
    ShowNotice(wb, "[#11] ", page);
    if (wb.openDocument) wb.openDocument(page);
}

}  // namespace tarvokin

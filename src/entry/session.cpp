#include "entry/session.h"

#include <filesystem>

#include "airfoils/naca_panel.h"
#include "airfoils/outline.h"
#include "design/summary.h"
#include "core/profile_file.h"
#include "entry/entry_path.h"
#include "entry/project_io.h"
#include "core/text_case.h"
#include "core/messages.h"
#include "core/workbench.h"
#include "airfoils/xfoil_runner.h"
#include "core/project_key.h"
#include "views/aircraft_mesh.h"
#include "views/design_view.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

std::string fileNameOnly(const std::string& path) { return fs::path(path).filename().string(); }

void showRecentMenu(Workbench& wb) {
    for (int i = 0; i < 6; ++i) {
        const std::string& p = wb.settings.recent[static_cast<size_t>(i)];
        wb.sheet.set(F_Main::IM_RECENT[i], p.empty() ? std::string() : fileNameOnly(p));
    }
}

// The outline of the wing airfoil named by Combo5, for the window that shows it.
void loadWingOutline(Workbench& wb, OutlineWindow window) {
    const size_t row = wb.catalogue.Find_Profil(wb.sheet.text(F_3D::Combo5));
    if (row != kNotFound) Load_Profil(wb, wb.catalogue.rows[row].Path, 0, window);
}

std::string profilValue(const Workbench& wb, int slot) {
    return ReadProfileString("Modele", "Profil_" + std::to_string(slot), "0", wb.projectFilePath);
}

}  // namespace

void ReadSettingsAndCatalogue(Workbench& wb) {
    // Scripts left by a solver run whose program was killed hard.
    removeStaleXfoilRun(wb.home());
    wb.settings = readSettings(wb.settingsFilePath(), wb.home());
    wb.catalogue.read(wb.catalogueFilePath());
    wb.fillAirfoilLists();
    wb.languageFilePath = languageFile(wb.home(), wb.settings.languageCode).string();
}

StartupResult StartUp(Workbench& wb) {
    StartupResult result;
    // Number text is "." for the whole run: nothing to change, nothing to restore.
    wb.sheet.set(F_Main::T_Separator, "0");
    ReadSettingsAndCatalogue(wb);
    if (wb.catalogue.rows.empty()) {
        result.message = messageText(wb, "[#1] ", wb.catalogueFilePath().string());
    }
    if (wb.settings.recall && !wb.settings.lastProject.empty()) {
        wb.projectFilePath = wb.settings.lastProject;
        if (!runGuarded(wb, [&] { LoadProject(wb); })) {
            wb.projectFilePath.clear();
        }
    }
    showRecentMenu(wb);
    if (wb.sheet.text(F_3D::T_NOM_Modele) != kUnknownModel) {
        if (!WingAirfoilKnown(wb)) {
            result.stop = true;
            result.message = UnknownAirfoilMessage(wb);
        } else {
            loadWingOutline(wb, OutlineWindow::F_Main);
        }
    }
    if (!result.stop) {
        LoadViewColours(wb);
        BuildAircraft(wb);
        FrameAircraft(wb);
    }
    return result;
}

bool WingAirfoilKnown(const Workbench& wb) {
    return wb.catalogue.Find_Profil(wb.sheet.text(F_3D::Combo5)) != kNotFound;
}

std::string UnknownAirfoilMessage(const Workbench& wb) {
    const std::string& path = wb.projectFilePath;
    std::string keys = "Profil_0 = " + profilValue(wb, 0) + "\n" + "Profil_1 = " + profilValue(wb, 1) + "\n" +
                       "Profil_2 = " + profilValue(wb, 2) + "\n";
    const std::string& code = wb.settings.languageCode;
    if (code == "0") {
        return "les profils indiqués dans " + path + " sont inconnus\n" + "Veuillez documenter la section [Modele]\n" +
               keys + "avec des profils disponibles dans les répertoires spécifiés dans le ../DATA/GENERIC.CSV";
    }
    if (code == "1") {
        return "Aifoils dat specified in " + path + " are unknown\n" + "Please re-write the  [Modele] section\n" + keys +
               "with available airfoils as specified in ../DATA/GENERIC.CSV";
    }
    if (code == "2") {
        return "los perfiles indicados en la seccion [Modele] de " + path + " non son conocidos\n" + "Documentar\n" +
               keys + "con perfiles disponibles en los repertorios indicados en el ../DATA/GENERIC.CSV";
    }
    return {};
}

bool OfferToSave(Workbench& wb) {
    if (wb.settings.saveOnExit || !wb.history.modified() || wb.projectFilePath.empty() ||
        wb.sheet.text(F_3D::T_NOM_Modele) == kUnknownModel)
        return true;
    return !AskUser(wb, "[#20] ", wb.sheet.text(F_3D::T_NOM_Modele)) || SaveProject(wb);
}

void OpenProject(Workbench& wb, const std::string& path) {
    if (path.empty()) return;
    // A model whose offered save failed stays open rather than be dropped.
    if (!OfferToSave(wb)) return;
    wb.projectFilePath = path;
    ClearHistory(wb);
    LoadProject(wb);
    LoadViewColours(wb);
    // A design read from its file is seen whole first.
    BuildAircraft(wb);
    FrameAircraft(wb);
    UpdateRecent(wb, wb.projectFilePath);
}

bool SaveProjectAs(Workbench& wb, std::string path) {
    path = trim(path);
    if (path.empty()) return false;
    if (fs::path(path).filename().string().find('.') == std::string::npos) path += ".MDL";
    const std::string previous = wb.projectFilePath;
    wb.projectFilePath = path;
    const bool wasFilled = wb.sheet.text(F_Main::T_profils) == "1";
    if (!wasFilled) wb.sheet.set(F_Main::T_profils, "1");
    const bool saved = SaveProject(wb);
    if (!wasFilled) wb.sheet.set(F_Main::T_profils, "0");
    if (!saved) {
        // The model stays tied to the file it came from.
        wb.projectFilePath = previous;
        return false;
    }
    wb.sheet.set(F_3D::T_PROJET, wb.projectFilePath);
    RefreshTitle(wb);
    UpdateRecent(wb, wb.projectFilePath);
    return true;
}

bool SaveCurrentProject(Workbench& wb) {
    if (wb.projectFilePath.empty()) return false;
    const bool saved = SaveProject(wb);
    RefreshTitle(wb);
    return saved;
}

void RefreshTitle(Workbench& wb) {
    wb.sheet.set(F_Main::Caption, std::string("TARVOKIN ") + kVersion + wb.sheet.text(F_3D::T_NOM_Modele));
}

void UpdateRecent(Workbench& wb, const std::string& path) {
    if (path.empty()) return;
    auto& list = wb.settings.recent;
    std::array<std::string, 6> next;
    next[0] = path;
    size_t n = 1;
    for (const std::string& p : list) {
        if (n >= next.size()) break;
        if (p.empty() || p == path) continue;
        next[n++] = p;
    }
    list = next;
    ProfileDocument doc = ProfileDocument::load(wb.settingsFilePath());
    for (size_t i = 0; i < list.size(); ++i) doc.set("Recent", std::to_string(i), list[i]);
    doc.save(wb.settingsFilePath());
    showRecentMenu(wb);
}

void RecentClicked(Workbench& wb, int index) {
    if (index < 0 || index >= 6) return;
    const std::string entry = wb.settings.recent[static_cast<size_t>(index)];
    // A model that could not be saved stays open rather than be dropped.
    if (wb.settings.saveOnExit && upperCase(wb.projectFilePath).find(".MDL") != std::string::npos &&
        !SaveProject(wb)) {
        return;
    }
    std::error_code ec;
    if (entry.empty() || !fs::exists(entry, ec)) return;
    if (!OfferToSave(wb)) return;
    wb.projectFilePath = entry;
    ClearHistory(wb);
    LoadProject(wb);
    LoadViewColours(wb);
    // A design read from its file is seen whole first.
    BuildAircraft(wb);
    FrameAircraft(wb);
}

void TogglePanel(Workbench& wb, int button) {
    const bool wasOpen = wb.isOpen(button);
    if (!wasOpen && (button == button::Wing || button == button::Fuselage || button == button::Stab)) {
        // The three design panels share one place of the screen.
        for (int other : {button::Wing, button::Fuselage, button::Stab}) {
            if (other != button) wb.setOpen(other, false);
        }
    }
    wb.setOpen(button, !wasOpen);
    if (!wasOpen && button == button::Profils) wb.sheet.set(F_Main::T_profils, "1");
    if (!wasOpen && button == button::Wing) loadWingOutline(wb, OutlineWindow::F_Main);
    if (!wasOpen) PanelOpened(wb, button);
    else PanelClosed(wb, button);
}

void PanelClosed(Workbench& wb, int button) {
    auto it = wb.panelClosing.find(button);
    if (it != wb.panelClosing.end() && it->second) runGuarded(wb, [&] { it->second(wb); });
}

void PanelOpened(Workbench& wb, int button) {
    auto opening = wb.panelOpening.find(button);
    if (opening != wb.panelOpening.end() && opening->second) runGuarded(wb, [&] { opening->second(wb); });
    // An analysis panel shows fresh figures as it opens.
    auto it = wb.panelRefresh.find(button);
    if (it != wb.panelRefresh.end() && it->second) runGuarded(wb, [&] { it->second(wb); });
}

void CloseAllPanels(Workbench& wb) {
    for (int b : {button::Motorisation, button::Allongement, button::Servos, button::Base, button::Performances,
                  button::Wing, button::Stab, button::Reglages, button::Fuselage}) {
        if (wb.isOpen(b)) PanelClosed(wb, b);
        wb.setOpen(b, false);
    }
}

void SetRunLanguage(Workbench& wb, const std::string& code) {
    wb.settings.languageCode = code;
    wb.languageFilePath = languageFile(wb.home(), code).string();
    // The texts the calculations write: the design window's summary and the
    // NACA generator's input captions (the windows draw the plans' words
    // again themselves). The analysis windows' series take their new names
    // with the next recalculation, as those windows take their captions when
    // next activated: redrawing every chart now would double the switch's time.
    BuildSummary(wb.sheet, code);
    NacaCaptions(wb);
}

void ChangeLanguage(Workbench& wb, const std::string& code) {
    std::string reason;
    if (!WriteProfileString("Langue", "Langue", code, wb.settingsFilePath(), &reason))
        ReportWriteFailure(wb, wb.settingsFilePath(), reason);
    SetRunLanguage(wb, code);
}

bool Quit(Workbench& wb) {
    bool saved = true;
    runGuarded(wb, [&] { saved = OfferToSave(wb); });
    if (saved && wb.settings.saveOnExit && !wb.projectFilePath.empty() &&
        wb.sheet.text(F_3D::T_NOM_Modele) != kUnknownModel) {
        saved = false;
        runGuarded(wb, [&] { saved = SaveProject(wb); });
    }
    WriteProfileString("Projet", "MDL", wb.projectFilePath, wb.settingsFilePath());
    std::string reason;
    if (!wb.catalogue.write(wb.catalogueFilePath(), &reason)) ReportWriteFailure(wb, wb.catalogueFilePath(), reason);
    return saved;
}

}  // namespace tarvokin

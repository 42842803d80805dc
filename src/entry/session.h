// Start-up, the project commands (open, save, recent files), panel toggles and
// quit: what the main window's menus and toolbar do, without any widget.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

struct StartupResult {
    bool stop = false;    // the program must end (unknown airfoil of a recalled project)
    std::string message;  // what to tell the user first, empty when nothing
};

// Settings, catalogue, recall of the last project (when [Recent] Recall says
// so), the recent-files menu, and the check of the recalled wing airfoil.
StartupResult StartUp(Workbench& wb);

// Reads the settings and the catalogue and fills the airfoil lists (the first
// part of the start-up, also used by the command-line program).
void ReadSettingsAndCatalogue(Workbench& wb);

// The message naming the airfoils of a project that the catalogue lacks, in
// the language of the code ("0".."2"; empty for any other code).
std::string UnknownAirfoilMessage(const Workbench& wb);

// True when the wing airfoil of the loaded project is in the catalogue.
bool WingAirfoilKnown(const Workbench& wb);

// Before another project takes the place of this one (open, recent file,
// quit): when the entries since the last save are not in the file and the
// settings do not save on exit, asks ("[#20] ") and saves on Yes. False
// when that save failed (the user has been told): the model must stay.
bool OfferToSave(Workbench& wb);

// Open: the file becomes the project path, it is loaded and listed in the
// recent files; the history of entries starts again.
void OpenProject(Workbench& wb, const std::string& path);

// Save as: an empty name ends the command; ".MDL" is added to a name without
// "."; the Profil_<i> keys are written. Returns false when nothing was saved.
bool SaveProjectAs(Workbench& wb, std::string path);

// Save to the current path (toolbar button 4). False when nothing was saved
// (no path, or the file could not be written: the user has been told).
bool SaveCurrentProject(Workbench& wb);

// Recent files: six entries, newest first, a path listed once.
void UpdateRecent(Workbench& wb, const std::string& path);
void RecentClicked(Workbench& wb, int index);

// Toolbar toggles by button position: the three design panels exclude each other.
void TogglePanel(Workbench& wb, int button);

// What a panel does as it opens: an analysis window (performance, aspect
// ratio, motor calculation, motorisation, servos) computes its figures
// through its registered refresh.
void PanelOpened(Workbench& wb, int button);
// A panel closed: what it leaves behind is cleared (its closing step).
void PanelClosed(Workbench& wb, int button);
void CloseAllPanels(Workbench& wb);

// Language menu: code "0".."3", kept in the settings, shown at once.
void ChangeLanguage(Workbench& wb, const std::string& code);
// The same for this run only (the command line's --lang).
void SetRunLanguage(Workbench& wb, const std::string& code);

// The close request: save when so set, remember the project, write the
// catalogue back. False when the project had to be saved and could not be:
// the window then stays open so the modeller can save it elsewhere.
bool Quit(Workbench& wb);

// "TARVOKIN 3.1 " + model name.
void RefreshTitle(Workbench& wb);

}  // namespace tarvokin

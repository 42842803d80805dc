// The project file (.MDL): one model, read into the cells of the design panels
// and written back from them, key by key, in a fixed table order.
#pragma once

#include <string_view>

namespace tarvokin {

class Workbench;

// Reads wb.projectFilePath into the panels, then recalculates. A non-numeric
// value in a numeric key raises the run-time error (RunError) with the cells
// holding what was read so far.
void LoadProject(Workbench& wb);

// Writes every key from the panels to wb.projectFilePath (written beside,
// then replaced). Profil_0..2 only when F_Main.T_profils is 1. A file that
// cannot be written is reported through wb.showMessage and gives false; the
// file on disk is then the one the user had.
bool SaveProject(Workbench& wb);

// Writes one key of wb.projectFilePath at once, for the choices the program
// keeps as they are made; a failure is told through wb.showMessage as the
// save's is. False when the key could not be written.
bool WriteProjectKey(Workbench& wb, std::string_view section, std::string_view key, std::string_view value);

}  // namespace tarvokin

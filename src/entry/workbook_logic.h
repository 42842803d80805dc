// The spreadsheet commands of the main window: export (toolbar button 33),
// import (File menu), and the models' workbook of the settings menu.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

// Writes the open design as a workbook. Throws RunError when it cannot.
void ExportWorkbookCommand(Workbench& wb, const std::string& file);

// Brings a workbook's values into the design and recalculates as a load
// does; like a project opened, the history starts again. A workbook that is not ours, or damaged, throws RunError before
// any field changes.
void ImportWorkbookCommand(Workbench& wb, const std::string& file);

void installWorkbookLogic(Workbench& wb);

}  // namespace tarvokin

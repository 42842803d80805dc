// The new-model wizard (F_WIZZARD) and the unit converter (F_CONVERT), and
// the small commands of the main window around them.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

// "Valider": the new project written in MODELES from the wizard's figures,
// then opened with a fresh history. Returns its path. A name the file system
// refuses or a MODELES that cannot be written throws RunError before any
// field changes.
std::string CreateNewModel(Workbench& wb);

// The converter's result from its value, quantity and units.
void UpdateConversion(Workbench& wb);

void installWizardLogic(Workbench& wb);

}  // namespace tarvokin

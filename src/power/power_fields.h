// What the fields of the power windows do when they change, and the
// refreshes those windows run when they open.
#pragma once

#include "project/cells.h"

namespace tarvokin {

class Workbench;

// The change step of a field of F_SERVOS (Calc_Servos). False for any other cell.
bool PowerFieldChange(Workbench& wb, Cell c);

// The refresh of toolbar button 21 (servos).
void registerPowerPanels(Workbench& wb);

}  // namespace tarvokin

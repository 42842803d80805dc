// What the fields of the power windows do when they change, and the
// refreshes those windows run when they open.
#pragma once

#include "core/cells.h"

namespace tarvokin {

class Workbench;

// The change step of a field of F_CALC_MOT (CALC08), F_SERVOS (Calc_Servos),
// F_MOTORISATIONS (the motor choice, its filter, its figures) and of the
// design window's battery, motor and propeller fields (MajMotorisation, and
// the motorisation window's figures while it is open). False for any other cell.
bool PowerFieldChange(Workbench& wb, Cell c);

// The refreshes of toolbar buttons 19 (motor calculation and the design
// window's motor tab), 20 (motorisation window) and 21 (servos).
void registerPowerPanels(Workbench& wb);

}  // namespace tarvokin

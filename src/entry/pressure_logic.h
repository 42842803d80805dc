// F_AERO, the pressure distribution window: every control's change runs the
// calculation anew while the window is open.
#pragma once

#include "airfoils/pressure_run.h"

namespace tarvokin {

class Workbench;

// The window's airfoil when none is chosen yet (the wing's, else the first
// of the catalogue) and its iterations from the settings.
void PreparePressureWindow(Workbench& wb);

// Calc_Pressure with the window's progress and the events served, one run at
// a time: a change made while XFOIL runs is kept and computed once the run
// is over, never in a second overlapping run. Nothing while the window is closed.
void RunPressure(Workbench& wb);

void installPressureLogic(Workbench& wb);

}  // namespace tarvokin

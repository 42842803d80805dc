// The controls of the power windows that hold no cell: a motor taken from the
// brand tree or from the grid of candidates of the motor calculation.
#pragma once

namespace tarvokin {

class Workbench;

void installPowerLogic(Workbench& wb);

}  // namespace tarvokin

// F_TEST_POL, the interpolation window: an airfoil's six polars and the drag
// the lookup gives between them at the chosen Reynolds number and Cz.
#pragma once

namespace tarvokin {

class Workbench;

// T_Cx from the window's Re and Cz over the polars read.
void RefreshInterpolation(Workbench& wb);

void installInterpolationLogic(Workbench& wb);

}  // namespace tarvokin

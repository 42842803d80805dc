// The master recalculation: brings every derived cell of the design up to date.
#pragma once

namespace tarvokin {

class Workbench;

// Recomputes all derived cells from the current inputs, in a fixed order, then
// refreshes the open analysis panels and rebuilds the summary. A value that
// cannot be computed ends it with RunError, the cells keeping what was written.
void RecalcAll(Workbench& wb);

// Wing and stabiliser incidences, CG range and Cz at both points.
void Incidence(Workbench& wb);

}  // namespace tarvokin

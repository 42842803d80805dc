// The global geometry chart (F_GEO_1, "Vue 2D"): the whole aircraft seen from
// above in millimetres, to scale, with the neutral points and the range of
// the centre of gravity marked across it. It is the report's chart of the
// whole model as well.
#pragma once

#include "views/plan.h"

namespace tarvokin {

class Workbench;

inline constexpr const char* kGlobalChartTitle = "Vue 2D";

// The view from above (wing, stabiliser, fin, fuselage through its frame
// markers) and, across the fuselage, the wing's and the model's neutral
// points and the forward and aft CG limits. A mark whose field holds no
// figure is left out.
Plan GlobalGeometryChart(const Workbench& wb);

}  // namespace tarvokin

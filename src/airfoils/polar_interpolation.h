// What the interpolation window shows: the six polars of one airfoil, the
// drag each gives at the chosen lift coefficient, and the drag the design
// calculations would use at the chosen Reynolds number, so that the rule of
// the lookup (linear in 1/Re between the two polars around Re) can be seen.
#pragma once

#include <array>
#include <string>

#include "core/chart_data.h"
#include "core/polar_store.h"

namespace tarvokin {

class Workbench;

// Reads the six polars of catalogue airfoil `airfoil` into slot 0 of
// wb.testPolars, computing a missing one with XFOIL as the airfoil window
// does (the window's progress and Cancel). Returns how many were read.
int ReadTestPolars(Workbench& wb, const std::string& airfoil);

struct InterpolationView {
    std::array<double, 6> cxAtCz{};  // each polar's Cx at Cz (Get_Cx at its own Re)
    double cx = 0.0;                 // Get_Cx at Re, Cz
    // Column heads " Re " + value, and the grid rows: Cx at Cz by polar.
    std::array<std::string, 6> heads;
    ChartData chart;                 // Cz against Cx: the checked polars and the answer
};

// shown[i]: the polar of index i is drawn. cxMax, czMax: the chart's upper
// limits (none when 0 or less).
InterpolationView interpolationOf(const PolarStore& store, double Re, double Cz, const std::array<bool, 6>& shown,
                                  double cxMax, double czMax);

}  // namespace tarvokin

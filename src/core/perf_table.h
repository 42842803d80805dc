// The operating points of the complete model: six tables (three airfoils at
// two masses) that the performance sweep fills and the aspect-ratio, power and
// chart code read.
#pragma once

#include <array>
#include <vector>

#include "core/chart_data.h"

namespace tarvokin {

struct PerfPoint {
    double CzProfil = 0, CzAvion = 0, ReAile = 0, CxProfil = 0, CxInduit = 0, ReFuselage = 0, CxFuselage = 0,
           ReStab = 0, CxStab = 0, CzStab = 0, CxInduitStab = 0, CxTotal = 0, V = 0, VKmh = 0, Vz = 0, Finesse = 0,
           PuissanceAero = 0, Trainee = 0;
    // Polar points of the airfoil and two spare values, carried over unchanged
    // from the previous contents of the same slot.
    double PolCz = 0, PolCx = 0, Spare1 = 0, Spare2 = 0;
};

using PerfTableT = std::vector<PerfPoint>;

// What the two performance windows draw, kept as plain data for the chart
// adapter, the report and the command-line program.
struct PerformanceCharts {
    // F_GEO_3.MSChart1(0..3): sink rate, glide ratio and Cz against speed, and
    // the airfoil polars.
    std::array<ChartData, 4> speedPolar;
    // F_GEO_5: glide ratio and aerodynamic power against Cz at the imposed speed.
    std::array<ChartData, 2> constantReynolds;
    // Whether the read-out column of each airfoil (Text6..Text9(i)) is shown.
    std::array<bool, 3> readoutShown{true, true, true};
};

// Slot = airfoil index + 3 * mass index.
struct PerformanceState {
    std::array<PerfTableT, 6> PerfTable;
    std::array<PerfTableT, 6> PerfTableLisse;  // the smoothed curves that are plotted and read by the cursor
    double CzStabMin = 9999, CzStabMax = -9999;
    // The same model at the speed imposed in F_GEO_5, by slot.
    std::array<PerfTableT, 6> ReConstant;
    bool constantReynoldsOpen = false;  // F_GEO_5 is shown and follows each refresh
    PerformanceCharts charts;
};

}  // namespace tarvokin

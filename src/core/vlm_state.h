// What the span-loading panel keeps between refreshes: the tables of both
// vortex-lattice solvers and the panel's two charts.
#pragma once

#include <array>
#include <vector>

#include "core/chart_data.h"

namespace tarvokin {

struct VlmRow {
    double y = 0, value = 0;
};

// One station of the strips solver.
struct StripRow {
    double y = 0;        // lateral position, m (left negative)
    double z = 0;        // height, m
    double chord = 0;    // m
    double alpha = 0;    // incidence, degrees
    double speed = 0;    // local speed, m/s
    double gamma = 0;    // circulation, m²/s
    double lift = 0;     // N/m
    double ellipse = 0;  // elliptic lift of the same total, N/m
    double cl = 0;
    double shear = 0;    // N
    double moment = 0;   // N·m
};

// Results of both solvers and the charts of the panel.
struct VlmState {
    std::vector<VlmRow> VlmCl, VlmGamma, VlmEllipse;  // 40 rows each when CalcVLM gave a result
    double halfSpanMm = 0;                            // of the wing CalcVLM ran on
    std::vector<StripRow> strips;                     // VLM_Strips, left tip to right tip
    double stripsHalfSpan = 0;                        // lateral, m
    // The strips' loading scaled onto CalcVLM's span and values, for the charts.
    std::vector<VlmRow> scaledLift, scaledCl;
    std::array<ChartData, 2> charts;  // MSChart1(0): loadings, MSChart1(1): local Cl
};

}  // namespace tarvokin

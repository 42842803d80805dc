// What the aspect-ratio panel keeps between its refreshes: the sweeps it
// ran and the five charts drawn from them.
#pragma once

#include <array>
#include <cmath>
#include <vector>

#include "core/chart_data.h"

namespace tarvokin {

// Curves of the panel: airfoil index + 3 * mass index (0 mini, 1 maxi), the
// numbering of the performance tables.
inline constexpr int kAspectCurves = 6;

// One row of a sweep.
struct AllongementPoint {
    double A = 0;         // aspect ratio
    double Corde = 0;     // mean chord, mm
    double CzProfil = 0;  // section lift coefficient
    double VMini = 0, ReMini = 0;
    std::array<double, 3> CxMini{};  // profile drag per airfoil
    double CxInduitMini = 0;
    std::array<double, 3> FinesseMini{};
    // Carried values of the row: the flight Cz, the first airfoil's profile
    // drag and the section Cz.
    double CzMini = 0, CxMini0 = 0, CzMini0 = 0;
    double VMaxi = 0, ReMaxi = 0;
    std::array<double, 3> CxMaxi{};
    double CxInduitMaxi = 0;
    std::array<double, 3> FinesseMaxi{};

    double finesse(int curve) const { return curve < 3 ? FinesseMini[curve] : FinesseMaxi[curve - 3]; }
};

// One row of the flight-Cz sweep: speeds in km/h, and per curve the best glide
// ratio over the aspect-ratio sweep and the aspect ratio where it occurs (NaN
// when no row of the sweep could be computed).
struct CzPoint {
    double Cz = 0, VMini = 0, VMaxi = 0;
    std::array<double, kAspectCurves> Finesse{};
    std::array<double, kAspectCurves> A{};
    // VMini (m/s) of the row each best was taken from, for the trace.
    std::array<double, kAspectCurves> SourceVMini{};
    // The first curve's best lies past A = 30: the optimum is the end of the
    // sweep rather than a true optimum, and the row does not count for the
    // maximum marked on the optimal aspect-ratio chart.
    bool unbounded = false;
};

// The panel's results: the five charts MSChart1(0..4) and the tables they
// were drawn from. The window draws the charts; the report saves them.
struct AspectRatioState {
    std::array<ChartData, 5> charts;
    std::vector<CzPoint> czRows;                // flight-Cz sweep, 10 rows
    std::vector<AllongementPoint> chosenRows;   // glide ratio at B10 by flight Cz (CzMini)
    std::vector<AllongementPoint> turnRows;     // turn glide ratio by aspect ratio
    double maxSpeed = 0;                        // largest speed of the sweep, km/h
    bool analytic = false;                      // the variant that ran was V2.23
};

}  // namespace tarvokin

// Reading what XFOIL leaves of a pressure run: the distribution along the
// chord (PRESSURE.cp) and the accumulated polar of the points (PRESSURE.TXT).
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/airfoil_windows_state.h"
#include "core/chart_data.h"

namespace tarvokin {

// The boundary-layer quantities of the chart, by position in its list: the
// chart's title and the quantity's key.
struct PressureQuantity {
    const char* title;
    const char* key;
};
extern const std::array<PressureQuantity, 10> kPressureQuantities;

// An inviscid run writes CPWR: a header, then "x Cp" a line. A viscous run
// writes DUMP, whose columns are s, x, y, Ue/Vinf, Dstar, Theta, Cf, H, H*,
// P, m, K on the airfoil (tau and Di are named in its header but not
// written) and only the first eight in the wake; it has no Cp column, so Cp
// is 1 - (Ue/Vinf)^2. The wake is not on the chord and is left out.
// The file's text by the reading rules: the first line is a header; empty
// lines, lines starting with "#" and lines with "***" (a field XFOIL could
// not print) are skipped; fields are split at blanks; "NaN" ends the read,
// keeping the rows before it. `Re` (the run's Reynolds number) gives the
// momentum-thickness Reynolds number of a viscous file.
PressureDistribution readPressureDistribution(std::string_view text, double Re);

// The point of the accumulated polar: the Reynolds number of its header
// ("Re =" then the mantissa up to "e", times 1e6) and its last row.
struct PressurePoint {
    bool hasRe = false;
    double Re = 0.0;
    bool hasRow = false;
    double alpha = 0, cl = 0, cd = 0, cdp = 0, cm = 0;
};
PressurePoint readPressurePolar(std::string_view text);

}  // namespace tarvokin

// The keystroke script of a pressure distribution: XFOIL loads the outline,
// computes one inviscid point, optionally the viscous one, accumulates the
// points of a sequence in a polar file and writes the distribution along the
// chord of the last point.
#pragma once

#include <string>
#include <vector>

namespace tarvokin {

constexpr const char* kPressureCommandFile = "PRESSURE.CMD";
constexpr const char* kPressureKeyFile = "Pressure.Key";
constexpr const char* kPressurePolarFile = "PRESSURE.TXT";
constexpr const char* kPressureCpFile = "PRESSURE.cp";

// A sequence longer than this is cut: each point is a solver run of its own.
constexpr int kMaxSequencePoints = 200;

struct PressureRequest {
    std::string outline;              // the .DAT XFOIL loads
    std::string Re;                   // the inviscid line's Reynolds number, trimmed
    std::string viscousRe;            // the viscous line's
    bool viscous = false;
    int reType = 1;                   // XFOIL's TYPE, 1 to 3
    int iterations = 100;
    bool byCl = false;                // the operating parameter is CL, not the incidence
    std::string point;                // the value of the operating point
    double cpMin = 0.0;               // the minimum Cp of the run before
    std::vector<std::string> sequence;  // values of the points after PACC
    std::string polarFile = kPressurePolarFile;  // as the script names them
    std::string cpFile = kPressureCpFile;
};

// The number of the "Cpmi" line: minus the integer part of the minimum Cp.
// XFOIL's Cp axis runs up to 1, and an axis minimum of exactly 1 makes it
// divide by zero in the plot scaling and die of a floating-point trap; the
// line only sets the scale of a plot nobody sees, so 1 is sent as -2, one
// unit below the minimum Cp that gave it (a minimum between -1 and -2).
std::string cpmiValue(double cpMin);

// The points of a sequence from `first` to `last` by `step` (the sign of the
// step follows the direction), at most kMaxSequencePoints; values as text
// with the decimals of the start and the step, trailing zeros cut.
std::vector<std::string> sequencePoints(double first, double last, double step);

// The text of Pressure.Key, lines ending with "\n".
std::string pressureKeyText(const PressureRequest& r);

}  // namespace tarvokin

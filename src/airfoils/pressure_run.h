// Calc_Pressure: the pressure distribution of the airfoil of F_AERO at the
// window's operating point or sequence, computed by XFOIL and read back into
// the window's result fields and charts.
#pragma once

#include <filesystem>
#include <string>

#include "airfoils/pressure_script.h"
#include "airfoils/solver_process.h"

namespace tarvokin {

class Workbench;

struct PressureRun {
    bool result = false;  // a distribution was read
    bool row = false;     // the accumulated polar had a row (a sequence)
    std::string reason;   // one line for the user: why there is no result, or what was computed
};

// The outline a pressure run loads: the catalogue row's path, or when that
// file doesn't exist the DATA folder of the program's folder plus the name.
std::filesystem::path pressureOutline(const Workbench& wb, const std::string& airfoil);

// The request the window's fields make; false with a one-line reason for a
// field that can't be given to XFOIL (a Reynolds number of 0 or text...).
bool pressureRequest(const Workbench& wb, PressureRequest& r, std::string& reason);

// The four files of a run in the program's folder, removed as far as they exist.
void removePressureFiles(const std::filesystem::path& home);

// One run: old files removed, script written and run through the XFOIL
// runner, PRESSURE.cp and PRESSURE.TXT read into F_AERO's fields and
// wb.pressure.shown, all files removed. A run without result empties the
// charts and leaves the fields as they were; F_AERO.Status tells why.
PressureRun Calc_Pressure(Workbench& wb, const WaitHooks& hooks = {});

}  // namespace tarvokin

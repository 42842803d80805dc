// Polars computed by the external solver XFOIL. The program has no solver of
// its own: it writes a keystroke script, starts XFOIL on it through a command
// file, waits, and reads the polar file XFOIL saved. The script is the whole
// dialogue with the solver; its blank lines are the keystrokes that leave
// XFOIL's sub-menus.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "airfoils/solver_process.h"

namespace tarvokin {

class Workbench;

constexpr const char* kXfoilCommandFile = "START_XFOIL.CMD";
// Beside the scripts while a run goes on: the program's pid and the key file,
// so that the next start can tell the scripts of a dead run.
constexpr const char* kXfoilRunMarker = "START_XFOIL.RUN";

// XFOIL keeps file names in 64 characters and silently cuts longer ones.
constexpr size_t kXfoilMaxFileName = 64;

// One solver run, with everything settled.
struct XfoilJob {
    std::string xfoilPath;          // [XFOIL] path, the full path of the program
    std::filesystem::path home;     // the program's folder: the script files go there
    std::string name;               // the airfoil's name
    std::string Re;                 // the Reynolds number as a plain integer
    std::string datPath;            // the outline XFOIL loads
    std::string polarPath;          // the polar file XFOIL saves
    int iterations = 100;           // [XFOIL] iterations
    std::string alphaFirst = "0";   // [XFOIL] CL_INCID_DE
    std::string alphaLast = "1.25"; // [XFOIL] CL_INCID_A
    std::string alphaStep = "0.05"; // [XFOIL] CL_INCID_PAS
    bool smooth = true;             // [XFOIL] smooth
    int timeoutSeconds = 120;       // [XFOIL] timeout; 0 or less: no limit

    // "<name>_<Re>", the run's name; the keystroke script is "<name>_<Re>.KEY".
    std::string runName() const { return name + "_" + Re; }
    std::string keyFile() const { return runName() + ".KEY"; }
};

// The text of START_XFOIL.CMD: "cd <folder>" when the path has a folder, then
// the start line, "<exe> < <home>/<keyFile>" when the folder is not the
// program's own and the program's folder is not under "Program Files", else
// "<exe>  < <keyFile>" (two blanks). Lines end with "\n".
std::string xfoilCommandText(const std::string& xfoilPath, const std::string& home, const std::string& keyFile);

// The text of <name>_<Re>.KEY: 39 lines, 38 when smooth is off.
std::string xfoilKeyText(const XfoilJob& job);

// Any script run of XFOIL: the polar batch and the pressure distribution go
// through the same steps (the virtual display, a writable working folder,
// file names XFOIL can hold, the command file, the wait with its hooks and
// time limit, the removal of the script files).
struct XfoilScript {
    std::string xfoilPath;             // the full path of the program
    std::filesystem::path home;        // the program's folder: the script files go there
    std::string commandFile;           // START_XFOIL.CMD, PRESSURE.CMD
    std::string keyFile;               // the keystroke script's name in `home`
    std::vector<std::string> outlines; // outline files the script loads: checked first
    // Paths the script names; each is given to `keyText` in a form of 64
    // characters at most (a long one through a short link to its folder).
    std::vector<std::string> files;
    std::function<std::string(const std::vector<std::string>& files)> keyText;
    // Files of the run's results: removed when the solver is stopped or dies,
    // as a result cut short is no result.
    std::vector<std::filesystem::path> results;
    int timeoutSeconds = 120;
    // Progress between waits: the text and how far, asked once a second.
    std::function<std::pair<std::string, double>()> progress;
};

// Runs the script; "" when XFOIL ran to its end, else one line for the user.
// What XFOIL saved is the caller's to check and read.
std::string runXfoilScript(const XfoilScript& script, const WaitHooks& hooks = {});

// One run, from the removal of an old polar file to the removal of the script
// files. The solver runs on the process's virtual display, in steps of one
// second with the hooks between them, and is stopped by Cancel or the time
// limit. Returns "" when XFOIL ran to its end and saved the polar file, else
// one line for the user; a run that was stopped or crashed leaves no polar.
std::string runXfoil(const XfoilJob& job, const WaitHooks& hooks = {});

// ---- The polar batch ---------------------------------------------------------

// How many solver runs the batch keeps going at once: one a core of the
// machine, at least two (XFOIL computes on one core; the rest of its time
// goes to its window on the display, so two share a single core well).
int polarBatchWidth();

// Runs the jobs, `width` at a time, and returns one reason per job in the
// jobs' order ("" when XFOIL ran to its end and saved the polar file). Each
// run has a folder of its own in the process's private folder, with its own
// START_XFOIL.CMD, key file and marker, and XFOIL works there, so that the
// scratch files of two runs never meet; all share the one virtual display.
// The wait is one loop over every run with the hooks between steps; Cancel
// stops every run under way and those not started yet never start. Each
// polar file is removed before its run, and a run stopped or crashed leaves
// none. Polars another program is computing are refused with a reason and
// left alone.
std::vector<std::string> runXfoilBatch(const std::vector<XfoilJob>& jobs, int width, const WaitHooks& hooks = {});

// True while another program (or another run of this one) computes the polar
// file: its contents are then incomplete and not to be read or replaced.
// `pid` gets the program's pid when it is known.
bool polarBeingComputed(const std::filesystem::path& polar, long* pid = nullptr);

// Removes the scripts a run left in the program's folder when its program
// was killed hard: only those whose marker names a program no longer running.
void removeStaleXfoilRun(const std::filesystem::path& home);

// ---- Calc_Polar --------------------------------------------------------------

// Reads the polar file of a run into the store; the caller binds the slot.
using PolarReader = std::function<bool(const std::filesystem::path& polar)>;

struct PolarRun {
    bool read = false;   // the reader's answer; only a slot (0, 1, 2) is read
    bool saved = false;  // XFOIL ran to its end and saved the polar file
    std::filesystem::path polar;
    std::string reason;  // one line for the user when no polar was made, or one without a point
    // The run gave a polar with at least one converged point.
    bool computed() const { return saved && reason.empty(); }
};

// Computes one polar. `mode` tells where the airfoil comes from:
//  0, 1, 2  the airfoil of that slot (the text of F_PROFILS CB_1, its catalogue
//           row's outline), Re or 220000; a Re of value 0 does nothing;
//           polar POLAIRES/<name>_<Re>.POL, read with `readPolar`;
//  99       the NACA generator: `name` trimmed, outline DATA/<name>.DAT, polar
//           POLAIRES/<name>_<Re>.POL;
//  100, 110 the database window and direct calls: `name`, `datPath`, `polarPath`.
// Relative paths are taken from the program's folder. Modes 99 to 110 are no
// slot: their polar is not read, and callers work with the file itself.
PolarRun Calc_Polar(Workbench& wb, int mode, std::optional<std::string> Re = std::nullopt,
                    const std::string& polarPath = "", const std::string& datPath = "",
                    const std::string& name = "", const WaitHooks& hooks = {},
                    const PolarReader& readPolar = {});

// The missing polars of a slot's airfoil at standard Reynolds numbers, all
// in one batch (polarBatchWidth() at a time); the files are made, the store
// is the caller's to fill, in its own order. One PolarRun per Reynolds
// number, in the order given.
std::vector<PolarRun> Calc_Polars(Workbench& wb, int slot, const std::vector<int>& reynolds,
                                  const WaitHooks& hooks = {}, int width = 0);

}  // namespace tarvokin

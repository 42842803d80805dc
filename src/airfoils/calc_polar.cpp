// Calc_Polar: settles the airfoil, outline, Reynolds number and polar file of
// a run by where the call comes from, runs XFOIL, and reads the polar.
#include <cmath>

#include "core/file_spelling.h"
#include "airfoils/xfoil_runner.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "airfoils/polar_lookup.h"
#include "core/progress.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

constexpr double kDefaultReynolds = 220000;

// A path of the catalogue or of a caller as XFOIL must get it: XFOIL works in
// its own folder, so a relative path is completed from the program's folder;
// catalogue rows added by the user hold upper-case paths, so the spelling that
// exists on disk is taken.
std::string forSolver(const fs::path& home, const std::string& path, bool mustExist) {
    if (path.empty()) return path;
    fs::path p = path;
    if (p.is_relative()) p = home / p;
    return (mustExist ? existingSpelling(p) : p).string();
}

// The run of an airfoil at a Reynolds number with the settings of the folder.
XfoilJob jobOf(const Workbench& wb, const std::string& airfoil, const std::string& reText, const std::string& dat,
               const std::string& polar) {
    const fs::path& home = wb.home();
    XfoilJob job;
    job.xfoilPath = wb.settings.xfoilPath;
    job.home = home;
    job.name = airfoil;
    job.Re = reText;
    job.datPath = forSolver(home, dat, true);
    job.polarPath = forSolver(home, polar, false);
    job.iterations = wb.settings.iterations;
    job.alphaFirst = wb.settings.clIncidDe;
    job.alphaLast = wb.settings.clIncidA;
    job.alphaStep = wb.settings.clIncidPas;
    job.smooth = wb.settings.smooth;
    job.timeoutSeconds = wb.settings.xfoilTimeout;
    return job;
}

// The airfoil of a slot and its outline, as the catalogue names them.
void slotAirfoil(const Workbench& wb, int slot, std::string& airfoil, std::string& dat) {
    airfoil = wb.sheet.text(F_PROFILS::CB_1[slot]);
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (row != kNotFound) {
        dat = wb.catalogue.rows[row].Path;
        // A generic name stands for its outline file: the polars bear that
        // file's name, which is also the one the selection looks for.
        if (airfoil.find("Générique") != std::string::npos) airfoil = fs::path(dat).stem().string();
    }
}

}  // namespace

PolarRun Calc_Polar(Workbench& wb, int mode, std::optional<std::string> Re, const std::string& polarPath,
                    const std::string& datPath, const std::string& name, const WaitHooks& hooks,
                    const PolarReader& readPolar) {
    PolarRun run;
    const bool slot = mode >= 0 && mode <= 2;

    double re = Re ? leadingNumber(*Re) : 0.0;
    std::string airfoil, dat, polar;
    if (slot) {
        if (!Re) re = kDefaultReynolds;
        if (re == 0.0) return run;
        slotAirfoil(wb, mode, airfoil, dat);
    } else if (mode == 99) {
        airfoil = trim(name);
        dat = "DATA/" + airfoil + ".DAT";
    } else if (mode == 100 || mode == 110) {
        airfoil = name;
        dat = datPath;
        polar = polarPath;
    } else {
        run.reason = "Aucun profil indiqué pour la polaire";
        return run;
    }
    const std::string reText = plain(std::round(re));
    if (slot || mode == 99) polar = "POLAIRES/" + airfoil + "_" + reText + ".POL";

    const XfoilJob job = jobOf(wb, airfoil, reText, dat, polar);

    run.polar = job.polarPath;
    run.reason = runXfoil(job, hooks);
    run.saved = run.reason.empty();
    // XFOIL saves a header alone when no angle converged: the file reads as
    // a polar, but the run computed nothing and the modeller must know it.
    if (run.saved && !PolarHasRows(run.polar)) {
        run.reason = "XFOIL : aucun point convergé pour Re " + reText;
        if (hooks.progress) hooks.progress->report(run.reason, 1.0);
    }
    // A failed run is read too: the reader finds no file and leaves the
    // slot's record empty, which is what the callers expect of it.
    // Except a polar another program is still writing: it is no polar yet.
    if (slot && readPolar && !polarBeingComputed(run.polar)) run.read = readPolar(run.polar);
    return run;
}

std::vector<PolarRun> Calc_Polars(Workbench& wb, int slot, const std::vector<int>& reynolds, const WaitHooks& hooks,
                                  int width) {
    std::vector<PolarRun> runs(reynolds.size());
    if (slot < 0 || slot > 2) return runs;
    std::string airfoil, dat;
    slotAirfoil(wb, slot, airfoil, dat);
    std::vector<XfoilJob> jobs;
    for (int re : reynolds) {
        const std::string reText = std::to_string(re);
        jobs.push_back(jobOf(wb, airfoil, reText, dat, "POLAIRES/" + airfoil + "_" + reText + ".POL"));
    }
    const std::vector<std::string> reasons = runXfoilBatch(jobs, width > 0 ? width : polarBatchWidth(), hooks);
    for (size_t i = 0; i < runs.size(); ++i) {
        PolarRun& run = runs[i];
        run.polar = jobs[i].polarPath;
        run.reason = reasons[i];
        run.saved = run.reason.empty();
        if (run.saved && !PolarHasRows(run.polar)) {
            run.reason = "XFOIL : aucun point convergé pour Re " + jobs[i].Re;
            if (hooks.progress) hooks.progress->report(run.reason, 1.0);
        }
    }
    return runs;
}

}  // namespace tarvokin

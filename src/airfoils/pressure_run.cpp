#include "airfoils/pressure_run.h"

#include <cmath>
#include <fstream>
#include <sstream>

#include "airfoils/outline.h"
#include "airfoils/pressure_files.h"
#include "airfoils/xfoil_runner.h"
#include "core/numbers.h"
#include "core/progress.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

std::string readAll(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// Rows accumulated in the polar so far: the points of a sequence done.
int rowsDone(const fs::path& polar) {
    std::ifstream in(polar, std::ios::binary);
    std::string line;
    bool header = true;
    int rows = 0;
    while (std::getline(in, line)) {
        if (header) header = line.find("------") == std::string::npos;
        else if (line.find_first_not_of(" \t\r") != std::string::npos) ++rows;
    }
    return rows;
}

// A positive Reynolds number of a field, as XFOIL is given it.
bool reynolds(const std::string& text, std::string& out) {
    double v = 0;
    const std::string t = trim(text);
    if (!tryNumber(t, v) || !std::isfinite(v) || v <= 0) return false;
    out = t;
    return true;
}

}  // namespace

fs::path pressureOutline(const Workbench& wb, const std::string& airfoil) {
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (row != kNotFound) {
        const fs::path p = outlinePath(wb.home(), wb.catalogue.rows[row].Path);
        std::error_code ec;
        if (fs::is_regular_file(p, ec)) return p;
    }
    return outlinePath(wb.home(), "DATA/" + airfoil);
}

bool pressureRequest(const Workbench& wb, PressureRequest& r, std::string& reason) {
    const Sheet& s = wb.sheet;
    const std::string airfoil = s.text(F_AERO::Combo5);
    if (airfoil.empty()) {
        reason = "Aucun profil choisi";
        return false;
    }
    r.outline = pressureOutline(wb, airfoil).string();
    if (!reynolds(s.text(F_AERO::T_Re), r.Re)) {
        reason = "Nombre de Reynolds invalide : \"" + s.text(F_AERO::T_Re) + "\"";
        return false;
    }
    r.viscous = s.on(F_AERO::Ch_Visc);
    r.viscousRe = r.Re;
    if (r.viscous && !reynolds(s.text(F_AERO::T_Visc), r.viscousRe)) {
        reason = "Nombre de Reynolds du calcul visqueux invalide : \"" + s.text(F_AERO::T_Visc) + "\"";
        return false;
    }
    const int type = s.listIndex(F_AERO::Type);
    r.reType = type >= 0 && type < 3 ? type + 1 : 1;
    // The window's iterations when they are a whole number above 0, else the settings'.
    double iter = 0;
    r.iterations = wb.settings.iterations;
    if (tryNumber(trim(s.text(F_AERO::Text5)), iter) && iter >= 1 && iter <= 10000 && iter == std::floor(iter))
        r.iterations = static_cast<int>(iter);
    r.byCl = s.on(F_AERO::Option1[1]);
    double v = 0;
    if (r.byCl) {
        if (!tryNumber(trim(s.text(F_AERO::T_Cld)), v) || !std::isfinite(v)) {
            reason = "Cl invalide : \"" + s.text(F_AERO::T_Cld) + "\"";
            return false;
        }
        r.point = trim(s.text(F_AERO::T_Cld));
    } else {
        if (!tryNumber(trim(s.text(F_AERO::T_Alpha)), v) || !std::isfinite(v)) {
            reason = "Incidence invalide : \"" + s.text(F_AERO::T_Alpha) + "\"";
            return false;
        }
        r.point = plain(v / 10.0);
    }
    r.cpMin = s.val(F_AERO::T_CpMin);
    r.sequence.clear();
    if (s.on(F_AERO::Check5)) {
        double first = 0, last = 0, step = 0;
        if (!tryNumber(trim(s.text(F_AERO::T_Red)), first) || !tryNumber(trim(s.text(F_AERO::Text9)), last) ||
            !tryNumber(trim(s.text(F_AERO::Text8)), step) || !std::isfinite(first) || !std::isfinite(last) ||
            !std::isfinite(step) || step == 0) {
            reason = "Séquence invalide : début, fin et pas doivent être des nombres, le pas non nul";
            return false;
        }
        r.sequence = sequencePoints(first, last, step);
    }
    return true;
}

void removePressureFiles(const fs::path& home) {
    std::error_code ec;
    for (const char* f : {kPressureCommandFile, kPressureKeyFile, kPressurePolarFile, kPressureCpFile})
        fs::remove(home / f, ec);
}

PressureRun Calc_Pressure(Workbench& wb, const WaitHooks& hooks) {
    PressureRun run;
    Sheet& s = wb.sheet;
    const fs::path home = wb.home();
    // A result of an earlier run must never be read as this one's.
    removePressureFiles(home);
    wb.pressure.shown = PressureDistribution{};

    PressureRequest r;
    std::string reason;
    const bool valid = pressureRequest(wb, r, reason);
    if (s.on(F_AERO::Check5)) s.set(F_AERO::Text4, std::to_string(r.sequence.size()));
    if (!valid) {
        run.reason = reason;
        s.set(F_AERO::Status, reason);
        return run;
    }

    const fs::path polar = home / kPressurePolarFile, cp = home / kPressureCpFile;
    XfoilScript script;
    script.xfoilPath = wb.settings.xfoilPath;
    script.home = home;
    script.commandFile = kPressureCommandFile;
    script.keyFile = kPressureKeyFile;
    script.outlines = {r.outline};
    // The results go to the program's folder, named in full: XFOIL works in
    // its own folder.
    script.files = {r.outline, polar.string(), cp.string()};
    script.keyText = [&r](const std::vector<std::string>& files) {
        PressureRequest given = r;
        given.outline = files[0];
        given.polarFile = files[1];
        given.cpFile = files[2];
        return pressureKeyText(given);
    };
    script.results = {polar, cp};
    script.timeoutSeconds = wb.settings.xfoilTimeout;
    const std::string airfoil = s.text(F_AERO::Combo5);
    const std::string what = r.byCl ? "cl " : "alfa ";
    script.progress = [&]() -> std::pair<std::string, double> {
        const int n = static_cast<int>(r.sequence.size());
        if (n == 0) return {"XFOIL " + airfoil + " : " + what + r.point, 0.0};
        const int done = std::min(rowsDone(polar), n);
        const std::string& at = r.sequence[static_cast<size_t>(std::min(done, n - 1))];
        return {"XFOIL " + airfoil + " : point " + std::to_string(std::min(done + 1, n)) + " / " +
                    std::to_string(n) + ", " + what + at,
                static_cast<double>(done) / n};
    };

    run.reason = runXfoilScript(script, hooks);
    std::error_code ec;
    if (run.reason.empty()) {
        PressurePoint point;
        if (fs::exists(polar, ec)) point = readPressurePolar(readAll(polar));
        const double re = point.hasRe && point.Re > 0 ? point.Re : leadingNumber(r.viscous ? r.viscousRe : r.Re);
        PressureDistribution d;
        if (fs::exists(cp, ec)) d = readPressureDistribution(readAll(cp), re);
        if (d.hasCp()) {
            run.result = true;
            s.setFixed(F_AERO::T_CpMax, d.cpMax, 4);
            s.setFixed(F_AERO::T_CpMin, d.cpMin, 4);
            wb.pressure.shown = std::move(d);
        }
        if (point.hasRow) {
            run.row = true;
            if (point.hasRe) s.setPlain(F_AERO::TRE, point.Re);
            s.setFixed(F_AERO::TALFA, point.alpha, 3);
            s.setFixed(F_AERO::TCL, point.cl, 4);
            s.setFixed(F_AERO::TCD, point.cd, 5);
            s.setFixed(F_AERO::TCDP, point.cdp, 5);
            s.setFixed(F_AERO::TCM, point.cm, 4);
        }
        if (!run.result) run.reason = "XFOIL n'a écrit aucune distribution de pression pour " + airfoil;
        else if (!run.row)
            run.reason = "Distribution calculée ; un point seul n'entre pas dans la polaire de XFOIL : "
                         "CL, CD et CM restent ceux du calcul précédent";
        else
            run.reason = "Distribution calculée";
    }
    if (hooks.progress) hooks.progress->report("XFOIL " + airfoil, 1.0);
    removePressureFiles(home);
    s.set(F_AERO::Status, run.reason);
    return run;
}

}  // namespace tarvokin

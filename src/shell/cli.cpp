#include "shell/cli.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "airfoils/airfoil_selection.h"
#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "entry/airfoil_choice.h"
#include "entry/entry_path.h"
#include "design/performance.h"
#include "core/profile_file.h"
#include "entry/project_io.h"
#include "shell/home.h"
#include "core/messages.h"
#include "core/progress.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "views/plan.h"
#include "views/plan_export.h"
#include "entry/window_logic.h"
#include "entry/pressure_logic.h"
#include "airfoils/pressure_files.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

const char* kUsage =
    "usage: tarvokin-cli fields PROJECT.MDL [--home DIR] [--open N]... [ENTRY]...\n"
    "       tarvokin-cli perf PROJECT.MDL [--home DIR] [--open N]... [ENTRY]...\n"
    "       tarvokin-cli polar FILE.POL [--re-index I]\n"
    "       tarvokin-cli cx PROJECT.MDL [--home DIR] --at SLOT,RE,CZ [--at SLOT,RE,CZ]...\n"
    "       tarvokin-cli compute-polar OUTLINE.DAT NAME RE [--out FILE.POL] [--home DIR]\n"
    "       tarvokin-cli pressure [--home DIR] [ENTRY]...\n"
    "       tarvokin-cli plan PROJECT.MDL [--home DIR] [--view centrage|profil|dessus|face]\n"
    "                    [ENTRY]... [--svg FILE.SVG] [--dxf FILE.DXF]\n"
    "  ENTRY, run in order as a user's at the window: --set FORM.FIELD=VALUE (typed, then Enter),\n"
    "         --click FORM.CONTROL or FORM.CONTROL(I), --undo, --redo\n";

// Solver runs report on stderr, so that stdout stays the command's answer.
class StreamProgress : public Progress {
public:
    explicit StreamProgress(std::ostream& err) : err_(err) {}
    void report(const std::string& text, double fraction) override {
        if (text != last_) err_ << text << "\n";
        last_ = text;
        (void)fraction;
    }

private:
    std::ostream& err_;
    std::string last_;
};

// Missing polars of a slot are computed by XFOIL, with no event loop to serve.
PolarComputer solverFor(Workbench& wb, StreamProgress& progress, std::ostream& err) {
    return [&wb, &progress, &err](int slot, int reynolds) {
        WaitHooks hooks;
        hooks.progress = &progress;
        const auto index = ReynoldsIndex(reynolds);
        PolarRun run = Calc_Polar(wb, slot, std::to_string(reynolds), "", "", "", hooks,
                                  [&](const fs::path& p) { return Read_Polar(wb.polars, p, slot, index); });
        if (!run.reason.empty()) err << "tarvokin-cli: " << run.reason << "\n";
        return run.read;
    };
}

// The airfoil slots of a loaded project, filled as the airfoil window fills them.
void fillSlots(Workbench& wb, std::ostream& err) {
    StreamProgress progress(err);
    const PolarComputer compute = solverFor(wb, progress, err);
    for (int slot = 0; slot < 3; ++slot) {
        if (!wb.sheet.text(F_PROFILS::CB_1[slot]).empty()) runGuarded(wb, [&] { CB_1_Click(wb, slot, compute); });
    }
}

// Home, workbench, settings and catalogue, then the project as the application
// loads it. Returns 0 when the project is loaded, else the exit status.
int loadForCommand(Workbench& wb, const std::string& projectArg, std::ostream& err) {
    ReadSettingsAndCatalogue(wb);
    std::error_code ec;
    fs::path project = fs::absolute(projectArg, ec);
    if (!fs::is_regular_file(project, ec)) {
        err << "tarvokin-cli: impossible de lire le projet " << projectArg << "\n";
        return 1;
    }
    if (ReadProfileString("Modele", "Nom", kUnknownModel, project) == kUnknownModel) {
        err << "tarvokin-cli: " << projectArg << " n'est pas un projet (pas de clé Nom dans [Modele])\n";
        return 1;
    }
    wb.projectFilePath = project.string();
    if (!runGuarded(wb, [&] { LoadProject(wb); })) return 1;
    if (!WingAirfoilKnown(wb)) {
        err << UnknownAirfoilMessage(wb) << "\n";
        return 1;
    }
    ClearHistory(wb);
    return 0;
}

struct FieldsArgs;
int applyEntries(Workbench& wb, const FieldsArgs& fa, std::ostream& err);

struct FieldsArgs {
    std::string project;
    std::optional<fs::path> home;
    std::vector<int> open;
    // The user's entries in the order given: --set, --click, --undo, --redo.
    struct Entry {
        enum Kind { Set, Click, Undo, Redo } kind;
        std::string path, value;
    };
    std::vector<Entry> entries;
};

bool parseFieldsArgs(const std::vector<std::string>& a, FieldsArgs& out, std::string& error,
                     bool projectNeeded = true) {
    for (size_t i = 1; i < a.size(); ++i) {
        const std::string& s = a[i];
        auto next = [&](std::string& v) {
            if (i + 1 >= a.size()) {
                error = s + " attend une valeur";
                return false;
            }
            v = a[++i];
            return true;
        };
        std::string v;
        if (s == "--home") {
            if (!next(v)) return false;
            out.home = fs::path(v);
        } else if (s == "--open") {
            if (!next(v)) return false;
            try {
                size_t used = 0;
                int n = std::stoi(v, &used);
                if (used != v.size()) throw std::invalid_argument(v);
                out.open.push_back(n);
            } catch (const std::exception&) {
                error = "--open attend un numéro de bouton : " + v;
                return false;
            }
        } else if (s == "--set") {
            if (!next(v)) return false;
            auto eq = v.find('=');
            if (eq == std::string::npos) {
                error = "--set attend FORM.FIELD=VALUE : " + v;
                return false;
            }
            out.entries.push_back({FieldsArgs::Entry::Set, v.substr(0, eq), v.substr(eq + 1)});
        } else if (s == "--click") {
            if (!next(v)) return false;
            Action probe;
            if (!ParseControl(v, Act::Click, probe)) {
                error = "--click attend FORM.CONTROL ou FORM.CONTROL(i) : " + v;
                return false;
            }
            out.entries.push_back({FieldsArgs::Entry::Click, v, {}});
        } else if (s == "--undo") {
            out.entries.push_back({FieldsArgs::Entry::Undo, {}, {}});
        } else if (s == "--redo") {
            out.entries.push_back({FieldsArgs::Entry::Redo, {}, {}});
        } else if (projectNeeded && out.project.empty() && !s.empty() && s[0] != '-') {
            out.project = s;
        } else {
            error = "argument inconnu : " + s;
            return false;
        }
    }
    if (projectNeeded && out.project.empty()) {
        error = "il manque le fichier projet";
        return false;
    }
    return true;
}

// The entries run as a user's at the windows, through the same handlers:
// each --set is typed into its field and Enter pressed, each --click presses
// its control, --undo and --redo walk the history. Returns 2 for an unknown
// field or control (nothing after it runs), else 0.
int applyEntries(Workbench& wb, const FieldsArgs& fa, std::ostream& err) {
    for (const FieldsArgs::Entry& e : fa.entries) {
        switch (e.kind) {
            case FieldsArgs::Entry::Set: {
                Cell c{};
                if (!findCell(e.path, c)) {
                    err << "tarvokin-cli: champ inconnu : " << e.path << "\n";
                    return 2;
                }
                runGuarded(wb, [&, c = c] { enterField(wb, c, e.value); });
                break;
            }
            case FieldsArgs::Entry::Click: {
                Action a;
                ParseControl(e.path, Act::Click, a);
                if (!wb.handlers.has(a.form, a.control, Act::Click)) {
                    err << "tarvokin-cli: commande inconnue : " << e.path << "\n";
                    return 2;
                }
                runGuarded(wb, [&] { Perform(wb, a); });
                break;
            }
            case FieldsArgs::Entry::Undo: runGuarded(wb, [&] { Undo(wb); }); break;
            case FieldsArgs::Entry::Redo: runGuarded(wb, [&] { Redo(wb); }); break;
        }
    }
    return 0;
}

bool homeFor(const std::optional<fs::path>& requested, const std::string& executable, fs::path& home,
             std::ostream& err) {
    home = userHomeFolder(requested);
    std::string error;
    if (seedHomeFolder(home, shippedDataFolder(executable), error)) return true;
    err << "tarvokin-cli: " << error << "\n";
    return false;
}

// The speed polars as CSV: one row per point of the six tables, numbers that
// read back exactly.
void printPerfTables(const Workbench& wb, std::ostream& out) {
    out << "slot,index,CzProfil,CzAvion,ReAile,CxProfil,CxInduit,ReFuselage,CxFuselage,ReStab,CxStab,CzStab,"
           "CxInduitStab,CxTotal,V,VKmh,Vz,Finesse,PuissanceAero\n";
    char buf[32];
    for (size_t slot = 0; slot < wb.perf.PerfTable.size(); ++slot) {
        const PerfTableT& t = wb.perf.PerfTable[slot];
        for (size_t i = 0; i < t.size(); ++i) {
            const PerfPoint& p = t[i];
            out << slot << ',' << i;
            for (double v : {p.CzProfil, p.CzAvion, p.ReAile, p.CxProfil, p.CxInduit, p.ReFuselage, p.CxFuselage,
                             p.ReStab, p.CxStab, p.CzStab, p.CxInduitStab, p.CxTotal, p.V, p.VKmh, p.Vz, p.Finesse,
                             p.PuissanceAero}) {
                std::snprintf(buf, sizeof buf, "%.17g", v);
                out << ',' << buf;
            }
            out << '\n';
        }
    }
}

// `fields` prints every cell after the load and the entries; `perf` then runs
// the performance refresh and prints its tables.
enum class LoadedOutput { Fields, Performance };

// Messages the program would show go to stderr, and the command then fails.
void reportMessagesTo(Workbench& wb, std::ostream& err, int& status) {
    wb.showMessage = [&err, &status](const std::string& text) {
        err << text << "\n";
        status = 1;
    };
}

int fieldsCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                  std::ostream& err, LoadedOutput output = LoadedOutput::Fields) {
    FieldsArgs fa;
    std::string error;
    if (!parseFieldsArgs(args, fa, error)) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    fs::path home;
    if (!homeFor(fa.home, executable, home, err)) return 1;
    Workbench wb(home);
    InstallWindowLogic(wb);
    int status = 0;
    reportMessagesTo(wb, err, status);
    for (int n : fa.open) wb.setOpen(n, true);
    if (int st = loadForCommand(wb, fa.project, err)) return st;
    fillSlots(wb, err);
    // The load closes the motorisation window; the buttons asked for are open
    // again and their windows compute as they do when opened.
    for (int n : fa.open) {
        wb.setOpen(n, true);
        runGuarded(wb, [&wb, n] { PanelOpened(wb, n); });
    }
    if (int st = applyEntries(wb, fa, err)) return st;
    if (output == LoadedOutput::Performance) {
        if (!runGuarded(wb, [&] { Courbes_Performances(wb); })) return 1;
        printPerfTables(wb, out);
    } else {
        printFields(wb, out);
    }
    return status;
}

// A plan of the project written at true scale; its texts on stdout, one
// label a line ("kind=text", the lines of a label joined by " / ").
int planCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                std::ostream& err) {
    std::vector<std::string> rest{args[0]};
    std::string view = "centrage";
    std::vector<fs::path> svg, dxf;
    for (size_t i = 1; i < args.size(); ++i) {
        const bool valued = i + 1 < args.size();
        if (args[i] == "--view" && valued) {
            view = args[++i];
        } else if (args[i] == "--svg" && valued) {
            svg.emplace_back(args[++i]);
        } else if (args[i] == "--dxf" && valued) {
            dxf.emplace_back(args[++i]);
        } else {
            rest.push_back(args[i]);
        }
    }
    FieldsArgs fa;
    std::string error;
    if (!parseFieldsArgs(rest, fa, error)) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    const std::array<std::pair<const char*, PlanView>, 3> views = {
        {{"profil", PlanView::Profil}, {"dessus", PlanView::Dessus}, {"face", PlanView::Face}}};
    const auto chosen = std::find_if(views.begin(), views.end(), [&](const auto& v) { return view == v.first; });
    if (view != "centrage" && chosen == views.end()) {
        err << "tarvokin-cli: vue inconnue : " << view << "\n" << kUsage;
        return 2;
    }
    fs::path home;
    if (!homeFor(fa.home, executable, home, err)) return 1;
    Workbench wb(home);
    InstallWindowLogic(wb);
    int status = 0;
    reportMessagesTo(wb, err, status);
    if (int st = loadForCommand(wb, fa.project, err)) return st;
    if (int st = applyEntries(wb, fa, err)) return st;
    const Plan plan = chosen == views.end() ? DrawCentringPlan(wb) : *DrawViews(wb, chosen->second);
    for (const fs::path& f : svg) {
        if (!SavePlanSvg(plan, f)) {
            err << "tarvokin-cli: impossible d'écrire " << f.string() << "\n";
            status = 1;
        }
    }
    for (const fs::path& f : dxf) {
        if (!SavePlanDxf(plan, f)) {
            err << "tarvokin-cli: impossible d'écrire " << f.string() << "\n";
            status = 1;
        }
    }
    for (const PlanLabel& l : plan.labels) {
        out << l.kind << "=";
        const std::vector<PlanTextLine> lines = LayoutLabel(l);
        for (size_t i = 0; i < lines.size(); ++i) out << (i ? " / " : "") << lines[i].text;
        out << "\n";
    }
    return status;
}

int polarCommand(const std::vector<std::string>& a, std::ostream& out, std::ostream& err) {
    std::string file;
    std::optional<int> index;
    for (size_t i = 1; i < a.size(); ++i) {
        if (a[i] == "--re-index" && i + 1 < a.size()) {
            const std::string& v = a[++i];
            if (v.size() != 1 || v[0] < '0' || v[0] > '5') {
                err << "tarvokin-cli: --re-index attend 0 à 5 : " << v << "\n";
                return 2;
            }
            index = v[0] - '0';
        } else if (file.empty() && !a[i].empty() && a[i][0] != '-') {
            file = a[i];
        } else {
            err << "tarvokin-cli: argument inconnu : " << a[i] << "\n" << kUsage;
            return 2;
        }
    }
    if (file.empty()) {
        err << "tarvokin-cli: il manque le fichier polaire\n" << kUsage;
        return 2;
    }
    PolarStore store;
    const int idx = index ? *index : ReynoldsIndexOfFile(file);
    if (!Read_Polar(store, file, 0, idx)) {
        err << "tarvokin-cli: impossible de lire la polaire " << file << "\n";
        return 1;
    }
    printPolarReport(store.Polars[0][static_cast<size_t>(idx)], out);
    return 0;
}

int cxCommand(const std::vector<std::string>& a, const std::string& executable, std::ostream& out, std::ostream& err) {
    std::string project;
    std::optional<fs::path> requested;
    std::vector<std::array<double, 3>> queries;
    for (size_t i = 1; i < a.size(); ++i) {
        if (a[i] == "--home" && i + 1 < a.size()) {
            requested = fs::path(a[++i]);
        } else if (a[i] == "--at" && i + 1 < a.size()) {
            const std::string& v = a[++i];
            std::array<double, 3> q{};
            size_t start = 0;
            bool ok = true;
            for (int k = 0; k < 3; ++k) {
                const size_t comma = k < 2 ? v.find(',', start) : std::string::npos;
                if (k < 2 && comma == std::string::npos) ok = false;
                if (!ok || !tryNumber(v.substr(start, comma == std::string::npos ? std::string::npos : comma - start), q[static_cast<size_t>(k)])) {
                    ok = false;
                    break;
                }
                start = comma + 1;
            }
            if (!ok) {
                err << "tarvokin-cli: --at attend SLOT,RE,CZ : " << v << "\n";
                return 2;
            }
            queries.push_back(q);
        } else if (project.empty() && !a[i].empty() && a[i][0] != '-') {
            project = a[i];
        } else {
            err << "tarvokin-cli: argument inconnu : " << a[i] << "\n" << kUsage;
            return 2;
        }
    }
    if (project.empty() || queries.empty()) {
        err << kUsage;
        return 2;
    }
    fs::path home;
    if (!homeFor(requested, executable, home, err)) return 1;
    Workbench wb(home);
    InstallWindowLogic(wb);
    wb.showMessage = [&err](const std::string& text) { err << text << "\n"; };
    if (int st = loadForCommand(wb, project, err)) return st;
    fillSlots(wb, err);
    char buf[64];
    for (const auto& q : queries) {
        std::snprintf(buf, sizeof buf, "%.17g", Get_Cx(wb, static_cast<int>(q[0]), q[1], q[2]));
        out << buf << "\n";
    }
    return 0;
}

int computePolarCommand(const std::vector<std::string>& a, const std::string& executable, std::ostream& out,
                        std::ostream& err) {
    std::vector<std::string> pos;
    std::optional<fs::path> requested;
    std::string outFile;
    for (size_t i = 1; i < a.size(); ++i) {
        if (a[i] == "--home" && i + 1 < a.size()) requested = fs::path(a[++i]);
        else if (a[i] == "--out" && i + 1 < a.size()) outFile = a[++i];
        else if (!a[i].empty() && a[i][0] != '-') pos.push_back(a[i]);
        else {
            err << "tarvokin-cli: argument inconnu : " << a[i] << "\n" << kUsage;
            return 2;
        }
    }
    double re = 0;
    if (pos.size() != 3 || !tryNumber(pos[2], re) || re <= 0) {
        err << kUsage;
        return 2;
    }
    fs::path home;
    if (!homeFor(requested, executable, home, err)) return 1;
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    const std::string reText = plain(std::round(re));
    std::error_code ec;
    const std::string outline = fs::absolute(pos[0], ec).string();
    const std::string polar = outFile.empty() ? (home / "POLAIRES" / (pos[1] + "_" + reText + ".POL")).string()
                                              : fs::absolute(outFile, ec).string();
    StreamProgress progress(err);
    WaitHooks hooks;
    hooks.progress = &progress;
    PolarRun run = Calc_Polar(wb, 110, reText, polar, outline, pos[1], hooks);
    if (!run.saved) {
        err << "tarvokin-cli: " << run.reason << "\n";
        return 1;
    }
    PolarStore store;
    if (!Read_Polar(store, run.polar, 0, 0)) {
        err << "tarvokin-cli: XFOIL n'a pas écrit de polaire lisible : " << run.polar.string() << "\n";
        return 1;
    }
    out << run.polar.string() << "\n";
    return 0;
}

// The pressure distribution of F_AERO: the window's defaults, the entries
// as a user's (the window is closed meanwhile, so they only set fields),
// then one run; the result fields and the two curves on stdout.
int pressureCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                    std::ostream& err) {
    FieldsArgs fa;
    std::string error;
    if (!parseFieldsArgs(args, fa, error, false) || !fa.open.empty()) {
        err << "tarvokin-cli: " << (error.empty() ? "--open n'a pas de sens ici" : error) << "\n" << kUsage;
        return 2;
    }
    fs::path home;
    if (!homeFor(fa.home, executable, home, err)) return 1;
    Workbench wb(home);
    InstallWindowLogic(wb);
    int status = 0;
    reportMessagesTo(wb, err, status);
    ReadSettingsAndCatalogue(wb);
    PreparePressureWindow(wb);
    if (int st = applyEntries(wb, fa, err)) return st;
    StreamProgress progress(err);
    WaitHooks hooks;
    hooks.progress = &progress;
    PressureRun run;
    if (!runGuarded(wb, [&] { run = Calc_Pressure(wb, hooks); })) return 1;
    if (!run.result) {
        err << "tarvokin-cli: " << run.reason << "\n";
        return 1;
    }
    for (Cell c : {F_AERO::TCL, F_AERO::TCD, F_AERO::TCDP, F_AERO::TCM, F_AERO::TRE, F_AERO::TALFA, F_AERO::T_CpMax,
                   F_AERO::T_CpMin})
        out << cellPath(c) << "=" << wb.sheet.text(c) << "\n";
    const PressureDistribution& d = wb.pressure.shown;
    out << "# Cp\n";
    for (const ChartPoint& p : d.cp) out << plain(p.x) << "," << plain(p.y) << "\n";
    const int q = std::clamp(wb.sheet.listIndex(F_AERO::Combo1), 0, 9);
    const PressureQuantity& quantity = kPressureQuantities[static_cast<size_t>(q)];
    out << "# " << quantity.title << "\n";
    auto it = d.quantities.find(quantity.key);
    if (it != d.quantities.end())
        for (const ChartPoint& p : it->second) out << plain(p.x) << "," << plain(p.y) << "\n";
    return status;
}

}  // namespace

void printFields(const Workbench& wb, std::ostream& out) {
    std::vector<std::string> lines;
    lines.reserve(kCellCount + 32);
    for (uint16_t i = 0; i < kCellCount; ++i) {
        Cell c{i};
        std::string path = cellPath(c);
        lines.push_back(path + "=" + wb.sheet.text(c));
        if (wb.sheet.isList(c)) {
            // For a control group, cellPath ends with "(i)": the property follows it.
            lines.push_back(path + ".ListIndex=" + std::to_string(wb.sheet.listIndex(c)));
        }
    }
    std::sort(lines.begin(), lines.end());
    for (const std::string& l : lines) out << l << "\n";
}

int runCli(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
           std::ostream& err) {
    if (args.empty() || args[0] == "--help" || args[0] == "-h") {
        (args.empty() ? err : out) << kUsage;
        return args.empty() ? 2 : 0;
    }
    if (args[0] == "fields") return fieldsCommand(args, executable, out, err);
    if (args[0] == "perf") return fieldsCommand(args, executable, out, err, LoadedOutput::Performance);
    if (args[0] == "polar") return polarCommand(args, out, err);
    if (args[0] == "cx") return cxCommand(args, executable, out, err);
    if (args[0] == "compute-polar") return computePolarCommand(args, executable, out, err);
    if (args[0] == "plan") return planCommand(args, executable, out, err);
    if (args[0] == "pressure") return pressureCommand(args, executable, out, err);
    err << "tarvokin-cli: commande inconnue : " << args[0] << "\n" << kUsage;
    return 2;
}

}  // namespace tarvokin

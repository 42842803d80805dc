#include "shell/cli.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "airfoils/airfoil_selection.h"
#include "airfoils/naca_generator.h"
#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "entry/airfoil_choice.h"
#include "construction/frame_files.h"
#include "entry/entry_path.h"
#include "entry/frame_logic.h"
#include "design/performance.h"
#include "design/vlm.h"
#include "core/profile_file.h"
#include "entry/project_io.h"
#include "shell/home.h"
#include "core/messages.h"
#include "core/progress.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "core/text_case.h"
#include "views/plan.h"
#include "views/plan_export.h"
#include "entry/window_logic.h"
#include "entry/report_logic.h"
#include "entry/workbook_logic.h"
#include "entry/pressure_logic.h"
#include "airfoils/pressure_files.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

std::function<void(Workbench&)>& screenHooks() {
    static std::function<void(Workbench&)> hooks;
    return hooks;
}

const char* kUsage =
    "usage: tarvokin-cli fields PROJECT.MDL [--home DIR] [--open N]... [ENTRY]...\n"
    "       tarvokin-cli perf PROJECT.MDL [--home DIR] [--open N]... [ENTRY]...\n"
    "       tarvokin-cli vlm PROJECT.MDL [--home DIR] [--stab] [ENTRY]...\n"
    "       tarvokin-cli polar FILE.POL [--re-index I] [--home DIR]\n"
    "       tarvokin-cli cx PROJECT.MDL [--home DIR] --at SLOT,RE,CZ [--at SLOT,RE,CZ]...\n"
    "       tarvokin-cli compute-polar OUTLINE.DAT NAME RE [--out FILE.POL] [--home DIR]\n"
    "       tarvokin-cli pressure [--home DIR] [ENTRY]...\n"
    "       tarvokin-cli plan PROJECT.MDL [--home DIR] [--view centrage|profil|dessus|face]\n"
    "                    [ENTRY]... [--svg FILE.SVG] [--dxf FILE.DXF]\n"
    "       tarvokin-cli frame FILE.CVB --out FILE [--home DIR] [ENTRY]...\n"
    "       tarvokin-cli report PROJECT.MDL [--home DIR] [--open N]... [ENTRY]...\n"
    "       tarvokin-cli new-model [--home DIR] [--set F_WIZZARD.FIELD=VALUE]...\n"
    "       tarvokin-cli export PROJECT.MDL --xlsx FILE.xlsx [--home DIR] [ENTRY]...\n"
    "       tarvokin-cli import FILE.xlsx --into PROJECT.MDL [--home DIR]\n"
    "       tarvokin-cli naca --family K --design V1,V2,... [--points N] [--distribution D]\n"
    "                    [--home DIR] [ENTRY]... [--save]\n"
    "       tarvokin-cli ribs --root NAME --tip NAME --root-chord MM --tip-chord MM --span MM\n"
    "                    --count N [--spacing MM] [--align K] --out BASE [--home DIR] [ENTRY]...\n"
    "       tarvokin-cli captions [--home DIR] [--lang N] [FORM...]\n"
    "  ENTRY, run in order as a user's at the window: --set FORM.FIELD=VALUE (typed, then Enter),\n"
    "         --click FORM.CONTROL or FORM.CONTROL(I) [with =TEXT for a chosen file], --undo, --redo,\n"
    "         --press, --move, --release FORM.DRAWING=X,Y[,BUTTON] (the mouse on a drawing, in the\n"
    "         drawing's units: millimetres on the fuselage views, drawing pixels on the frame)\n";

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
    wb.computePolars = [&wb, &progress, &err](int slot, const std::vector<int>& reynolds) {
        WaitHooks hooks;
        hooks.progress = &progress;
        for (const PolarRun& run : Calc_Polars(wb, slot, reynolds, hooks))
            if (!run.reason.empty()) err << "tarvokin-cli: " << run.reason << "\n";
    };
    // The batch holds this call's progress: it goes with the call.
    struct Forget {
        Workbench& wb;
        ~Forget() { wb.computePolars = nullptr; }
    } forget{wb};
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
        enum Kind { Set, Click, Undo, Redo, Mouse } kind;
        std::string path, value;
        Act act = Act::Click;
    };
    std::vector<Entry> entries;
    std::string out;  // --out, the frame command's outline file
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
            // A click may carry a text after "=": the file a dialog would give.
            const size_t eq = v.find('=');
            const std::string control = v.substr(0, eq);
            if (!ParseControl(control, Act::Click, probe)) {
                error = "--click attend FORM.CONTROL ou FORM.CONTROL(i) : " + v;
                return false;
            }
            out.entries.push_back(
                {FieldsArgs::Entry::Click, control, eq == std::string::npos ? std::string() : v.substr(eq + 1)});
        } else if (s == "--press" || s == "--move" || s == "--release") {
            if (!next(v)) return false;
            const size_t eq = v.find('=');
            Action probe;
            if (eq == std::string::npos || !ParseControl(v.substr(0, eq), Act::Press, probe)) {
                error = s + " attend FORM.DESSIN=X,Y[,BOUTON] : " + v;
                return false;
            }
            const Act act = s == "--press" ? Act::Press : (s == "--move" ? Act::Move : Act::Release);
            out.entries.push_back({FieldsArgs::Entry::Mouse, v.substr(0, eq), v.substr(eq + 1), act});
        } else if (s == "--out") {
            if (!next(v)) return false;
            out.out = v;
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
                a.text = e.value;
                if (!wb.handlers.has(a.form, a.control, Act::Click)) {
                    err << "tarvokin-cli: commande inconnue : " << e.path << "\n";
                    return 2;
                }
                runGuarded(wb, [&] { Perform(wb, a); });
                break;
            }
            case FieldsArgs::Entry::Mouse: {
                Action a;
                ParseControl(e.path, e.act, a);
                if (!wb.handlers.has(a.form, a.control, e.act)) {
                    err << "tarvokin-cli: dessin inconnu : " << e.path << "\n";
                    return 2;
                }
                double v[3] = {0, 0, e.act == Act::Release ? 0.0 : 1.0};
                std::string rest = e.value;
                for (int i = 0; i < 3 && !rest.empty(); ++i) {
                    const size_t comma = rest.find(',');
                    if (!tryNumber(rest.substr(0, comma), v[i]) || !std::isfinite(v[i])) {
                        err << "tarvokin-cli: position illisible : " << e.value << "\n";
                        return 2;
                    }
                    rest = comma == std::string::npos ? std::string() : rest.substr(comma + 1);
                }
                a.x = v[0];
                a.y = v[1];
                a.button = static_cast<int>(v[2]);
                runGuarded(wb, [&] { Mouse(wb, a); });
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

// The start of a command: the user's folder (seeded when new), a workbench
// with the windows' logic, and the program's messages on stderr, where they
// fail the command. Nothing when the folder cannot be made (said on stderr).
std::unique_ptr<Workbench> startRun(const std::optional<fs::path>& requested, const std::string& executable,
                                    std::ostream& err, int& status) {
    fs::path home;
    if (!homeFor(requested, executable, home, err)) return nullptr;
    auto wb = std::make_unique<Workbench>(home);
    InstallWindowLogic(*wb);
    reportMessagesTo(*wb, err, status);
    return wb;
}

// The project opened as the application opens it with the buttons asked for,
// the airfoil slots filled, then the entries. The load closes the
// motorisation window; the buttons asked for are open again and their windows
// compute as they do when opened. Returns the exit status, 0 when all went.
int openWithEntries(Workbench& wb, const FieldsArgs& fa, std::ostream& err) {
    for (int n : fa.open) wb.setOpen(n, true);
    if (int st = loadForCommand(wb, fa.project, err)) return st;
    fillSlots(wb, err);
    for (int n : fa.open) {
        wb.setOpen(n, true);
        runGuarded(wb, [&wb, n] { PanelOpened(wb, n); });
    }
    return applyEntries(wb, fa, err);
}

int fieldsCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                  std::ostream& err, LoadedOutput output = LoadedOutput::Fields) {
    FieldsArgs fa;
    std::string error;
    if (parseFieldsArgs(args, fa, error) && !fa.out.empty()) error = "argument inconnu : --out";
    if (!error.empty()) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    if (int st = openWithEntries(wb, fa, err)) return st;
    if (output == LoadedOutput::Performance) {
        if (!runGuarded(wb, [&] { Courbes_Performances(wb); })) return 1;
        printPerfTables(wb, out);
    } else {
        printFields(wb, out);
    }
    return status;
}

// The span loadings of F_VLM: the panel's figures, then the tables of both
// solvers as CSV (the strips solver's own units, unscaled).
void printVlm(const Workbench& wb, std::ostream& out) {
    using namespace F_VLM;
    for (Cell c : {N25, P25, S25, Text2[0], Text2[1]}) out << cellPath(c) << "=" << wb.sheet.text(c) << "\n";
    char buf[40];
    auto num = [&out, &buf](double v) {
        std::snprintf(buf, sizeof buf, "%.17g", v);
        out << ',' << buf;
    };
    const VlmState& v = wb.vlm;
    out << "# CalcVLM\ni,y,Cl,Gamma,Ellipse\n";
    for (size_t i = 0; i < v.VlmCl.size(); ++i) {
        out << i;
        for (double x : {v.VlmCl[i].y, v.VlmCl[i].value, v.VlmGamma[i].value, v.VlmEllipse[i].value}) num(x);
        out << "\n";
    }
    out << "# VLM_Strips\ni,y,Lift,Shear,Moment\n";
    for (size_t i = 0; i < v.strips.size(); ++i) {
        out << i;
        for (double x : {v.strips[i].y, v.strips[i].lift, v.strips[i].shear, v.strips[i].moment}) num(x);
        out << "\n";
    }
}

// `vlm`: the project loaded as `fields` loads it, the lattice panel opened on
// the wing (or the stabiliser with --stab), the entries, then Command1.
int vlmCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
               std::ostream& err) {
    std::vector<std::string> rest;
    bool stab = false;
    for (const std::string& a : args) {
        if (a == "--stab") stab = true;
        else rest.push_back(a);
    }
    FieldsArgs fa;
    std::string error;
    if (!parseFieldsArgs(rest, fa, error)) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    wb.beep = [&err] { err << "tarvokin-cli: VLM : matrice singulière, pas de résultat\n"; };
    if (int st = loadForCommand(wb, fa.project, err)) return st;
    const std::string tag = stab ? "2" : "1";
    wb.sheet.set(F_Main::Toolbar2[button::Wizard], tag);
    if (int st = applyEntries(wb, fa, err)) return st;
    if (!runGuarded(wb, [&] { VlmCommand1(wb); })) return 1;
    printVlm(wb, out);
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
    if (parseFieldsArgs(rest, fa, error) && !fa.out.empty()) error = "argument inconnu : --out";
    if (!error.empty()) {
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
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
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

// The report of a project: the page and its ten pictures in MODELES of the
// program's folder, the page's path on stdout.
int reportCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                  std::ostream& err) {
    FieldsArgs fa;
    std::string error;
    if (parseFieldsArgs(args, fa, error) && !fa.out.empty()) error = "argument inconnu : --out";
    if (!error.empty()) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    if (screenHooks()) screenHooks()(wb);
    if (int st = openWithEntries(wb, fa, err)) return st;
    std::string page;
    if (!runGuarded(wb, [&] { page = WriteReport(wb); })) return 1;
    out << page << "\n";
    return status;
}

// Pulls "--NAME VALUE" out of the arguments; false when it is missing.
bool takeOption(std::vector<std::string>& args, const std::string& name, std::string& value) {
    for (size_t i = 1; i + 1 < args.size(); ++i) {
        if (args[i] == name) {
            value = args[i + 1];
            args.erase(args.begin() + static_cast<long>(i), args.begin() + static_cast<long>(i) + 2);
            return true;
        }
    }
    return false;
}

// The project, after its load and the entries, as a workbook.
int exportCommand(std::vector<std::string> args, const std::string& executable, std::ostream& out,
                  std::ostream& err) {
    std::string file;
    FieldsArgs fa;
    std::string error;
    if (!takeOption(args, "--xlsx", file)) error = "il manque --xlsx FICHIER";
    else if (parseFieldsArgs(args, fa, error) && !fa.out.empty()) error = "argument inconnu : --out";
    if (!error.empty()) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    if (int st = loadForCommand(wb, fa.project, err)) return st;
    fillSlots(wb, err);
    if (int st = applyEntries(wb, fa, err)) return st;
    // The speed polars of the workbook are those of the performance window.
    runGuarded(wb, [&] { Courbes_Performances(wb); });
    std::error_code ec;
    const std::string target = fs::absolute(file, ec).string();
    if (!runGuarded(wb, [&] { ExportWorkbookCommand(wb, target); })) return 1;
    out << target << "\n";
    return status;
}

// A workbook's values into a project file: the project is loaded, takes the
// values, is recalculated and saved; the fields are printed as `fields` does.
int importCommand(std::vector<std::string> args, const std::string& executable, std::ostream& out,
                  std::ostream& err) {
    std::string project;
    FieldsArgs fa;
    std::string error;
    if (!takeOption(args, "--into", project)) {
        error = "il manque --into PROJET.MDL";
    } else {
        // The workbook stands where the project would: swap them for the parser.
        std::vector<std::string> rest{args[0], project};
        std::string book;
        for (size_t i = 1; i < args.size(); ++i) {
            if (book.empty() && !args[i].empty() && args[i][0] != '-') book = args[i];
            else rest.push_back(args[i]);
        }
        if (book.empty()) error = "il manque le classeur";
        else if (parseFieldsArgs(rest, fa, error) && (!fa.out.empty() || !fa.entries.empty() || !fa.open.empty()))
            error = "import n'accepte que --home et --into";
        fa.out = book;
    }
    if (!error.empty()) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    if (int st = loadForCommand(wb, fa.project, err)) return st;
    std::error_code ec;
    const std::string book = fs::absolute(fa.out, ec).string();
    if (!runGuarded(wb, [&] { ImportWorkbookCommand(wb, book); })) return 1;
    fillSlots(wb, err);
    // The airfoils the workbook names are the design's now: written too.
    const std::string chosen = wb.sheet.text(F_Main::T_profils);
    wb.sheet.set(F_Main::T_profils, "1");
    const bool saved = runGuarded(wb, [&] { SaveProject(wb); });
    wb.sheet.set(F_Main::T_profils, chosen);
    if (!saved) return 1;
    printFields(wb, out);
    return status;
}

// A new model from the wizard's defaults and the figures set: its path, then
// the fields of the project as loaded.
int newModelCommand(std::vector<std::string> args, const std::string& executable, std::ostream& out,
                    std::ostream& err) {
    // The wizard needs no project: a stand-in fills the parser's place.
    args.insert(args.begin() + 1, "(assistant)");
    FieldsArgs fa;
    std::string error;
    if (parseFieldsArgs(args, fa, error) && (!fa.out.empty() || !fa.open.empty()))
        error = "new-model n'accepte que --home et --set";
    if (error.empty() && fa.project != "(assistant)") error = "argument inconnu : " + fa.project;
    if (!error.empty()) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    ReadSettingsAndCatalogue(wb);
    if (int st = applyEntries(wb, fa, err)) return st;
    if (!runGuarded(wb, [&] { Click(wb, "F_WIZZARD", "Command1"); })) return 1;
    if (status) return status;
    fillSlots(wb, err);
    out << "ProjectFilePath=" << wb.projectFilePath << "\n";
    printFields(wb, out);
    return status;
}

int polarCommand(const std::vector<std::string>& a, std::ostream& out, std::ostream& err) {
    std::string file;
    std::optional<int> index;
    for (size_t i = 1; i < a.size(); ++i) {
        if (a[i] == "--home" && i + 1 < a.size()) {
            ++i;  // the polar is read as it stands: no setting of the folder counts
        } else if (a[i] == "--re-index" && i + 1 < a.size()) {
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
    if (!run.computed()) {
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

// The outline file of a frame project: the frame read as the generator reads
// it, the user's entries applied, the outline written as the generator's
// toolbar writes it.
int frameCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                 std::ostream& err) {
    FieldsArgs fa;
    std::string error;
    if (!parseFieldsArgs(args, fa, error) || fa.out.empty()) {
        err << "tarvokin-cli: " << (error.empty() ? "il manque --out FICHIER" : error) << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    std::string warning;
    if (!LoadFrameProject(wb.frame, fa.project, warning)) {
        err << "tarvokin-cli: " << warning << "\n";
        return 1;
    }
    // Missing values took their start values: said, and the outline still written.
    if (!warning.empty()) err << "tarvokin-cli: " << warning << "\n";
    CellsFromFrame(wb);
    if (int st = applyEntries(wb, fa, err)) return st;
    std::string written;
    if (!SaveFrameOutline(wb.frame, fa.out, written, error)) {
        err << "tarvokin-cli: " << error << "\n";
        return 1;
    }
    out << written << "\n";
    return status;
}


// The options of a generator command beside the user's entries, which are
// read by the entries' own parser (a project argument is not needed there).
struct GeneratorArgs {
    std::map<std::string, std::string> values;
    bool save = false;
    FieldsArgs entries;
};

bool parseGeneratorArgs(const std::vector<std::string>& a, const std::vector<std::string>& valued, GeneratorArgs& out,
                        std::ostream& err) {
    std::vector<std::string> rest{a[0]};
    for (size_t i = 1; i < a.size(); ++i) {
        const std::string& s = a[i];
        if (s == "--save") {
            out.save = true;
        } else if (std::find(valued.begin(), valued.end(), s) != valued.end()) {
            if (i + 1 >= a.size()) {
                err << "tarvokin-cli: " << s << " attend une valeur\n" << kUsage;
                return false;
            }
            out.values[s] = a[++i];
        } else {
            rest.push_back(s);
            if ((s == "--set" || s == "--click") && i + 1 < a.size()) rest.push_back(a[++i]);
        }
    }
    // The entries' parser wants a project; the generators have none.
    rest.push_back("_");
    std::string error;
    if (!parseFieldsArgs(rest, out.entries, error)) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return false;
    }
    if (out.entries.project != "_" || !out.entries.open.empty()) {
        err << "tarvokin-cli: argument inconnu : " << out.entries.project << "\n" << kUsage;
        return false;
    }
    if (auto it = out.values.find("--home"); it != out.values.end()) out.entries.home = fs::path(it->second);
    return true;
}

bool wholeNumber(const std::string& text, int& out) {
    double v = 0;
    if (!tryNumber(trim(text), v) || v != std::floor(v) || std::fabs(v) > 1e6) return false;
    out = static_cast<int>(v);
    return true;
}

int nacaCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                std::ostream& err) {
    GeneratorArgs ga;
    if (!parseGeneratorArgs(args, {"--family", "--design", "--points", "--distribution", "--home"}, ga, err)) return 2;
    int family = 0;
    if (!ga.values.count("--family") || !wholeNumber(ga.values["--family"], family) || family < 0 ||
        family >= naca::kFamilies) {
        err << "tarvokin-cli: --family attend un numéro de famille de 0 à " << naca::kFamilies - 1 << "\n" << kUsage;
        return 2;
    }
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(ga.entries.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
    ReadSettingsAndCatalogue(wb);

    // The entries a modeller makes at the window, in its order: the family,
    // its inputs, the count of points, the distribution.
    Action pick{Act::Click, "F_NACA", "Option1", family};
    runGuarded(wb, [&] { Perform(wb, pick); });
    if (auto it = ga.values.find("--design"); it != ga.values.end()) {
        std::vector<std::string> parts;
        size_t start = 0;
        const std::string& v = it->second;
        while (true) {
            const size_t comma = v.find(',', start);
            parts.push_back(v.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
            if (comma == std::string::npos) break;
            start = comma + 1;
        }
        const size_t used = NacaInputs(family).size();
        if (parts.size() > used) {
            err << "tarvokin-cli: la famille " << NacaFamilyCaption(family) << " a " << used << " valeurs\n";
            return 2;
        }
        for (size_t i = 0; i < parts.size(); ++i)
            runGuarded(wb, [&] { enterField(wb, F_NACA::T_DESIGN[static_cast<int>(i)], trim(parts[i])); });
    }
    if (auto it = ga.values.find("--points"); it != ga.values.end())
        runGuarded(wb, [&] { enterField(wb, F_NACA::T_NPP, it->second); });
    if (auto it = ga.values.find("--distribution"); it != ga.values.end()) {
        int d = 0;
        if (!wholeNumber(it->second, d) || d < 0 || d > 3) {
            err << "tarvokin-cli: --distribution attend 0, 1, 2 ou 3\n";
            return 2;
        }
        Action a{Act::Click, "F_NACA", "Option2", d};
        runGuarded(wb, [&] { Perform(wb, a); });
    }
    if (int st = applyEntries(wb, ga.entries, err)) return st;
    if (!wb.generators.nacaReason.empty()) {
        err << "tarvokin-cli: " << wb.generators.nacaReason << "\n";
        return 1;
    }
    out << "name=" << wb.sheet.text(F_NACA::Label5) << "\n";
    out << "thickness=" << wb.sheet.text(F_NACA::T_Thicknes) << "\n";
    out << NacaOutlineText(wb.generators.naca);
    if (ga.save) {
        Action a{Act::Click, "F_NACA", "Command2", -1};
        runGuarded(wb, [&] { Perform(wb, a); });
        err << wb.sheet.text(F_NACA::StatusBar1) << "\n";
        const fs::path dat = wb.home() / "DATA" / (wb.sheet.text(F_NACA::Label5) + ".DAT");
        std::error_code ec;
        if (!fs::is_regular_file(dat, ec)) return 1;
    }
    return status;
}

int ribsCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                std::ostream& err) {
    GeneratorArgs ga;
    if (!parseGeneratorArgs(args,
                            {"--root", "--tip", "--root-chord", "--tip-chord", "--span", "--count", "--spacing",
                             "--align", "--out", "--home"},
                            ga, err))
        return 2;
    for (const char* need : {"--root", "--tip", "--out"}) {
        if (!ga.values.count(need)) {
            err << "tarvokin-cli: il manque " << need << "\n" << kUsage;
            return 2;
        }
    }
    fs::path home;
    if (!homeFor(ga.entries.home, executable, home, err)) return 1;
    Workbench wb(home);
    InstallWindowLogic(wb);
    int status = 0;
    wb.showMessage = [](const std::string&) {};  // the closing message is the command's answer
    ReadSettingsAndCatalogue(wb);

    auto type = [&](Cell c, const char* option) {
        if (auto it = ga.values.find(option); it != ga.values.end())
            runGuarded(wb, [&] { enterField(wb, c, it->second); });
    };
    type(F_RIBS::Text1, "--root-chord");
    type(F_RIBS::Text2, "--tip-chord");
    type(F_RIBS::Text3, "--span");
    type(F_RIBS::Text4, "--count");
    type(F_RIBS::Text5, "--spacing");
    if (auto it = ga.values.find("--align"); it != ga.values.end()) {
        int k = 0;
        if (!wholeNumber(it->second, k) || k < 0 || k > 3) {
            err << "tarvokin-cli: --align attend 0, 1, 2 ou 3\n";
            return 2;
        }
        Action a{Act::Click, "F_RIBS", "Option1", k};
        runGuarded(wb, [&] { Perform(wb, a); });
    }
    // The airfoils last, as the ends are what the modeller picks once the
    // panel is described; each end that does not read is said and kept.
    for (int end = 0; end < 2; ++end) {
        Action a{Act::Change, "F_RIBS", "CB_1", end};
        a.text = ga.values[end == 0 ? "--root" : "--tip"];
        runGuarded(wb, [&] { Perform(wb, a); });
        if (!wb.generators.ribReadReason.empty()) err << "tarvokin-cli: " << wb.generators.ribReadReason << "\n";
    }
    if (int st = applyEntries(wb, ga.entries, err)) return st;
    if (wb.generators.ribs.empty()) {
        err << "tarvokin-cli: " << wb.sheet.text(F_RIBS::StatusBar1) << "\n";
        return 1;
    }
    if (const std::string& reason = wb.sheet.text(F_RIBS::StatusBar1);
        !reason.empty() && reason != wb.generators.ribReadReason) {
        err << "tarvokin-cli: " << reason << "\n";
        return 1;
    }
    std::error_code ec;
    Action save{Act::Click, "F_RIBS", "Command3", -1};
    save.text = fs::absolute(ga.values["--out"], ec).string();
    runGuarded(wb, [&] { Perform(wb, save); });
    const std::string& line = wb.sheet.text(F_RIBS::StatusBar1);
    if (!line.starts_with("Les fichiers ")) {
        err << "tarvokin-cli: " << line << "\n";
        return 1;
    }
    out << line << "\n";
    return status;
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
    int status = 0;
    const std::unique_ptr<Workbench> started = startRun(fa.home, executable, err, status);
    if (!started) return 1;
    Workbench& wb = *started;
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

void SetScreenHooks(std::function<void(Workbench&)> install) { screenHooks() = std::move(install); }

void printFields(const Workbench& wb, std::ostream& out) {
    std::vector<std::string> lines;
    lines.reserve(kCellCount + 32);
    for (uint16_t i = 0; i < kCellCount; ++i) {
        Cell c{i};
        // The tool windows hold no part of the design: the dump stays that of
        // the project.
        const Form form = cellTable()[i].form;
        if (form == Form::F_WIZZARD || form == Form::F_CONVERT) continue;
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
    if (args.empty()) {
        err << kUsage;
        return 2;
    }
    // Help asked anywhere, before or after a command, is an answer, not an error.
    if (std::find_if(args.begin(), args.end(), [](const std::string& a) { return a == "--help" || a == "-h"; }) !=
        args.end()) {
        out << kUsage;
        return 0;
    }
    if (args[0] == "fields") return fieldsCommand(args, executable, out, err);
    if (args[0] == "perf") return fieldsCommand(args, executable, out, err, LoadedOutput::Performance);
    if (args[0] == "vlm") return vlmCommand(args, executable, out, err);
    if (args[0] == "polar") return polarCommand(args, out, err);
    if (args[0] == "cx") return cxCommand(args, executable, out, err);
    if (args[0] == "compute-polar") return computePolarCommand(args, executable, out, err);
    if (args[0] == "plan") return planCommand(args, executable, out, err);
    if (args[0] == "frame") return frameCommand(args, executable, out, err);
    if (args[0] == "report") return reportCommand(args, executable, out, err);
    if (args[0] == "new-model") return newModelCommand(args, executable, out, err);
    if (args[0] == "export") return exportCommand(args, executable, out, err);
    if (args[0] == "import") return importCommand(args, executable, out, err);
    if (args[0] == "naca") return nacaCommand(args, executable, out, err);
    if (args[0] == "ribs") return ribsCommand(args, executable, out, err);
    if (args[0] == "pressure") return pressureCommand(args, executable, out, err);
    err << "tarvokin-cli: commande inconnue : " << args[0] << "\n" << kUsage;
    return 2;
}

}  // namespace tarvokin

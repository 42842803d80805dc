#include "airfoils/xfoil_runner.h"

#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <mutex>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

#include "airfoils/virtual_display.h"
#include "core/numbers.h"
#include "core/progress.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

std::string withoutTrailingSlash(std::string s) {
    while (s.size() > 1 && s.back() == '/') s.pop_back();
    return s;
}

// A coefficient of the settings with exactly two decimals, as ASEQ is given.
std::string twoDecimals(const std::string& text) {
    double v = 0.0;
    if (!tryNumber(text, v)) v = leadingNumber(text);
    return fixed(v, 2);
}

bool writeText(const fs::path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    return !out.fail();
}

// Points of the polar saved so far: the rows behind the "------" line.
int polarRows(const fs::path& polar) {
    std::ifstream in(polar, std::ios::binary);
    std::string line;
    bool header = true;
    int rows = 0;
    while (std::getline(in, line)) {
        if (header) {
            header = line.find("------") == std::string::npos;
        } else if (line.find_first_not_of(" \t\r") != std::string::npos) {
            ++rows;
        }
    }
    return rows;
}

// How many points ASEQ asks for, or 0 when that can't be told.
int expectedPoints(const XfoilJob& job) {
    const double first = leadingNumber(twoDecimals(job.alphaFirst));
    const double last = leadingNumber(twoDecimals(job.alphaLast));
    const double step = std::fabs(leadingNumber(twoDecimals(job.alphaStep)));
    if (step <= 0.0) return 0;
    return static_cast<int>(std::floor(std::fabs(last - first) / step + 1e-9)) + 1;
}

// Debian's XFOIL writes a scratch file of the boundary layer into its working
// folder at every viscous point, and dies when it can't. A program installed
// for the whole system lies in a folder the user can't write, so such an XFOIL
// is started through a link in a private folder of this process instead; the
// folder goes when the process ends.
class SolverFolder {
public:
    static SolverFolder& shared() {
        static SolverFolder folder;
        return folder;
    }
    ~SolverFolder() {
        if (!dir_.empty()) {
            std::error_code ec;
            fs::remove_all(dir_, ec);
        }
    }
    // The link's path, "" when it can't be made.
    std::string linkTo(const std::string& program, const std::string& exe) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!ensureDir()) return "";
        const fs::path link = dir_ / exe;
        std::error_code ec;
        if (fs::is_symlink(link, ec) && fs::read_symlink(link, ec) == fs::path(program)) return link.string();
        fs::remove(link, ec);
        fs::create_symlink(program, link, ec);
        return ec ? "" : link.string();
    }

    // XFOIL keeps file names in 64 characters: a longer path (a user's home
    // folder easily makes one) is given to it through a one-letter link to
    // its folder, in this private folder with a short name. "" when the
    // short form is still too long or the link can't be made.
    std::string shortPath(const std::string& full) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!ensureDir()) return "";
        const fs::path f(full);
        const std::string folder = f.parent_path().string();
        auto it = aliases_.find(folder);
        if (it == aliases_.end()) {
            const std::string tag(1, static_cast<char>('a' + aliases_.size() % 26));
            const fs::path link = dir_ / (tag + std::to_string(aliases_.size() / 26));
            std::error_code ec;
            fs::remove(link, ec);
            fs::create_symlink(f.parent_path(), link, ec);
            if (ec) return "";
            it = aliases_.emplace(folder, link).first;
        }
        const std::string shortened = (it->second / f.filename()).string();
        return shortened.size() <= kXfoilMaxFileName ? shortened : "";
    }

private:
    bool ensureDir() {
        if (!dir_.empty()) return true;
        std::string pattern = "/tmp/tvk-XXXXXX";
        if (!::mkdtemp(pattern.data())) return false;
        dir_ = pattern;
        return true;
    }

    std::mutex mutex_;
    fs::path dir_;
    std::map<std::string, fs::path> aliases_;
};

constexpr const char* kXfoilScratch = ":00.bl";

}  // namespace

std::string xfoilCommandText(const std::string& xfoilPath, const std::string& home, const std::string& keyFile) {
    const size_t cut = xfoilPath.rfind('/');
    const std::string dir = cut == std::string::npos ? "" : xfoilPath.substr(0, cut + 1);
    const std::string exe = cut == std::string::npos ? "" : xfoilPath.substr(cut + 1);
    const std::string homeDir = withoutTrailingSlash(home);
    std::string text;
    if (!dir.empty()) text += "cd " + dir + "\n";
    if (dir != homeDir + "/" && homeDir.find("Program Files") == std::string::npos)
        text += exe + " < " + homeDir + "/" + keyFile + "\n";
    else
        text += exe + "  < " + keyFile + "\n";
    return text;
}

std::string xfoilKeyText(const XfoilJob& job) {
    std::string t;
    auto line = [&t](const std::string& s) { t += s + "\n"; };
    line("Load " + job.datPath + " ");
    line(job.runName() + " ");
    line("");
    line("PPAR");
    line("n 140");
    line("p 1.4");
    line("T .2");
    line("");
    line("");
    line("GDES");
    line("CADD");
    for (int i = 0; i < 4; ++i) line("");
    line("PANE");
    line("MDES");
    if (job.smooth) line("FILT 1.00");
    line("EXEC");
    line("");
    line("PANE");
    line("OPER");
    line("VPAR");
    line("N 9.00");
    line("VACC 0.01 / XTR 0.25 1");
    line("");
    line("TYPE 1");
    line("VISC " + job.Re);
    line("MACH 0.0000");
    line("ITER");
    line(std::to_string(job.iterations));
    line("PACC");
    line(job.polarPath);
    line("");
    line("ASEQ " + twoDecimals(job.alphaFirst) + " " + twoDecimals(job.alphaLast) + " " +
         twoDecimals(job.alphaStep) + " ");
    line("PACC");
    line("");
    line("QUIT");
    line("");
    return t;
}

std::string runXfoilScript(const XfoilScript& script, const WaitHooks& hooks) {
    std::error_code ec;
    const std::string& program = script.xfoilPath;
    if (program.empty()) return "XFOIL n'est pas indiqué : donnez le chemin du programme dans les préférences";
    const size_t cut = program.rfind('/');
    const std::string exe = cut == std::string::npos ? "" : program.substr(cut + 1);
    const std::string dir = cut == std::string::npos ? "" : program.substr(0, cut + 1);
    if (exe.empty()) return "Le chemin de XFOIL n'est pas le chemin complet du programme : " + program;
    struct stat st {};
    if (::stat(program.c_str(), &st) != 0) return "XFOIL introuvable : " + program;
    if (!S_ISREG(st.st_mode) || ::access(program.c_str(), X_OK) != 0) return "XFOIL n'est pas exécutable : " + program;
    for (const std::string& o : script.outlines) {
        if (!fs::is_regular_file(o, ec)) return "Contour du profil introuvable : " + o;
    }

    // XFOIL can't make the folder of a file it saves.
    for (const fs::path& r : script.results) {
        if (!r.empty()) fs::create_directories(r.parent_path(), ec);
    }
    std::vector<std::string> files = script.files;
    for (std::string& f : files) {
        if (f.size() <= kXfoilMaxFileName) continue;
        const std::string shortened = SolverFolder::shared().shortPath(f);
        if (shortened.empty())
            return "XFOIL n'accepte que des noms de fichier de 64 caractères au plus, celui-ci en a " +
                   std::to_string(f.size()) + " : " + f;
        f = shortened;
    }

    std::string reason;
    const std::string display = VirtualDisplay::shared().display(reason);
    if (display.empty()) return reason;

    // The folder XFOIL works in must be writable (see SolverFolder).
    std::string started = program;
    if (::access(dir.c_str(), W_OK) != 0) {
        started = SolverFolder::shared().linkTo(program, exe);
        if (started.empty()) return "Impossible de préparer un dossier de travail pour XFOIL dans " + fs::temp_directory_path(ec).string();
    }
    const std::string workDir = started.substr(0, started.rfind('/') + 1);
    const fs::path scratch = fs::path(workDir) / kXfoilScratch;
    const bool scratchBefore = fs::exists(scratch, ec);

    const fs::path home = script.home;
    const fs::path commandFile = home / script.commandFile;
    const fs::path keyFile = home / script.keyFile;
    if (!writeText(commandFile, xfoilCommandText(started, home.string(), script.keyFile)))
        return "Impossible d'écrire " + commandFile.string();
    if (!writeText(keyFile, script.keyText ? script.keyText(files) : std::string())) {
        fs::remove(commandFile, ec);
        return "Impossible d'écrire " + keyFile.string();
    }
    const fs::path marker = home / kXfoilRunMarker;
    writeText(marker, std::to_string(::getpid()) + "\n" + script.keyFile + "\n");

    // The start line names the program alone after "cd" into its folder: as a
    // console looks in its current folder first, the folder leads the search
    // path, and the shell finds the program there.
    const char* path = std::getenv("PATH");
    CommandFileRun run;
    run.script = commandFile;
    run.workDir = home;
    run.environment = {{"DISPLAY", display}, {"PATH", workDir + (path && *path ? std::string(":") + path : "")}};
    run.timeoutSeconds = script.timeoutSeconds;
    run.runFiles = {commandFile, keyFile, marker};

    auto report = [&] {
        if (hooks.progress && script.progress) {
            const auto [text, fraction] = script.progress();
            hooks.progress->report(text, fraction);
        }
    };
    report();
    const ProcessOutcome outcome = runCommandFile(run, hooks, report);

    fs::remove(keyFile, ec);
    fs::remove(commandFile, ec);
    fs::remove(marker, ec);
    if (!scratchBefore) fs::remove(scratch, ec);

    if (!outcome.clean()) {
        for (const fs::path& r : script.results) {
            if (!r.empty()) fs::remove(r, ec);
        }
        return describeOutcome(outcome, "XFOIL", script.timeoutSeconds);
    }
    return "";
}

std::string runXfoil(const XfoilJob& job, const WaitHooks& hooks) {
    std::error_code ec;
    // XFOIL adds to an existing polar file or refuses it; and a failed run
    // must not leave the old polar behind as if it were the new one.
    if (!job.polarPath.empty()) fs::remove(job.polarPath, ec);

    XfoilScript script;
    script.xfoilPath = job.xfoilPath;
    script.home = job.home;
    script.commandFile = kXfoilCommandFile;
    script.keyFile = job.keyFile();
    script.outlines = {job.datPath};
    script.files = {job.datPath, job.polarPath};
    script.keyText = [&job](const std::vector<std::string>& files) {
        XfoilJob solverJob = job;
        solverJob.datPath = files[0];
        solverJob.polarPath = files[1];
        return xfoilKeyText(solverJob);
    };
    if (!job.polarPath.empty()) script.results = {job.polarPath};
    script.timeoutSeconds = job.timeoutSeconds;
    const std::string title = "XFOIL " + job.name + " Re " + job.Re;
    const int expected = expectedPoints(job);
    script.progress = [&]() -> std::pair<std::string, double> {
        if (expected <= 0) return {title, 0.0};
        return {title, std::min(1.0, static_cast<double>(polarRows(job.polarPath)) / expected)};
    };
    const std::string reason = runXfoilScript(script, hooks);
    if (!reason.empty()) return reason;
    if (hooks.progress) hooks.progress->report(title, 1.0);
    if (!fs::exists(job.polarPath, ec)) return "XFOIL n'a enregistré aucune polaire pour " + job.runName();
    return "";
}

void removeStaleXfoilRun(const fs::path& home) {
    const fs::path marker = home / kXfoilRunMarker;
    std::ifstream in(marker);
    if (!in) return;
    long pid = 0;
    std::string keyFile;
    in >> pid;
    std::getline(in >> std::ws, keyFile);
    in.close();
    // A program still running (another instance on the same folder) keeps its run.
    if (pid > 0 && (::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM)) return;
    std::error_code ec;
    fs::remove(home / kXfoilCommandFile, ec);
    // Only a key file's own name, never a path that leads elsewhere.
    if (!keyFile.empty() && fs::path(keyFile).filename() == fs::path(keyFile)) fs::remove(home / keyFile, ec);
    fs::remove(marker, ec);
}

}  // namespace tarvokin

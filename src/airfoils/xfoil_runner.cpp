#include "airfoils/xfoil_runner.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <mutex>
#include <sstream>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
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

    // A fresh folder of its own for one run of the batch, "" when it can't
    // be made.
    fs::path runFolder(const std::string& runName) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!ensureDir()) return {};
        const fs::path dir = dir_ / ("run-" + runName);
        std::error_code ec;
        fs::remove_all(dir, ec);
        if (!fs::create_directory(dir, ec)) return {};
        return dir;
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

// The lock of a polar file while a run computes it: an exclusive flock on a
// hidden file beside it, so that a second program on the same folder neither
// removes a polar under way nor reads it half written. The kernel drops the
// lock of a program that dies, so a dead run never blocks the next one; the
// file is removed by its holder, and a taker checks that the file it locked
// is still the one in the folder.
fs::path lockFileOf(const fs::path& polar) {
    return polar.parent_path() / ("." + polar.filename().string() + ".lock");
}

class PolarLock {
public:
    PolarLock() = default;
    PolarLock(const PolarLock&) = delete;
    PolarLock& operator=(const PolarLock&) = delete;
    ~PolarLock() { release(); }

    // "" when taken, else one line for the user.
    std::string take(const fs::path& polar) {
        std::error_code ec;
        fs::create_directories(polar.parent_path(), ec);
        const fs::path file = lockFileOf(polar);
        for (int attempt = 0; attempt < 20; ++attempt) {
            const int fd = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
            if (fd < 0) return "";  // a folder without room for it: XFOIL will tell
            if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
                char buf[32] = {};
                const ssize_t n = ::pread(fd, buf, sizeof buf - 1, 0);
                ::close(fd);
                const long pid = n > 0 ? std::atol(buf) : 0;
                return "La polaire " + polar.filename().string() + " est déjà en calcul" +
                       (pid > 0 && pid != ::getpid() ? " par une autre instance de TARVOKIN (pid " +
                                                            std::to_string(pid) + ")"
                                                      : "") +
                       " : elle sera lue une fois ce calcul fini";
            }
            struct stat held {}, named {};
            if (::fstat(fd, &held) == 0 && ::stat(file.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
                held.st_dev == named.st_dev) {
                const std::string pid = std::to_string(::getpid()) + "\n";
                if (::ftruncate(fd, 0) == 0 && ::pwrite(fd, pid.data(), pid.size(), 0) < 0) {
                }
                fd_ = fd;
                file_ = file;
                return "";
            }
            ::close(fd);  // removed by its last holder meanwhile: take the new one
        }
        return "";
    }

    void release() {
        if (fd_ < 0) return;
        ::unlink(file_.c_str());
        ::close(fd_);
        fd_ = -1;
    }

private:
    int fd_ = -1;
    fs::path file_;
};

// The program's path as the runs need it: "" when it can be started, else
// one line for the user.
std::string checkProgram(const std::string& program) {
    if (program.empty()) return "XFOIL n'est pas indiqué : donnez le chemin du programme dans les préférences";
    const size_t cut = program.rfind('/');
    const std::string exe = cut == std::string::npos ? "" : program.substr(cut + 1);
    if (exe.empty()) return "Le chemin de XFOIL n'est pas le chemin complet du programme : " + program;
    struct stat st {};
    if (::stat(program.c_str(), &st) != 0) return "XFOIL introuvable : " + program;
    if (!S_ISREG(st.st_mode) || ::access(program.c_str(), X_OK) != 0) return "XFOIL n'est pas exécutable : " + program;
    return "";
}

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
    if (std::string bad = checkProgram(program); !bad.empty()) return bad;
    const size_t cut = program.rfind('/');
    const std::string exe = program.substr(cut + 1);
    const std::string dir = program.substr(0, cut + 1);
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
    PolarLock lock;
    if (!job.polarPath.empty()) {
        if (std::string busy = lock.take(job.polarPath); !busy.empty()) return busy;
    }
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

int polarBatchWidth() {
    const unsigned cores = std::thread::hardware_concurrency();
    return std::max(2, static_cast<int>(cores));
}

bool polarBeingComputed(const fs::path& polar, long* pid) {
    const fs::path file = lockFileOf(polar);
    const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool busy = ::flock(fd, LOCK_SH | LOCK_NB) != 0;
    if (busy && pid) {
        char buf[32] = {};
        const ssize_t n = ::pread(fd, buf, sizeof buf - 1, 0);
        *pid = n > 0 ? std::atol(buf) : 0;
    }
    ::close(fd);
    return busy;
}

namespace {

// One run of the batch, from its files to its end.
struct BatchRun {
    const XfoilJob* job = nullptr;
    size_t index = 0;
    PolarLock lock;
    fs::path dir, commandFile, keyFile, marker, scratch;
    std::unique_ptr<RunningCommand> command;
    std::string title;
    int expected = 0;

    double fraction() const {
        if (expected <= 0) return 0.0;
        return std::min(1.0, static_cast<double>(polarRows(job->polarPath)) / expected);
    }

    // Everything before the start; "" when the run is started.
    std::string start(const std::string& display) {
        std::error_code ec;
        const XfoilJob& j = *job;
        for (const std::string& o : {j.datPath}) {
            if (!fs::is_regular_file(o, ec)) return "Contour du profil introuvable : " + o;
        }
        if (j.polarPath.empty()) return "Aucun fichier de polaire indiqué pour " + j.runName();
        if (std::string busy = lock.take(j.polarPath); !busy.empty()) return busy;
        // XFOIL adds to an existing polar file or refuses it; and a failed
        // run must not leave the old polar behind as if it were the new one.
        fs::remove(j.polarPath, ec);
        fs::create_directories(fs::path(j.polarPath).parent_path(), ec);
        std::vector<std::string> files = {j.datPath, j.polarPath};
        for (std::string& f : files) {
            if (f.size() <= kXfoilMaxFileName) continue;
            const std::string shortened = SolverFolder::shared().shortPath(f);
            if (shortened.empty())
                return "XFOIL n'accepte que des noms de fichier de 64 caractères au plus, celui-ci en a " +
                       std::to_string(f.size()) + " : " + f;
            f = shortened;
        }
        // XFOIL works in the run's folder, through a link to the program: its
        // scratch file of the boundary layer is then the run's own.
        dir = SolverFolder::shared().runFolder(j.runName());
        if (dir.empty()) return "Impossible de préparer un dossier de travail pour XFOIL dans " + fs::temp_directory_path(ec).string();
        const std::string exe = j.xfoilPath.substr(j.xfoilPath.rfind('/') + 1);
        const fs::path link = dir / exe;
        fs::create_symlink(j.xfoilPath, link, ec);
        if (ec) return "Impossible de préparer un dossier de travail pour XFOIL dans " + dir.string();
        scratch = dir / kXfoilScratch;

        commandFile = dir / kXfoilCommandFile;
        keyFile = dir / j.keyFile();
        marker = dir / kXfoilRunMarker;
        XfoilJob solverJob = j;
        solverJob.datPath = files[0];
        solverJob.polarPath = files[1];
        if (!writeText(commandFile, xfoilCommandText(link.string(), dir.string(), j.keyFile())))
            return "Impossible d'écrire " + commandFile.string();
        if (!writeText(keyFile, xfoilKeyText(solverJob))) return "Impossible d'écrire " + keyFile.string();
        writeText(marker, std::to_string(::getpid()) + "\n" + j.keyFile() + "\n");

        const char* path = std::getenv("PATH");
        CommandFileRun run;
        run.script = commandFile;
        run.workDir = dir;
        run.environment = {{"DISPLAY", display},
                           {"PATH", dir.string() + "/" + (path && *path ? std::string(":") + path : "")}};
        run.timeoutSeconds = j.timeoutSeconds;
        run.runFiles = {commandFile, keyFile, marker};
        title = "XFOIL " + j.name + " Re " + j.Re;
        expected = expectedPoints(j);
        command = std::make_unique<RunningCommand>(run);
        return "";
    }

    // Everything after the end: the scripts go, a polar cut short goes too.
    std::string finish() {
        std::error_code ec;
        const ProcessOutcome outcome = command->outcome();
        if (!dir.empty()) fs::remove_all(dir, ec);
        std::string reason;
        if (!outcome.clean()) {
            fs::remove(job->polarPath, ec);
            reason = describeOutcome(outcome, "XFOIL", job->timeoutSeconds);
        } else if (!fs::exists(job->polarPath, ec)) {
            reason = "XFOIL n'a enregistré aucune polaire pour " + job->runName();
        }
        lock.release();
        command.reset();
        return reason;
    }
};

}  // namespace

std::vector<std::string> runXfoilBatch(const std::vector<XfoilJob>& jobs, int width, const WaitHooks& hooks) {
    std::vector<std::string> reasons(jobs.size());
    if (jobs.empty()) return reasons;
    width = std::max(width, 1);
    const std::string cancelled = describeOutcome({ProcessOutcome::Cancelled, 0}, "XFOIL", 0);
    for (size_t i = 0; i < jobs.size(); ++i) {
        // Each job is checked as a run of its own would be; one good path is
        // the usual case, so the answer is the same for all.
        reasons[i] = checkProgram(jobs[i].xfoilPath);
    }
    std::string displayReason;
    std::string display;
    if (std::any_of(reasons.begin(), reasons.end(), [](const std::string& r) { return r.empty(); })) {
        display = VirtualDisplay::shared().display(displayReason);
        if (display.empty()) {
            for (std::string& r : reasons)
                if (r.empty()) r = displayReason;
        }
    }

    std::vector<std::unique_ptr<BatchRun>> runs;  // started, in the jobs' order
    size_t next = 0;
    auto isCancelled = [&] { return hooks.progress && hooks.progress->cancelled(); };
    auto report = [&] {
        if (!hooks.progress) return;
        std::vector<std::pair<std::string, double>> states;
        for (const auto& r : runs) states.emplace_back(r->title, r->command ? r->fraction() : 1.0);
        hooks.progress->reportRuns(states);
    };
    auto overall = [&] {
        double sum = 0.0;
        for (const auto& r : runs) sum += r->command ? r->fraction() : 1.0;
        return sum / static_cast<double>(jobs.size());
    };
    auto running = [&] {
        int n = 0;
        for (const auto& r : runs) n += r->command ? 1 : 0;
        return n;
    };
    bool stop = false;
    using Clock = std::chrono::steady_clock;
    auto lastHooks = Clock::now();
    const auto step = std::chrono::milliseconds(1000);
    for (;;) {
        // Starts in the jobs' order, so that the runs and their reports
        // follow the Reynolds numbers as the one-at-a-time runs do.
        while (!stop && next < jobs.size() && running() < width) {
            const size_t i = next++;
            if (!reasons[i].empty()) continue;
            if (isCancelled()) {
                stop = true;
                break;
            }
            auto run = std::make_unique<BatchRun>();
            run->job = &jobs[i];
            run->index = i;
            reasons[i] = run->start(display);
            if (!reasons[i].empty()) {
                if (run->command) reasons[i] = run->finish();
                else if (!run->dir.empty()) {
                    std::error_code ec;
                    fs::remove_all(run->dir, ec);
                }
                continue;
            }
            if (hooks.progress) hooks.progress->report(run->title, overall());
            runs.push_back(std::move(run));
            report();
        }
        if (running() == 0 && (stop || next >= jobs.size())) break;

        // A run's end is noticed at once and the next one started; the hooks
        // are served once a second whatever ends.
        bool anyEnded = false;
        while (!anyEnded && Clock::now() - lastHooks < step) {
            for (auto& r : runs) {
                if (r->command && r->command->ended()) {
                    reasons[r->index] = r->finish();
                    anyEnded = true;
                }
            }
            if (!anyEnded) std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        if (anyEnded && Clock::now() - lastHooks < step) {
            report();
            continue;
        }
        lastHooks = Clock::now();
        report();
        if (hooks.betweenWaits) hooks.betweenWaits();
        const bool cancel = isCancelled();
        for (auto& r : runs) {
            if (!r->command) continue;
            if (cancel) r->command->stop(ProcessOutcome::Cancelled);
            else if (r->command->pastDeadline()) r->command->stop(ProcessOutcome::TimedOut);
            if (r->command->ended()) reasons[r->index] = r->finish();
        }
        if (cancel) stop = true;
    }
    // Runs never started after a Cancel are cancelled too.
    for (size_t i = next; i < jobs.size(); ++i)
        if (reasons[i].empty()) reasons[i] = cancelled;
    return reasons;
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

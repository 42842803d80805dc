#include "airfoils/solver_process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "core/progress.h"

extern char** environ;

namespace tarvokin {

namespace {

using Clock = std::chrono::steady_clock;

// The environment of the parent with some variables set or replaced.
std::vector<std::string> environmentWith(const std::vector<std::pair<std::string, std::string>>& changes) {
    std::vector<std::string> env;
    for (char** e = environ; e && *e; ++e) {
        const std::string entry = *e;
        const std::string name = entry.substr(0, entry.find('='));
        const bool replaced =
            std::any_of(changes.begin(), changes.end(), [&](const auto& c) { return c.first == name; });
        if (!replaced) env.push_back(entry);
    }
    for (const auto& [name, value] : changes) env.push_back(name + "=" + value);
    return env;
}

// Kills the process group of the shell (the solver is in it too) and reaps the shell.
void killGroup(pid_t pid) {
    ::kill(-pid, SIGKILL);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
}

// The runs under way, readable from a signal handler: fixed storage, and a
// slot is marked used only once it is filled.
// Room for the polar batch on a machine with many cores.
constexpr int kLiveRuns = 32, kRunFiles = 3, kPathMax = 4096;
struct LiveRun {
    volatile sig_atomic_t used = 0;
    pid_t group = 0;
    char files[kRunFiles][kPathMax] = {};
};
LiveRun liveRuns[kLiveRuns];

int registerRun(pid_t group, const std::vector<std::filesystem::path>& files) {
    for (int i = 0; i < kLiveRuns; ++i) {
        LiveRun& r = liveRuns[i];
        if (r.used) continue;
        r.group = group;
        for (int k = 0; k < kRunFiles; ++k) {
            const std::string f = k < static_cast<int>(files.size()) ? files[static_cast<size_t>(k)].string() : "";
            std::snprintf(r.files[k], kPathMax, "%s", f.size() < kPathMax ? f.c_str() : "");
        }
        r.used = 1;
        return i;
    }
    return -1;
}

void unregisterRun(int slot) {
    if (slot >= 0) liveRuns[slot].used = 0;
}

// Only async-signal-safe calls: it runs in a signal handler.
void stopLiveRuns() {
    for (LiveRun& r : liveRuns) {
        if (!r.used) continue;
        ::kill(-r.group, SIGKILL);
        for (const char* f : r.files)
            if (f[0]) ::unlink(f);
    }
}

void stopOnSignal(int sig) {
    stopLiveRuns();
    ::signal(sig, SIG_DFL);
    ::raise(sig);
}

void killGroupOnSignal(int) { ::kill(0, SIGKILL); }

// A process in the run's group that lives only to kill the group when the
// program dies: the kernel tells it then, as it tells the shell, but the
// solver the shell started is no child of the program and would be left.
// Between fork and exit only async-signal-safe calls.
pid_t startWatchdog(pid_t group, pid_t program) {
    const pid_t w = ::fork();
    if (w != 0) return w;
    for (int sig : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) ::signal(sig, SIG_DFL);
    if (::setpgid(0, group) != 0) ::_exit(0);  // the run has already ended
    struct sigaction sa {};
    sa.sa_handler = killGroupOnSignal;
    ::sigaction(SIGUSR1, &sa, nullptr);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::prctl(PR_SET_PDEATHSIG, SIGUSR1);
    if (::getppid() != program) ::kill(0, SIGKILL);  // died before the request took
    for (;;) ::pause();
}

void endWatchdog(pid_t w) {
    if (w <= 0) return;
    ::kill(w, SIGKILL);
    int status = 0;
    while (::waitpid(w, &status, 0) < 0 && errno == EINTR) {
    }
}

ProcessOutcome outcomeOf(int status) {
    ProcessOutcome o;
    if (WIFSIGNALED(status)) {
        o.end = ProcessOutcome::Signalled;
        o.code = WTERMSIG(status);
    } else {
        o.end = ProcessOutcome::Exited;
        o.code = WEXITSTATUS(status);
    }
    return o;
}

}  // namespace

RunningCommand::RunningCommand(const CommandFileRun& run) {
    // Everything the child needs is made before the fork: between fork and
    // exec a threaded program may only make async-signal-safe calls.
    std::string shell = "/bin/sh", script = run.script.string(), dir = run.workDir.string();
    std::vector<char*> argv = {shell.data(), script.data(), nullptr};
    std::vector<std::string> env = environmentWith(run.environment);
    std::vector<char*> envp;
    for (auto& e : env) envp.push_back(e.data());
    envp.push_back(nullptr);
    deadline_ = run.timeoutSeconds > 0 ? Clock::now() + std::chrono::seconds(run.timeoutSeconds)
                                       : Clock::time_point::max();

    const pid_t program = ::getpid();
    const pid_t pid = ::fork();
    if (pid < 0) {  // NotStarted
        done_ = true;
        return;
    }
    if (pid == 0) {
        // A group of its own, so that a stop reaches the solver behind the shell.
        ::setpgid(0, 0);
        // The shell dies with the program, however the program ends.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != program) ::_exit(126);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        for (int sig : {SIGPIPE, SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGCHLD}) ::signal(sig, SIG_DFL);
        if (!dir.empty() && ::chdir(dir.c_str()) != 0) ::_exit(126);
        // A solver run minimised: its console output is not looked at.
        const int null = ::open("/dev/null", O_RDWR);
        if (null >= 0) {
            ::dup2(null, 0);
            ::dup2(null, 1);
            ::dup2(null, 2);
        }
        ::execve(shell.c_str(), argv.data(), envp.data());
        ::_exit(127);
    }
    ::setpgid(pid, pid);  // also here, so that a kill can't come before the child's own call
    pid_ = pid;
    live_ = registerRun(pid, run.runFiles);
    watchdog_ = startWatchdog(pid, program);
}

RunningCommand::~RunningCommand() {
    if (!done_) stop(ProcessOutcome::Cancelled);
}

// Whatever way the run ends, it leaves the list and its watchdog goes.
void RunningCommand::leave() {
    done_ = true;
    unregisterRun(live_);
    live_ = -1;
    endWatchdog(watchdog_);
    watchdog_ = -1;
}

bool RunningCommand::ended() {
    if (done_) return true;
    for (;;) {
        int status = 0;
        const pid_t r = ::waitpid(pid_, &status, WNOHANG);
        if (r == pid_) {
            outcome_ = outcomeOf(status);
            leave();
            return true;
        }
        if (r < 0 && errno == EINTR) continue;
        if (r < 0) {  // reaped elsewhere: its result is lost
            outcome_.end = ProcessOutcome::Exited;
            outcome_.code = 0;
            leave();
            return true;
        }
        return false;
    }
}

void RunningCommand::stop(ProcessOutcome::End why) {
    if (ended()) return;
    killGroup(pid_);
    outcome_.end = why;
    outcome_.code = 0;
    leave();
}

bool RunningCommand::pastDeadline() const { return Clock::now() >= deadline_; }

ProcessOutcome runCommandFile(const CommandFileRun& run, const WaitHooks& hooks,
                              const std::function<void()>& eachStep) {
    if (hooks.progress && hooks.progress->cancelled()) {
        ProcessOutcome outcome;
        outcome.end = ProcessOutcome::Cancelled;
        return outcome;
    }
    RunningCommand command(run);
    const auto step = std::chrono::milliseconds(std::max(run.stepMs, 1));
    for (;;) {
        const auto stepEnd = Clock::now() + step;
        // Within a step the end of the script is noticed at once, so a short
        // run doesn't cost a whole second.
        for (;;) {
            if (command.ended()) return command.outcome();
            const auto now = Clock::now();
            if (now >= stepEnd || command.pastDeadline()) break;
            std::this_thread::sleep_for(std::min<Clock::duration>(std::chrono::milliseconds(20), stepEnd - now));
        }
        if (eachStep) eachStep();
        if (hooks.betweenWaits) hooks.betweenWaits();
        if (hooks.progress && hooks.progress->cancelled()) {
            command.stop(ProcessOutcome::Cancelled);
            return command.outcome();
        }
        if (command.pastDeadline()) {
            command.stop(ProcessOutcome::TimedOut);
            return command.outcome();
        }
    }
}

void stopSolversOnSignals() {
    struct sigaction sa {};
    sa.sa_handler = stopOnSignal;
    sigemptyset(&sa.sa_mask);
    for (int sig : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(sig, &sa, nullptr);
}

void stopSolverRuns() { stopLiveRuns(); }

std::string describeOutcome(const ProcessOutcome& o, const std::string& program, int timeoutSeconds) {
    auto signalName = [](int sig) {
        const char* s = ::strsignal(sig);
        return std::string(s ? s : "signal " + std::to_string(sig));
    };
    switch (o.end) {
        case ProcessOutcome::NotStarted:
            return "Impossible de démarrer " + program + " : le système refuse un nouveau processus";
        case ProcessOutcome::Cancelled:
            return program + " : calcul annulé";
        case ProcessOutcome::TimedOut:
            return program + " arrêté après le temps limite de " + std::to_string(timeoutSeconds) + " s";
        case ProcessOutcome::Signalled:
            return program + " s'est arrêté en erreur (" + signalName(o.code) + ")";
        case ProcessOutcome::Exited:
            break;
    }
    // The shell's own codes: 126 a program it can't run, 127 one it can't
    // find, 128 + n a program that died of signal n.
    if (o.code == 0) return "";
    if (o.code == 126) return program + " n'a pas pu être lancé";
    if (o.code == 127) return program + " est introuvable";
    if (o.code > 128 && o.code < 128 + 65) return program + " s'est arrêté en erreur (" + signalName(o.code - 128) + ")";
    return program + " s'est terminé avec le code d'erreur " + std::to_string(o.code);
}

}  // namespace tarvokin

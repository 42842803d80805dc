// Running a solver's command file and waiting for it without freezing the
// caller: the wait goes in steps of one second, and between steps the caller
// handles its events (the GUI) or nothing (the command-line program), reports
// progress, and may cancel. A time limit stops a solver that hangs.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tarvokin {

struct Progress;

// What the caller gives to a wait.
struct WaitHooks {
    std::function<void()> betweenWaits;  // the GUI passes its event processing
    Progress* progress = nullptr;        // reports and Cancel; none when nobody watches
};

struct CommandFileRun {
    std::filesystem::path script;     // run with /bin/sh
    std::filesystem::path workDir;    // the folder the script starts in
    std::vector<std::pair<std::string, std::string>> environment;  // variables set or replaced
    int timeoutSeconds = 0;           // 0 or less: no limit
    int stepMs = 1000;                // one wait step
    // Files of the run (its scripts) removed when the program is stopped
    // while the run goes on; at most three are kept.
    std::vector<std::filesystem::path> runFiles;
};

struct ProcessOutcome {
    enum End { Exited, Signalled, TimedOut, Cancelled, NotStarted };
    End end = NotStarted;
    int code = 0;  // exit code, or the signal that ended it
    // The normal end: the script exited with 0.
    bool clean() const { return end == Exited && code == 0; }
};

// Starts the script in a process group of its own and waits. `eachStep` runs
// after every step that ended without the script ending, before betweenWaits.
// A cancel or the time limit kills the whole group (the shell and the solver
// it started) and reaps the shell.
ProcessOutcome runCommandFile(const CommandFileRun& run, const WaitHooks& hooks,
                              const std::function<void()>& eachStep = {});

// A command file started without waiting for it: the polar batch starts
// several and watches them all in one loop of its own. The same start, group,
// watchdog and kill as runCommandFile; the destructor kills a run still going.
class RunningCommand {
public:
    explicit RunningCommand(const CommandFileRun& run);
    ~RunningCommand();
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;

    // True once the run has ended (outcome() then tells how); never waits.
    bool ended();
    // Kills the group and reaps the shell; the outcome becomes `why`
    // (Cancelled or TimedOut). Nothing when the run has already ended.
    void stop(ProcessOutcome::End why);
    bool pastDeadline() const;
    const ProcessOutcome& outcome() const { return outcome_; }

private:
    void leave();

    int pid_ = -1;
    int watchdog_ = -1;
    int live_ = -1;
    bool done_ = false;
    std::chrono::steady_clock::time_point deadline_;
    ProcessOutcome outcome_;
};

// A run never outlives the program. The child asks the kernel to kill it
// when the program dies, and a watchdog in its group takes the solver the
// shell started with it. TERM, INT and HUP, once these handlers are
// installed (by main), kill the groups of the runs under way and remove
// their files before the program ends as the signal says.
void stopSolversOnSignals();

// Kills the groups of the runs under way and removes their files: for a
// program that quits while a run goes on. The runs then end as killed.
void stopSolverRuns();

// One line for the user about an outcome that is not clean; `program` names
// the solver ("XFOIL").
std::string describeOutcome(const ProcessOutcome& o, const std::string& program, int timeoutSeconds);

}  // namespace tarvokin

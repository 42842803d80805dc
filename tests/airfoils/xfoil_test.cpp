#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <thread>

#include "airfoils/airfoil_selection.h"
#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "entry/session.h"
#include "core/progress.h"
#include "core/workbench.h"
#include "core/profile_file.h"
#include "support/temp_dir.h"
#include "support/installed_workbench.h"

using namespace tarvokin;
namespace fs = std::filesystem;
using test::readBytes;
using test::TempDir;
using test::writeBytes;

namespace {

XfoilJob clarkyJob() {
    XfoilJob job;
    job.name = "CLARKY";
    job.Re = "220000";
    job.datPath = "/opt/tv/DATA/CLARKY.DAT";
    job.polarPath = "/opt/tv/POLAIRES/CLARKY_220000.POL";
    job.iterations = 100;
    job.alphaFirst = "0";
    job.alphaLast = "1.25";
    job.alphaStep = "0.005";  // two decimals: "0.01"
    return job;
}

// Rows behind the header of a polar file.
int polarRows(const fs::path& file) {
    std::ifstream in(file);
    std::string line;
    bool header = true;
    int rows = 0;
    while (std::getline(in, line)) {
        if (!header && line.find_first_not_of(' ') != std::string::npos) ++rows;
        if (line.find("------") != std::string::npos) header = false;
    }
    return rows;
}

// A program folder with the shipped outline of CLARKY in the slot 0 list.
struct Installation {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Installation() {
        fs::create_directories(dir / "DATA");
        fs::copy_file(fs::path(TARVOKIN_DATA_DIR) / "DATA" / "CLARKY.DAT", dir / "DATA" / "CLARKY.DAT");
        wb.catalogue.rows = {{"CLARKY", 0, 0, "DATA/CLARKY.DAT"}};
        wb.fillAirfoilLists();
        wb.sheet.setListIndex(F_PROFILS::CB_1[0], 0);
        wb.settings.xfoilPath = "/usr/bin/xfoil";
    }
    fs::path polar() const { return dir / "POLAIRES" / "CLARKY_220000.POL"; }
    // A "solver" that never ends; it writes the pid of its child first.
    void hangingSolver() {
        writeBytes(dir / "hang.sh", "#!/bin/sh\nsleep 60 &\necho $! > " + (dir / "child.pid").string() + "\nwait\n");
        fs::permissions(dir / "hang.sh", fs::perms::owner_all);
        wb.settings.xfoilPath = (dir / "hang.sh").string();
    }
    // True when the hanging solver's child has gone with it.
    // A killed process lingers a moment before the system lets it go: allow
    // it two seconds, so that a loaded machine doesn't fail the test.
    bool childGone() const {
        const std::string pid = readBytes(dir / "child.pid");
        if (pid.empty()) return false;
        for (int i = 0; i < 100; ++i) {
            const std::string stat = readBytes("/proc/" + std::to_string(std::stoi(pid)) + "/stat");
            if (stat.empty() || stat.find(") Z ") != std::string::npos) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return false;
    }
    bool scriptsGone() const {
        return !fs::exists(dir / "START_XFOIL.CMD") && !fs::exists(dir / "CLARKY_220000.KEY");
    }
};

struct Recorder : Progress {
    double last = -1;
    int cancelAfter = -1;  // cancels from this many questions on
    int asked = 0;
    void report(const std::string&, double fraction) override { last = fraction; }
    bool cancelled() override { return cancelAfter >= 0 && asked++ >= cancelAfter; }
};

double secondsSince(std::chrono::steady_clock::time_point t) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t).count();
}

}  // namespace

TEST(XfoilScript, CommandFileStartsTheSolverInItsFolderOnTheScriptOfTheProgramFolder) {
    EXPECT_EQ(xfoilCommandText("/usr/bin/xfoil", "/opt/tv", "CLARKY_220000.KEY"),
              "cd /usr/bin/\n"
              "xfoil < /opt/tv/CLARKY_220000.KEY\n");
    // XFOIL in the program's folder: the script is named alone, two blanks before "<".
    EXPECT_EQ(xfoilCommandText("/opt/tv/xfoil", "/opt/tv", "CLARKY_220000.KEY"),
              "cd /opt/tv/\n"
              "xfoil  < CLARKY_220000.KEY\n");
    // Under "Program Files" the short line too, though XFOIL lies elsewhere.
    EXPECT_EQ(xfoilCommandText("/usr/bin/xfoil", "/mnt/c/Program Files/tv", "CLARKY_220000.KEY"),
              "cd /usr/bin/\n"
              "xfoil  < CLARKY_220000.KEY\n");
}

TEST(XfoilScript, KeystrokesWithAndWithoutSmoothing) {
    XfoilJob job = clarkyJob();
    job.smooth = true;
    EXPECT_EQ(xfoilKeyText(job),
              "Load /opt/tv/DATA/CLARKY.DAT \n"
              "CLARKY_220000 \n"
              "\n"
              "PPAR\n"
              "n 140\n"
              "p 1.4\n"
              "T .2\n"
              "\n"
              "\n"
              "GDES\n"
              "CADD\n"
              "\n"
              "\n"
              "\n"
              "\n"
              "PANE\n"
              "MDES\n"
              "FILT 1.00\n"
              "EXEC\n"
              "\n"
              "PANE\n"
              "OPER\n"
              "VPAR\n"
              "N 9.00\n"
              "VACC 0.01 / XTR 0.25 1\n"
              "\n"
              "TYPE 1\n"
              "VISC 220000\n"
              "MACH 0.0000\n"
              "ITER\n"
              "100\n"
              "PACC\n"
              "/opt/tv/POLAIRES/CLARKY_220000.POL\n"
              "\n"
              "ASEQ 0.00 1.25 0.01 \n"
              "PACC\n"
              "\n"
              "QUIT\n"
              "\n");
    job.smooth = false;
    job.iterations = 250;
    job.alphaStep = "0.05";
    EXPECT_EQ(xfoilKeyText(job),
              "Load /opt/tv/DATA/CLARKY.DAT \n"
              "CLARKY_220000 \n"
              "\n"
              "PPAR\n"
              "n 140\n"
              "p 1.4\n"
              "T .2\n"
              "\n"
              "\n"
              "GDES\n"
              "CADD\n"
              "\n"
              "\n"
              "\n"
              "\n"
              "PANE\n"
              "MDES\n"
              "EXEC\n"
              "\n"
              "PANE\n"
              "OPER\n"
              "VPAR\n"
              "N 9.00\n"
              "VACC 0.01 / XTR 0.25 1\n"
              "\n"
              "TYPE 1\n"
              "VISC 220000\n"
              "MACH 0.0000\n"
              "ITER\n"
              "250\n"
              "PACC\n"
              "/opt/tv/POLAIRES/CLARKY_220000.POL\n"
              "\n"
              "ASEQ 0.00 1.25 0.05 \n"
              "PACC\n"
              "\n"
              "QUIT\n"
              "\n");
}

TEST(XfoilRun, SlotAirfoilGivesAPolarThatIsReadAndLeavesNoScripts) {
    Installation inst;
    Recorder progress;
    fs::path readFile;
    const PolarRun run = Calc_Polar(inst.wb, 0, "220000", "", "", "", {{}, &progress}, [&](const fs::path& p) {
        readFile = p;
        return polarRows(p) > 0;
    });
    EXPECT_EQ(run.reason, "");
    EXPECT_TRUE(run.saved);
    EXPECT_TRUE(run.read);
    EXPECT_EQ(readFile, inst.polar());
    // 0 to 1.25 by 0.05; a point that doesn't converge is left out.
    EXPECT_GT(polarRows(inst.polar()), 20);
    EXPECT_DOUBLE_EQ(progress.last, 1.0);
    EXPECT_TRUE(inst.scriptsGone());
}

TEST(XfoilRun, MissingNonExecutableOrCrashingSolverFailsWithAReasonAndLeavesNoPolar) {
    Installation inst;
    writeBytes(inst.polar(), "an old polar\n");
    bool readCalled = false;
    const auto reader = [&](const fs::path& p) {
        readCalled = true;
        return fs::exists(p);
    };
    inst.wb.settings.xfoilPath = (inst.dir / "nowhere" / "xfoil").string();
    PolarRun run = Calc_Polar(inst.wb, 0, std::nullopt, "", "", "", {}, reader);
    EXPECT_NE(run.reason.find("introuvable"), std::string::npos) << run.reason;
    EXPECT_FALSE(run.saved);
    EXPECT_TRUE(readCalled);  // the slot's record is emptied by the failed read
    EXPECT_FALSE(run.read);
    EXPECT_FALSE(fs::exists(inst.polar()));

    writeBytes(inst.dir / "xfoil", "not a program\n");
    fs::permissions(inst.dir / "xfoil", fs::perms::owner_read | fs::perms::owner_write);
    inst.wb.settings.xfoilPath = (inst.dir / "xfoil").string();
    run = Calc_Polar(inst.wb, 0, "220000", "", "", "", {}, reader);
    EXPECT_NE(run.reason.find("pas exécutable"), std::string::npos) << run.reason;
    EXPECT_FALSE(run.read);

    // A solver that dies halfway: its polar is cut short, so it is no polar.
    writeBytes(inst.dir / "xfoil", "#!/bin/sh\necho partial > " + inst.polar().string() + "\nkill -SEGV $$\n");
    fs::permissions(inst.dir / "xfoil", fs::perms::owner_all);
    run = Calc_Polar(inst.wb, 0, "220000", "", "", "", {}, reader);
    EXPECT_NE(run.reason.find("arrêté en erreur"), std::string::npos) << run.reason;
    EXPECT_FALSE(fs::exists(inst.polar()));

    // A Reynolds number of 0 for a slot does nothing at all.
    readCalled = false;
    run = Calc_Polar(inst.wb, 0, "0", "", "", "", {}, reader);
    EXPECT_EQ(run.reason, "");
    EXPECT_FALSE(readCalled);
}

TEST(XfoilRun, APolarWithoutAConvergedPointIsAFailedRunWhoseFiguresAreNotTaken) {
    Installation inst;
    inst.wb.catalogue.rows[0].Cm0 = -0.08;
    inst.wb.catalogue.rows[0].Alpha0 = -3.5;
    // What XFOIL saves when no angle converges: the header and no row.
    writeBytes(inst.dir / "xfoil", "#!/bin/sh\nmkdir -p " + (inst.dir / "POLAIRES").string() + "\ncat > " +
                                       inst.polar().string() +
                                       " <<EOF\n XFOIL polar\n\n   alpha    CL        CD       CDp       CM\n"
                                       "  ------ -------- --------- --------- --------\nEOF\n");
    fs::permissions(inst.dir / "xfoil", fs::perms::owner_all);
    inst.wb.settings.xfoilPath = (inst.dir / "xfoil").string();
    struct Texts : Progress {
        std::vector<std::string> seen;
        void report(const std::string& text, double) override { seen.push_back(text); }
    } progress;
    const PolarRun run = Calc_Polar(inst.wb, 0, "220000", "", "", "", {{}, &progress}, [&](const fs::path& p) {
        return Read_Polar(inst.wb.polars, p, 0, 3);
    });
    // The reader keeps its behaviour: the file is read in full.
    EXPECT_TRUE(run.read);
    EXPECT_TRUE(run.saved);
    EXPECT_FALSE(run.computed());
    EXPECT_NE(run.reason.find("aucun point convergé"), std::string::npos) << run.reason;
    EXPECT_NE(run.reason.find("220000"), std::string::npos) << run.reason;
    ASSERT_FALSE(progress.seen.empty());
    EXPECT_EQ(progress.seen.back(), run.reason);
    // The catalogue keeps the figures it had.
    fillFiguresGrid(inst.wb);
    EXPECT_EQ(inst.wb.catalogue.rows[0].Cm0, -0.08);
    EXPECT_EQ(inst.wb.catalogue.rows[0].Alpha0, -3.5);
}

TEST(XfoilRun, HangingSolverIsStoppedByTheTimeLimitAndByCancel) {
    Installation inst;
    inst.hangingSolver();
    inst.wb.settings.xfoilTimeout = 2;
    int waits = 0;
    auto start = std::chrono::steady_clock::now();
    PolarRun run = Calc_Polar(inst.wb, 110, "220000", (inst.dir / "P.POL").string(), "DATA/CLARKY.DAT", "CLARKY",
                              {[&] { ++waits; }, nullptr});
    EXPECT_NE(run.reason.find("temps limite"), std::string::npos) << run.reason;
    EXPECT_FALSE(run.saved);
    EXPECT_GE(waits, 1);
    EXPECT_LT(secondsSince(start), 6.0);
    EXPECT_TRUE(inst.childGone());  // the whole process group went, not only the shell
    EXPECT_TRUE(!fs::exists(inst.dir / "START_XFOIL.CMD") && !fs::exists(inst.dir / "CLARKY_220000.KEY"));

    fs::remove(inst.dir / "child.pid");
    inst.wb.settings.xfoilTimeout = 120;
    Recorder cancel;
    cancel.cancelAfter = 1;  // the question before the start, then one wait
    start = std::chrono::steady_clock::now();
    run = Calc_Polar(inst.wb, 0, "220000", "", "", "", {{}, &cancel});
    EXPECT_NE(run.reason.find("annulé"), std::string::npos) << run.reason;
    EXPECT_LT(secondsSince(start), 5.0);
    EXPECT_TRUE(inst.childGone());
    EXPECT_TRUE(inst.scriptsGone());
}

TEST(XfoilRun, LongPathsOfAUsersHomeReachTheSolverThroughShortLinks) {
    test::TempDir dir;
    const fs::path home = dir / "a-home-folder-with-a-rather-long-name" / ".local" / "share" / "tarvokin";
    fs::create_directories(home);
    test::copyInstallation(home);
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    const std::string outline = (home / "DATA" / "CLARKY.DAT").string();
    const std::string polar = (home / "POLAIRES" / "CLARKY_100000.POL").string();
    ASSERT_GT(polar.size(), kXfoilMaxFileName);
    PolarRun run = Calc_Polar(wb, 110, "100000", polar, outline, "CLARKY");
    EXPECT_TRUE(run.saved) << run.reason;
    PolarStore store;
    EXPECT_TRUE(Read_Polar(store, polar, 0, 2));
    EXPECT_GT(store.Polars[0][2].LastRow, 20);
}

namespace {

// The command-line program computing a polar with a solver that never ends,
// as a process of its own that the test can stop as a user or the system would.
struct CliWithHangingSolver {
    Installation inst;
    pid_t cli = -1;
    CliWithHangingSolver() {
        test::copyInstallation(inst.dir.path());
        inst.hangingSolver();
        WriteProfileString("XFOIL", "Path", inst.wb.settings.xfoilPath, inst.dir / "TARVOKIN.INI");
        const std::string home = inst.dir.path().string(), dat = (inst.dir / "DATA" / "CLARKY.DAT").string();
        cli = ::fork();
        if (cli == 0) {
            const int null = ::open("/dev/null", O_RDWR);
            ::dup2(null, 1);
            ::dup2(null, 2);
            ::execl(TARVOKIN_CLI, TARVOKIN_CLI, "compute-polar", dat.c_str(), "CLARKY", "100000", "--home",
                    home.c_str(), static_cast<char*>(nullptr));
            ::_exit(127);
        }
    }
    ~CliWithHangingSolver() {
        if (cli > 0) {
            ::kill(cli, SIGKILL);
            ::waitpid(cli, nullptr, 0);
        }
    }
    // The solver has started when its child has written its pid.
    bool solverStarted() const {
        for (int i = 0; i < 500; ++i) {
            if (!readBytes(inst.dir / "child.pid").empty()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return false;
    }
    int stop(int sig) {
        ::kill(cli, sig);
        int status = 0;
        ::waitpid(cli, &status, 0);
        cli = -1;
        return WIFSIGNALED(status) ? WTERMSIG(status) : -1;
    }
    bool runFilesGone() const {
        return !fs::exists(inst.dir / "START_XFOIL.CMD") && !fs::exists(inst.dir / "CLARKY_100000.KEY") &&
               !fs::exists(inst.dir / "START_XFOIL.RUN");
    }
};

}  // namespace

TEST(XfoilOrphans, TermOrIntStopsTheSolverGroupAndRemovesTheScripts) {
    for (int sig : {SIGTERM, SIGINT}) {
        CliWithHangingSolver run;
        ASSERT_TRUE(run.solverStarted());
        EXPECT_EQ(run.stop(sig), sig);
        EXPECT_TRUE(run.inst.childGone()) << sig;
        EXPECT_TRUE(run.runFilesGone()) << sig;
    }
}

TEST(XfoilOrphans, AProgramKilledHardTakesItsSolverAndTheNextStartRemovesTheScripts) {
    CliWithHangingSolver run;
    ASSERT_TRUE(run.solverStarted());
    EXPECT_EQ(run.stop(SIGKILL), SIGKILL);
    EXPECT_TRUE(run.inst.childGone());
    ASSERT_TRUE(fs::exists(run.inst.dir / "START_XFOIL.CMD"));  // nothing could remove them then
    Workbench next(run.inst.dir.path());
    ReadSettingsAndCatalogue(next);
    EXPECT_TRUE(run.runFilesGone());
}

TEST(XfoilOrphans, ScriptsOfARunThatStillGoesAreKept) {
    Installation inst;
    writeBytes(inst.dir / "START_XFOIL.CMD", "x\n");
    writeBytes(inst.dir / "A_1.KEY", "x\n");
    writeBytes(inst.dir / "START_XFOIL.RUN", std::to_string(::getpid()) + "\nA_1.KEY\n");
    removeStaleXfoilRun(inst.dir.path());
    EXPECT_TRUE(fs::exists(inst.dir / "A_1.KEY"));
    EXPECT_TRUE(fs::exists(inst.dir / "START_XFOIL.CMD"));
}

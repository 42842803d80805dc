#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "airfoils/airfoil_selection.h"
#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "core/progress.h"
#include "core/workbench.h"
#include "support/installed_workbench.h"
#include "support/temp_dir.h"

using namespace tarvokin;
namespace fs = std::filesystem;
using test::readBytes;
using test::TempDir;
using test::writeBytes;

namespace {

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
    fs::path polar(int re) const { return dir / "POLAIRES" / ("CLARKY_" + std::to_string(re) + ".POL"); }
    std::vector<int> allReynolds() const { return {kStandardReynolds.begin(), kStandardReynolds.end()}; }
};

// Watches the batch: the most runs seen under way at once, and Cancel.
struct Watch : Progress {
    size_t mostAtOnce = 0;
    int cancelAfter = -1;  // cancels from this many questions on
    int asked = 0;
    void reportRuns(const std::vector<std::pair<std::string, double>>& runs) override {
        size_t going = 0;
        for (const auto& r : runs) going += r.second < 1.0 ? 1 : 0;
        mostAtOnce = std::max(mostAtOnce, going);
    }
    bool cancelled() override { return cancelAfter >= 0 && asked++ >= cancelAfter; }
};

bool processGone(pid_t pid) {
    // A killed process lingers a moment before the system lets it go.
    for (int i = 0; i < 100; ++i) {
        const std::string stat = readBytes("/proc/" + std::to_string(pid) + "/stat");
        if (stat.empty() || stat.find(") Z ") != std::string::npos) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
}

bool noScriptsIn(const fs::path& dir) {
    for (const auto& e : fs::directory_iterator(dir)) {
        const std::string n = e.path().filename().string();
        if (n == "START_XFOIL.CMD" || n == "START_XFOIL.RUN" || e.path().extension() == ".KEY") return false;
    }
    return true;
}

}  // namespace

// The selection of a new airfoil with its six polars computed one at a time,
// then in another folder with the batch: the same files to the byte, the same
// records in the store, and the batch really ran its runs side by side.
TEST(XfoilBatch, ANewAirfoilsSixPolarsAtOnceAreTheOneAtATimePolars) {
    Installation serial;
    serial.wb.computePolar = [&](int slot, int re) {
        const auto index = ReynoldsIndex(re);
        return Calc_Polar(serial.wb, slot, std::to_string(re), "", "", "", {},
                          [&](const fs::path& p) { return Read_Polar(serial.wb.polars, p, slot, index); })
            .read;
    };
    SelectSlotAirfoil(serial.wb, 0, serial.wb.computePolar);

    Installation batch;
    Watch watch;
    std::vector<PolarRun> runs;
    std::vector<int> asked;
    int computedOneByOne = 0;
    batch.wb.computePolar = [&](int, int) { return ++computedOneByOne, false; };
    batch.wb.computePolars = [&](int slot, const std::vector<int>& reynolds) {
        asked = reynolds;
        runs = Calc_Polars(batch.wb, slot, reynolds, {{}, &watch}, 2);
    };
    SelectSlotAirfoil(batch.wb, 0, batch.wb.computePolar);

    EXPECT_EQ(asked, batch.allReynolds());
    EXPECT_EQ(computedOneByOne, 0);
    EXPECT_EQ(watch.mostAtOnce, 2u);
    ASSERT_EQ(runs.size(), 6u);
    for (size_t i = 0; i < runs.size(); ++i) {
        const int re = kStandardReynolds[i];
        EXPECT_TRUE(runs[i].computed()) << re << ": " << runs[i].reason;
        EXPECT_EQ(runs[i].polar, batch.polar(re));
        const std::string bytes = readBytes(batch.polar(re));
        EXPECT_FALSE(bytes.empty()) << re;
        EXPECT_EQ(bytes, readBytes(serial.polar(re))) << re;
        const PolarRecord& a = serial.wb.polars.Polars[0][i];
        const PolarRecord& b = batch.wb.polars.Polars[0][i];
        EXPECT_EQ(a.LastRow, b.LastRow) << re;
        EXPECT_EQ(a.Cxmin, b.Cxmin) << re;
        EXPECT_EQ(a.Czopt, b.Czopt) << re;
        EXPECT_EQ(a.Cz_Decroch, b.Cz_Decroch) << re;
    }
    EXPECT_EQ(serial.wb.polars.figures[0].T_CXMin, batch.wb.polars.figures[0].T_CXMin);
    EXPECT_TRUE(noScriptsIn(batch.dir.path()));
    EXPECT_TRUE(noScriptsIn(batch.dir / "POLAIRES"));

    // All polars there: the selection reads them and computes nothing.
    asked.clear();
    SelectSlotAirfoil(batch.wb, 0, batch.wb.computePolar);
    EXPECT_TRUE(asked.empty());
}

// Cancel in the middle of a batch: every solver under way goes with its whole
// group, the runs not started never start, and no polar is left.
TEST(XfoilBatch, CancelStopsEverySolverAndLeavesNoPolar) {
    Installation inst;
    const fs::path children = inst.dir / "children";
    writeBytes(inst.dir / "hang.sh", "#!/bin/sh\nsleep 60 &\necho $! >> " + children.string() + "\nwait\n");
    fs::permissions(inst.dir / "hang.sh", fs::perms::owner_all);
    inst.wb.settings.xfoilPath = (inst.dir / "hang.sh").string();
    for (int re : inst.allReynolds()) writeBytes(inst.polar(re), "an old polar\n");

    Watch cancel;
    cancel.cancelAfter = 3;
    const std::vector<PolarRun> runs = Calc_Polars(inst.wb, 0, inst.allReynolds(), {{}, &cancel}, 2);

    ASSERT_EQ(runs.size(), 6u);
    for (const PolarRun& r : runs) EXPECT_NE(r.reason.find("annulé"), std::string::npos) << r.reason;
    std::ifstream in(children);
    std::vector<pid_t> pids;
    for (long pid = 0; in >> pid;) pids.push_back(static_cast<pid_t>(pid));
    EXPECT_EQ(pids.size(), 2u);  // two at a time; the four others never started
    for (pid_t pid : pids) EXPECT_TRUE(processGone(pid)) << pid;
    // The old polars were removed before the runs that started; a run stopped
    // leaves none in their place, and the runs never started touch nothing.
    EXPECT_FALSE(fs::exists(inst.polar(25000)));
    EXPECT_FALSE(fs::exists(inst.polar(50000)));
    EXPECT_EQ(readBytes(inst.polar(1500000)), "an old polar\n");
    EXPECT_TRUE(noScriptsIn(inst.dir.path()));
}

// Another program computing a polar of the same airfoil holds it: the batch
// says so and leaves that file alone, the others are computed; the selection
// does not read a polar still being written.
TEST(XfoilBatch, APolarAnotherProgramComputesIsLeftToItWithAClearReason) {
    Installation inst;
    const fs::path busy = inst.polar(100000);
    writeBytes(busy, "half a polar\n");
    const fs::path lockFile = inst.dir / "POLAIRES" / ".CLARKY_100000.POL.lock";
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        // The other program: it holds the polar's lock as its run does.
        const int fd = ::open(lockFile.c_str(), O_RDWR | O_CREAT, 0644);
        if (fd < 0 || ::flock(fd, LOCK_EX) != 0) ::_exit(1);
        const std::string pid = std::to_string(::getpid()) + "\n";
        if (::write(fd, pid.data(), pid.size()) < 0) ::_exit(1);
        if (::write(ready[1], "x", 1) != 1) ::_exit(1);
        ::pause();
        ::_exit(0);
    }
    char c = 0;
    ASSERT_EQ(::read(ready[0], &c, 1), 1);
    EXPECT_TRUE(polarBeingComputed(busy));

    std::vector<int> asked;
    std::vector<PolarRun> runs;
    inst.wb.computePolar = [](int, int) { return false; };
    inst.wb.computePolars = [&](int slot, const std::vector<int>& reynolds) {
        asked = reynolds;
        runs = Calc_Polars(inst.wb, slot, reynolds, {}, 2);
    };
    SelectSlotAirfoil(inst.wb, 0, inst.wb.computePolar);
    // The one-at-a-time run refuses it the same way.
    XfoilJob job;
    job.xfoilPath = "/usr/bin/xfoil";
    job.home = inst.dir.path();
    job.name = "CLARKY";
    job.Re = "100000";
    job.datPath = (inst.dir / "DATA" / "CLARKY.DAT").string();
    job.polarPath = busy.string();
    const std::string refused = runXfoil(job);
    ::kill(other, SIGKILL);
    ::waitpid(other, nullptr, 0);
    EXPECT_NE(refused.find("autre instance"), std::string::npos) << refused;

    ASSERT_EQ(runs.size(), 6u);
    EXPECT_EQ(asked, inst.allReynolds());
    EXPECT_NE(runs[2].reason.find("autre instance"), std::string::npos) << runs[2].reason;
    EXPECT_NE(runs[2].reason.find(std::to_string(other)), std::string::npos) << runs[2].reason;
    EXPECT_EQ(readBytes(busy), "half a polar\n");
    EXPECT_EQ(inst.wb.polars.Polars[0][2].LastRow, 0);  // not read half written
    for (size_t i : {0u, 1u, 3u, 4u, 5u}) EXPECT_TRUE(runs[i].computed()) << i << ": " << runs[i].reason;

    // Once the other program is gone (its lock with it) the polar is computed.
    EXPECT_FALSE(polarBeingComputed(busy));
    EXPECT_EQ(runXfoil(job), "");
    EXPECT_TRUE(PolarHasRows(busy));
    EXPECT_FALSE(fs::exists(lockFile));
}

namespace {

// The virtual displays this process has started and that still run.
int displaysOfThisProcess() {
    int n = 0;
    for (const auto& e : fs::directory_iterator("/proc")) {
        const std::string stat = readBytes(e.path() / "stat");
        const size_t close = stat.rfind(')');
        if (close == std::string::npos || stat.find("(Xvfb)") == std::string::npos) continue;
        std::istringstream rest(stat.substr(close + 2));
        std::string state;
        long parent = 0;
        rest >> state >> parent;
        n += parent == ::getpid() && state != "Z" ? 1 : 0;
    }
    return n;
}

}  // namespace

// Reading an airfoil whose polars are all there starts no display; the first
// run starts the one display, and a whole batch after it starts no other.
TEST(XfoilBatch, TheDisplayStartsWithTheFirstRunAndIsTheOneOfEveryRun) {
    Installation inst;
    inst.wb.computePolar = [](int, int) { return false; };
    fs::create_directories(inst.dir / "POLAIRES");
    for (int re : inst.allReynolds())
        fs::copy_file(fs::path(TARVOKIN_DATA_DIR) / "POLAIRES" / ("CLARKY_" + std::to_string(re) + ".POL"),
                      inst.polar(re));
    int batches = 0;
    inst.wb.computePolars = [&](int, const std::vector<int>&) { ++batches; };
    SelectSlotAirfoil(inst.wb, 0, inst.wb.computePolar);
    EXPECT_EQ(batches, 0);
    EXPECT_EQ(displaysOfThisProcess(), 0);

    for (int re : inst.allReynolds()) fs::remove(inst.polar(re));
    const std::vector<PolarRun> runs = Calc_Polars(inst.wb, 0, {25000, 50000, 100000}, {}, 3);
    for (const PolarRun& r : runs) EXPECT_TRUE(r.computed()) << r.reason;
    EXPECT_EQ(displaysOfThisProcess(), 1);
    EXPECT_TRUE(Calc_Polar(inst.wb, 0, "220000").computed());
    EXPECT_EQ(displaysOfThisProcess(), 1);
}

// Wall time of a pressure distribution (XFOIL started, one point computed and
// read back), inviscid and viscous; and of the database tree over a polar
// folder of 1000 files, which the database window rebuilds after each change.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "airfoils/polar_database.h"
#include "airfoils/pressure_run.h"
#include "core/workbench.h"
#include "entry/pressure_logic.h"
#include "entry/session.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;
namespace fs = std::filesystem;

fs::path freshHome(const char* tag) {
    const fs::path home = fs::temp_directory_path() / ("tarvokin-bench-" + std::string(tag) + std::to_string(::getpid()));
    fs::remove_all(home);
    fs::copy(TARVOKIN_DATA_DIR, home, fs::copy_options::recursive);
    return home;
}

void pressureRun(benchmark::State& state, bool viscous) {
    const fs::path home = freshHome(viscous ? "v" : "i");
    {
        Workbench wb(home);
        InstallWindowLogic(wb);
        ReadSettingsAndCatalogue(wb);
        wb.settings.xfoilPath = "/usr/bin/xfoil";
        wb.sheet.selectText(F_AERO::Combo5, "CLARKY");
        PreparePressureWindow(wb);
        wb.sheet.set(F_AERO::Ch_Visc, viscous ? "1" : "0");
        for (auto _ : state) {
            const PressureRun run = Calc_Pressure(wb);
            if (!run.result) state.SkipWithError(run.reason.c_str());
        }
    }
    fs::remove_all(home);
}

void BM_PressureInviscid(benchmark::State& state) { pressureRun(state, false); }
void BM_PressureViscous(benchmark::State& state) { pressureRun(state, true); }
BENCHMARK(BM_PressureInviscid)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10)->Repetitions(3);
BENCHMARK(BM_PressureViscous)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10)->Repetitions(3);

void BM_DatabaseTree1000Files(benchmark::State& state) {
    const fs::path home = freshHome("t");
    {
        Workbench wb(home);
        InstallWindowLogic(wb);
        ReadSettingsAndCatalogue(wb);
        // 1000 polar files: the shipped ones and airfoils of their own, a
        // quarter of them unknown to the catalogue.
        int n = static_cast<int>(std::distance(fs::directory_iterator(home / "POLAIRES"), fs::directory_iterator()));
        for (int i = 0; n < 1000; ++i, ++n) {
            const std::string name = (i % 4 == 0 ? "UNKNOWN" : "AG25") + std::to_string(i / 6);
            std::ofstream(home / "POLAIRES" / (name + "_" + std::to_string(25000 * (1 + i % 6)) + ".POL")) << "x\n";
        }
        for (auto _ : state) {
            RefreshDatabaseTree(wb);
            benchmark::DoNotOptimize(wb.database.tree.data());
        }
    }
    fs::remove_all(home);
}
BENCHMARK(BM_DatabaseTree1000Files)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(3);

}  // namespace

BENCHMARK_MAIN();

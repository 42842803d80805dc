// Wall time of the six polars of a new airfoil: what a modeller waits for
// when choosing an airfoil that has none yet (XFOIL runs one after another).
#include <benchmark/benchmark.h>

#include <filesystem>
#include <unistd.h>

#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;
namespace fs = std::filesystem;

void BM_SixPolarsOfANewAirfoil(benchmark::State& state) {
    const fs::path home = fs::temp_directory_path() / ("tarvokin-bench-" + std::to_string(::getpid()));
    fs::remove_all(home);
    fs::copy(TARVOKIN_DATA_DIR, home, fs::copy_options::recursive);
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    const std::string outline = (home / "DATA" / "E387.DAT").string();
    for (auto _ : state) {
        for (int re : kStandardReynolds) {
            const std::string polar = (home / "POLAIRES" / ("BENCH_" + std::to_string(re) + ".POL")).string();
            PolarRun run = Calc_Polar(wb, 110, std::to_string(re), polar, outline, "BENCH");
            if (!run.saved) state.SkipWithError(run.reason.c_str());
        }
    }
    fs::remove_all(home);
}
BENCHMARK(BM_SixPolarsOfANewAirfoil)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1)->Repetitions(3);

}  // namespace

BENCHMARK_MAIN();

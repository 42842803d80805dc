// The aspect-ratio panel's refresh on the shipped demo model with its three
// airfoils' polars read: ten aspect-ratio sweeps, the chosen-ratio and turn
// curves, five smoothed charts and the trace file. This runs at every slider
// move of the panel and in each master recalculation while it is open.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <unistd.h>

#include "entry/airfoil_choice.h"
#include "entry/entry_path.h"
#include "airfoils/airfoil_selection.h"
#include "design/aspect_ratio.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;
namespace fs = std::filesystem;

// A copy of the installation folder: the refresh writes its trace there and
// choosing the airfoils writes the project.
struct DemoHome {
    fs::path dir = fs::temp_directory_path() / ("tarvokin-aspect-bench-" + std::to_string(::getpid()));
    DemoHome() {
        fs::remove_all(dir);
        fs::copy(TARVOKIN_DATA_DIR, dir, fs::copy_options::recursive);
    }
    ~DemoHome() {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
};

void run(benchmark::State& state, bool analytic) {
    DemoHome home;
    Workbench wb(home.dir);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (home.dir / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    for (int slot = 0; slot < 3; ++slot) CB_1_Click(wb, slot, nullptr);
    wb.sheet.set(F_ALLONGEMENT::Option1[0], analytic ? "0" : "1");
    wb.sheet.set(F_ALLONGEMENT::Option1[1], analytic ? "1" : "0");
    for (auto _ : state) {
        MajAllongement(wb);
        benchmark::DoNotOptimize(wb.aspectRatio.charts[3].series.size());
    }
}

void BM_MajAllongementV222Demo(benchmark::State& state) { run(state, false); }
void BM_MajAllongementV223Demo(benchmark::State& state) { run(state, true); }
BENCHMARK(BM_MajAllongementV222Demo)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MajAllongementV223Demo)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

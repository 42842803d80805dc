// One undo on the demo model with the performance and aspect-ratio panels
// open: the cells of the last entry put back, then the recalculation that
// refreshes both panels. What Ctrl+Z costs before the windows redraw.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "core/workbench.h"
#include "entry/airfoil_choice.h"
#include "entry/entry_path.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

void BM_UndoOneEntryAnalysisOpen(benchmark::State& state) {
    // A copy of the shipped folder: the aspect-ratio panel writes its trace there.
    const auto home = std::filesystem::temp_directory_path() / "tarvokin-undo-bench";
    std::filesystem::remove_all(home);
    std::filesystem::copy(TARVOKIN_DATA_DIR, home, std::filesystem::copy_options::recursive);
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (home / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    for (int slot = 0; slot < 3; ++slot) CB_1_Click(wb, slot, nullptr);
    Click(wb, "F_Main", "Toolbar2", button::Performances);
    Click(wb, "F_Main", "Toolbar2", button::Allongement);
    int k = 0;
    for (auto _ : state) {
        state.PauseTiming();
        enterField(wb, F_GEO_SF::b7, (++k % 2) ? "640" : "660");
        state.ResumeTiming();
        Undo(wb);
        benchmark::DoNotOptimize(wb.sheet.text(F_GEO_SF::j6));
    }
    std::filesystem::remove_all(home);
}
BENCHMARK(BM_UndoOneEntryAnalysisOpen)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

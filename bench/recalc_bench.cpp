// The master recalculation of the shipped demo model (a two-panel glider with
// a flat tail, a fin and a fuselage), no analysis panel open: the cost of one
// confirmed entry or one slider move before any drawing.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "design/recalc.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

void BM_RecalcAllDemo(benchmark::State& state) {
    // Read from the shipped folder, never written: the benchmark saves nothing.
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (std::filesystem::path(TARVOKIN_DATA_DIR) / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    for (auto _ : state) {
        RecalcAll(wb);
        benchmark::DoNotOptimize(wb.sheet.text(F_GEO_SF_REGLAGES::F32));
    }
}
BENCHMARK(BM_RecalcAllDemo)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

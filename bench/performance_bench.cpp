// The performance kernel on the shipped demo model (a two-panel glider with a
// flat tail, a fin and a fuselage; Clark Y and two generic airfoils with the
// shipped polars): one table, the whole F_GEO_3 refresh with its charts, and
// the master recalculation while the performance panel is open.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "airfoils/airfoil_selection.h"
#include "airfoils/polar_lookup.h"
#include "design/performance.h"
#include "design/recalc.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

// Read from the shipped folder, never written: the polars are read straight
// into the slots rather than through the airfoil window's choice, which
// records the choice in the project file.
std::unique_ptr<Workbench> demo(benchmark::State& state) {
    auto wb = std::make_unique<Workbench>(TARVOKIN_DATA_DIR);
    InstallWindowLogic(*wb);
    ReadSettingsAndCatalogue(*wb);
    wb->projectFilePath = (std::filesystem::path(TARVOKIN_DATA_DIR) / "MODELES" / "DEMO.MDL").string();
    LoadProject(*wb);
    for (int slot = 0; slot < kPolarSlots; ++slot) {
        const std::string name = wb->sheet.text(F_PROFILS::CB_1[slot]);
        for (int i = 0; i < kReynoldsCount; ++i) {
            const int re = kStandardReynolds[static_cast<size_t>(i)];
            if (!Read_Polar(wb->polars, polarFile(*wb, name, re), slot, i)) state.SkipWithError("missing polar");
        }
    }
    RecalcAll(*wb);
    return wb;
}

void BM_CalculPerformancesOneTable(benchmark::State& state) {
    auto wb = demo(state);
    for (auto _ : state) {
        CalculPerformances(*wb, 0, 0, 0);
        benchmark::DoNotOptimize(wb->perf.PerfTable[0].back().Vz);
    }
}
BENCHMARK(BM_CalculPerformancesOneTable)->Unit(benchmark::kMicrosecond);

void BM_CourbesPerformances(benchmark::State& state) {
    auto wb = demo(state);
    wb->setOpen(button::Performances, true);
    for (auto _ : state) {
        Courbes_Performances(*wb);
        benchmark::DoNotOptimize(wb->perf.charts.speedPolar[0].series.size());
    }
}
BENCHMARK(BM_CourbesPerformances)->Unit(benchmark::kMicrosecond);

void BM_RecalcAllPerformancesOpen(benchmark::State& state) {
    auto wb = demo(state);
    wb->setOpen(button::Performances, true);
    for (auto _ : state) {
        RecalcAll(*wb);
        benchmark::DoNotOptimize(wb->sheet.text(F_GEO_3::T_Vitesse));
    }
}
BENCHMARK(BM_RecalcAllPerformancesOpen)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

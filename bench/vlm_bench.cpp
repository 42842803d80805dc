// The vortex-lattice analysis on the shipped demo model (a two-panel glider):
// the 40-horseshoe lattice alone, the strips solver alone, the panel's whole
// run, and the master recalculation with the performance panel and the
// lattice panel open, which is what every entry costs while both are shown.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "airfoils/airfoil_selection.h"
#include "airfoils/polar_lookup.h"
#include "design/recalc.h"
#include "design/vlm.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

// Read from the shipped folder, never written; the polars go straight into
// the slots, as in the performance benchmarks.
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

void BM_CalcVLMDemo(benchmark::State& state) {
    auto wb = demo(state);
    for (auto _ : state) {
        if (!CalcVLM(*wb)) state.SkipWithError("no result");
        benchmark::DoNotOptimize(wb->vlm.VlmGamma[20].value);
    }
}
BENCHMARK(BM_CalcVLMDemo)->Unit(benchmark::kMicrosecond);

void BM_VlmStripsDemo(benchmark::State& state) {
    auto wb = demo(state);
    wb->sheet.set(F_Main::Toolbar2[button::Wizard], "1");
    for (auto _ : state) {
        if (!VLM_Strips(*wb)) state.SkipWithError("no result");
        benchmark::DoNotOptimize(wb->vlm.strips[16].lift);
    }
}
BENCHMARK(BM_VlmStripsDemo)->Unit(benchmark::kMicrosecond);

void BM_VlmCommand1Demo(benchmark::State& state) {
    auto wb = demo(state);
    wb->sheet.set(F_Main::Toolbar2[button::Wizard], "1");
    for (auto _ : state) {
        VlmCommand1(*wb);
        benchmark::DoNotOptimize(wb->vlm.charts[0].series.size());
    }
}
BENCHMARK(BM_VlmCommand1Demo)->Unit(benchmark::kMicrosecond);

void BM_RecalcAllPerformancesAndVlmOpen(benchmark::State& state) {
    auto wb = demo(state);
    wb->setOpen(button::Performances, true);
    wb->sheet.set(F_Main::Toolbar2[button::Wizard], "1");
    for (auto _ : state) {
        RecalcAll(*wb);
        benchmark::DoNotOptimize(wb->sheet.text(F_VLM::P25));
    }
}
BENCHMARK(BM_RecalcAllPerformancesAndVlmOpen)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

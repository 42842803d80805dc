// The full rebuild of the 3D scene of the shipped demo model (two-panel
// glider, stabiliser, fin, eight-frame fuselage): what a project load, an
// airfoil choice or the end of a fuselage slider costs before any drawing.
// No surface is set, so no frame is drawn; the wing airfoil's outline file is
// read at each rebuild, as the program does.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "design/recalc.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "views/aircraft_mesh.h"
#include "views/plan.h"
#include "views/design_view.h"
#include "counting_surface.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

void loadDemo(Workbench& wb) {
    // Read from the shipped folder, never written: the benchmark saves nothing.
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (std::filesystem::path(TARVOKIN_DATA_DIR) / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
}

void BM_BuildAircraftDemo(benchmark::State& state) {
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    loadDemo(wb);
    for (auto _ : state) {
        BuildAircraft(wb);
        benchmark::DoNotOptimize(wb.view3d.engine.MeshCount);
    }
}
BENCHMARK(BM_BuildAircraftDemo)->Unit(benchmark::kMicrosecond);

void BM_DrawCentringPlanDemo(benchmark::State& state) {
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    loadDemo(wb);
    for (auto _ : state) {
        Plan p = DrawCentringPlan(wb);
        benchmark::DoNotOptimize(p.labels.size());
    }
}
BENCHMARK(BM_DrawCentringPlanDemo)->Unit(benchmark::kMicrosecond);

// The plan set for the design window's picture at its first size on a
// 1280 x 800 screen: the labels laid out again at each scale tried.
void BM_DrawCentringPlanForWindow(benchmark::State& state) {
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    loadDemo(wb);
    for (auto _ : state) {
        Plan p = DrawCentringPlan(wb, PlanArea{312, 202});
        benchmark::DoNotOptimize(p.labels.size());
    }
}
BENCHMARK(BM_DrawCentringPlanForWindow)->Unit(benchmark::kMicrosecond);

// One frame of the demo aircraft in the design window's view at 1000 x 700:
// argument 2 is the lit flat faces, 5 the blended corners of "Vue Surface".
void BM_DemoFrame(benchmark::State& state) {
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    loadDemo(wb);
    CountingSurface surface;
    wb.view3d.surface = &surface;
    BuildAircraft(wb);
    if (state.range(0) == 5) PressRenderButton(wb, 4);
    for (auto _ : state) {
        wb.view3d.ViewAzimuth += 0.01f;  // the camera moves every frame, as in an orbit
        DrawViewFrame(wb);
    }
    benchmark::DoNotOptimize(surface.calls);
}
BENCHMARK(BM_DemoFrame)->Arg(2)->Arg(5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

// The construction windows at the speed of the mouse: one redraw of the frame
// generator (both curves of 400 points, evaluated, mirrored and drawn) and
// one step of a marker drag in the fuselage window (the entry through the
// entry path, then both drawings redone). Both run at every mouse move.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "construction/frame_curve.h"
#include "construction/fuselage_shape.h"
#include "core/workbench.h"
#include "counting_surface.h"
#include "entry/entry_path.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

void BM_DisegnaCurva400Doubled(benchmark::State& state) {
    FrameState f;
    InitFrameGenerator(f);
    f.PointCount = 400;
    f.Doubling = true;
    ApplyDoubling(f);
    CountingSurface surface;
    FrameDrawOptions o;
    o.grid = false;  // the grid is the same lines at every move
    double dx = 1;
    for (auto _ : state) {
        // A handle follows the mouse, the doubled ones with it, then the redraw.
        f.ControlPoints[3].x += dx;
        dx = -dx;
        ApplyDoubling(f);
        DisegnaCurva(f, surface, o);
        benchmark::DoNotOptimize(f.DoubledLeft.data());
    }
}
BENCHMARK(BM_DisegnaCurva400Doubled)->Unit(benchmark::kMicrosecond);

// The curve alone: 400 samples of the order-9 spline on 9 handles.
void BM_EvaluateBSpline400(benchmark::State& state) {
    FrameState f;
    InitFrameGenerator(f);
    FramePoints out;
    for (auto _ : state) {
        EvaluateBSpline(f.ControlPoints, f.CurveOrder, 400, out);
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(BM_EvaluateBSpline400)->Unit(benchmark::kMicrosecond);

void BM_FuselageMarkerDragStep(benchmark::State& state) {
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (std::filesystem::path(TARVOKIN_DATA_DIR) / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    CountingSurface side, top;
    Action a;
    a.form = "F_GEO_FUS";
    a.control = "Picture1";
    a.act = Act::Press;
    a.x = 330;
    a.y = 33;
    a.button = 1;
    Mouse(wb, a);
    a.act = Act::Move;
    double x = 330;
    for (auto _ : state) {
        x = x > 400 ? 330 : x + 1.5;
        a.x = x;
        Mouse(wb, a);
        DrawFuselageSide(wb.sheet, side);
        DrawFuselageTop(wb.sheet, top);
        benchmark::DoNotOptimize(side.calls + top.calls);
    }
}
BENCHMARK(BM_FuselageMarkerDragStep)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

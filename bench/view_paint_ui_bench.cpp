// One frame of the demo aircraft painted for real into the design window's
// QImage at 1000 x 700: the engine's work plus Qt's painting and our own
// blended triangles.
#include <benchmark/benchmark.h>

#include "ui_bench_support.h"

#include <QGuiApplication>
#include <filesystem>

#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "views/aircraft_mesh.h"
#include "views/design_view.h"
#include "views/ui/qimage_surface.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;

void BM_DemoFramePainted(benchmark::State& state) {
    Workbench wb(TARVOKIN_DATA_DIR);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (std::filesystem::path(TARVOKIN_DATA_DIR) / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    ui::QImageSurface surface(QSize(1000, 700));
    wb.view3d.surface = &surface;
    BuildAircraft(wb);
    if (state.range(0) == 5) PressRenderButton(wb, 4);
    for (auto _ : state) {
        wb.view3d.ViewAzimuth += 0.01f;
        DrawViewFrame(wb);
        benchmark::DoNotOptimize(surface.image().constBits());
    }
}
BENCHMARK(BM_DemoFramePainted)->Arg(2)->Arg(5)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return tarvokin::bench::RunOffscreen<QGuiApplication>(argc, argv); }

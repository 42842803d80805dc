// The whole report of the demo model: the page and its ten pictures drawn off
// screen and written (3D view 1000 x 700, global chart 1000 x 600, eight
// charts 640 x 440), the closed analysis windows opened, refreshed and closed.
#include <benchmark/benchmark.h>

#include "ui_bench_support.h"

#include <QApplication>
#include <filesystem>

#include "core/workbench.h"
#include "entry/airfoil_choice.h"
#include "entry/project_io.h"
#include "entry/report_logic.h"
#include "entry/session.h"
#include "entry/window_logic.h"
#include "project/ui/report_pictures.h"

namespace {

using namespace tarvokin;
namespace fs = std::filesystem;

void BM_WholeReportDemo(benchmark::State& state) {
    const bench::BenchHome copy("tarvokin-report-bench");
    const fs::path& home = copy.path;
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (home / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    for (int slot = 0; slot < 3; ++slot) CB_1_Click(wb, slot, nullptr);
    ui::InstallPicturePainter(wb);
    for (auto _ : state) benchmark::DoNotOptimize(WriteReport(wb));
}
BENCHMARK(BM_WholeReportDemo)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return tarvokin::bench::RunOffscreen(argc, argv); }

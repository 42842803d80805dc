// The whole report of the demo model: the page and its ten pictures drawn off
// screen and written (3D view 1000 x 700, global chart 1000 x 600, eight
// charts 640 x 440), the closed analysis windows opened, refreshed and closed.
#include <benchmark/benchmark.h>

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
    const fs::path home = fs::temp_directory_path() / "tarvokin-report-bench";
    fs::remove_all(home);
    fs::create_directories(home);
    fs::copy(TARVOKIN_DATA_DIR, home, fs::copy_options::recursive);
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    wb.projectFilePath = (home / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    for (int slot = 0; slot < 3; ++slot) CB_1_Click(wb, slot, nullptr);
    ui::InstallPicturePainter(wb);
    for (auto _ : state) benchmark::DoNotOptimize(WriteReport(wb));
    fs::remove_all(home);
}
BENCHMARK(BM_WholeReportDemo)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

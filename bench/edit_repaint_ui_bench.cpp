// The modeller's own measure of speed: one edit of the wing span, typed and
// confirmed, with every window of the toolbar open, until every open window
// has repainted (offscreen). What a keystroke-and-Enter costs on screen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWidget>
#include <filesystem>

#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "entry/window_logic.h"
#include "shell/ui/main_window.h"

namespace {

using namespace tarvokin;

void BM_EditSpanEveryWindowOpen(benchmark::State& state) {
    // A copy of the shipped folder: the windows write their traces there.
    const auto home = std::filesystem::temp_directory_path() / "tarvokin-edit-bench";
    std::filesystem::remove_all(home);
    std::filesystem::copy(TARVOKIN_DATA_DIR, home, std::filesystem::copy_options::recursive);
    Workbench wb(home);
    InstallWindowLogic(wb);
    wb.showMessage = [](const std::string&) {};
    ReadSettingsAndCatalogue(wb);
    ui::SheetBridge bridge(wb);
    ui::MainWindow window(wb, bridge);
    OpenProject(wb, (home / "MODELES" / "DEMO.MDL").string());
    window.show();
    int open = 0;
    for (int p = 1; p <= 33; ++p) {
        if (!window.opensWindow(p) || wb.isOpen(p)) continue;
        bridge.enter([&] { Click(wb, "F_Main", "Toolbar2", p); });
        ++open;
    }
    QApplication::processEvents();
    int k = 0;
    for (auto _ : state) {
        bridge.enter([&] { enterField(wb, F_GEO_SF::b7, (++k % 2) ? "640" : "660"); });
        // The deferred redraws of every window, then the paints they asked for.
        QApplication::processEvents();
        QApplication::processEvents();
    }
    state.counters["windows"] = open;
    std::filesystem::remove_all(home);
}
BENCHMARK(BM_EditSpanEveryWindowOpen)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// Switching language with every window open: the menu entry, the summary, the
// main and design windows re-captioned, then each other window as it is
// activated, until every window has repainted (offscreen).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QEvent>
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

// What the modeller waits for at the menu: the main and design windows (and
// the panels the main window holds) re-captioned and repainted; with
// `activateAll`, every other open window activated in turn as well.
void switchLanguage(benchmark::State& state, bool activateAll) {
    const auto home = std::filesystem::temp_directory_path() / "tarvokin-language-bench";
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
    window.openEveryWindow();
    std::vector<QWidget*> shown;
    for (QWidget* w : window.everyWindow())
        if (w->isVisible() && w->isWindow() && w != &window) shown.push_back(w);
    QApplication::processEvents();
    int k = 0;
    for (auto _ : state) {
        const int code = ++k % 2;  // English, then French again
        bridge.enter([&] { Click(wb, "F_Main", "IM_Language", code); });
        for (QWidget* w : shown) {
            if (!activateAll) break;
            QEvent activate(QEvent::WindowActivate);
            QCoreApplication::sendEvent(w, &activate);
        }
        QApplication::processEvents();
    }
    state.counters["windows"] = static_cast<double>(shown.size() + 1);
    std::filesystem::remove_all(home);
}
void BM_SwitchLanguageMainAndDesign(benchmark::State& state) { switchLanguage(state, false); }
void BM_SwitchLanguageEveryWindowActivated(benchmark::State& state) { switchLanguage(state, true); }
BENCHMARK(BM_SwitchLanguageMainAndDesign)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SwitchLanguageEveryWindowActivated)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

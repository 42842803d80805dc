// Start-up as the modeller sees it: from the program's start to the first
// painted main window with the demo model recalled (the shipped settings
// recall it), offscreen, no solver run and no display started for it. The
// application object itself is made once by the process; everything the
// program builds after it is in each iteration. The first start of the
// process, with its fonts, icons and plugins still to load, is reported apart:
// `cold_ms` from the Workbench on, `since_main_ms` from the top of main(),
// the application object's making included.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <chrono>
#include <filesystem>

#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/session.h"
#include "entry/window_logic.h"
#include "shell/ui/main_window.h"

namespace {

using namespace tarvokin;

std::chrono::steady_clock::time_point mainStarted;

// Sees the main window's first paint: the window paints its whole tree of
// widgets in the one pass that paints it.
class FirstPaint : public QObject {
public:
    bool painted = false;
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (e->type() == QEvent::Paint && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow())
            painted = true;
        return false;
    }
};

// main() up to the event loop, as the program runs it, until the first paint.
void startOnce(const std::filesystem::path& home) {
    Workbench wb(home);
    InstallWindowLogic(wb);
    ui::SheetBridge bridge(wb);
    wb.showMessage = [](const std::string&) {};
    const StartupResult start = StartUp(wb);
    if (start.stop || wb.projectFilePath.empty()) std::abort();  // the demo must be recalled
    wb.setOpen(button::View3D, true);
    wb.setOpen(button::Wing, true);
    wb.setOpen(button::Reglages, true);
    ui::MainWindow window(wb, bridge);
    FirstPaint seen;
    window.installEventFilter(&seen);
    window.show();
    while (!seen.painted) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    window.removeEventFilter(&seen);
}

void BM_StartUpToFirstPaint(benchmark::State& state) {
    // The user's folder as the first start seeds it from the shipped one.
    const auto home = std::filesystem::temp_directory_path() / "tarvokin-startup-bench";
    std::filesystem::remove_all(home);
    std::filesystem::copy(TARVOKIN_DATA_DIR, home, std::filesystem::copy_options::recursive);
    const auto t0 = std::chrono::steady_clock::now();
    startOnce(home);
    const auto t1 = std::chrono::steady_clock::now();
    // Once a process: the later runs of this function start warm.
    static const double cold = std::chrono::duration<double, std::milli>(t1 - t0).count();
    static const double sinceMain = std::chrono::duration<double, std::milli>(t1 - mainStarted).count();
    state.counters["cold_ms"] = cold;
    state.counters["since_main_ms"] = sinceMain;
    for (auto _ : state) startOnce(home);
    std::filesystem::remove_all(home);
}
BENCHMARK(BM_StartUpToFirstPaint)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    mainStarted = std::chrono::steady_clock::now();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

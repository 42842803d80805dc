// Switching language with every window open: the menu entry, the summary, the
// main and design windows re-captioned, then each other window as it is
// activated, until every window has repainted (offscreen).
#include <QEvent>
#include <QWidget>

#include "entry/entry_path.h"
#include "ui_bench_support.h"

namespace {

using namespace tarvokin;

// What the modeller waits for at the menu: the main and design windows (and
// the panels the main window holds) re-captioned and repainted; with
// `activateAll`, every other open window activated in turn as well.
void switchLanguage(benchmark::State& state, bool activateAll) {
    bench::DemoWindows d("tarvokin-language-bench");
    Workbench& wb = d.wb;
    ui::MainWindow& window = *d.window;
    window.openEveryWindow();
    std::vector<QWidget*> shown;
    for (QWidget* w : window.everyWindow())
        if (w->isVisible() && w->isWindow() && w != &window) shown.push_back(w);
    QApplication::processEvents();
    int k = 0;
    for (auto _ : state) {
        const int code = ++k % 2;  // English, then French again
        d.bridge->enter([&] { Click(wb, "F_Main", "IM_Language", code); });
        for (QWidget* w : shown) {
            if (!activateAll) break;
            QEvent activate(QEvent::WindowActivate);
            QCoreApplication::sendEvent(w, &activate);
        }
        QApplication::processEvents();
    }
    state.counters["windows"] = static_cast<double>(shown.size() + 1);
}
void BM_SwitchLanguageMainAndDesign(benchmark::State& state) { switchLanguage(state, false); }
void BM_SwitchLanguageEveryWindowActivated(benchmark::State& state) { switchLanguage(state, true); }
BENCHMARK(BM_SwitchLanguageMainAndDesign)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SwitchLanguageEveryWindowActivated)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return tarvokin::bench::RunOffscreen(argc, argv); }

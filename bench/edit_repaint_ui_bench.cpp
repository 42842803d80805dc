// The modeller's own measure of speed: one edit of the wing span, typed and
// confirmed, with every window of the toolbar open, until every open window
// has repainted (offscreen). What a keystroke-and-Enter costs on screen.
#include "entry/entry_path.h"
#include "ui_bench_support.h"

namespace {

using namespace tarvokin;

void BM_EditSpanEveryWindowOpen(benchmark::State& state) {
    // A copy of the shipped folder: the windows write their traces there.
    bench::DemoWindows d("tarvokin-edit-bench");
    Workbench& wb = d.wb;
    int open = 0;
    for (int p = 1; p <= 33; ++p) {
        if (!d.window->opensWindow(p) || wb.isOpen(p)) continue;
        d.bridge->enter([&] { Click(wb, "F_Main", "Toolbar2", p); });
        ++open;
    }
    QApplication::processEvents();
    int k = 0;
    for (auto _ : state) {
        d.bridge->enter([&] { enterField(wb, F_GEO_SF::b7, (++k % 2) ? "640" : "660"); });
        // The deferred redraws of every window, then the paints they asked for.
        QApplication::processEvents();
        QApplication::processEvents();
    }
    state.counters["windows"] = open;
}
BENCHMARK(BM_EditSpanEveryWindowOpen)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return tarvokin::bench::RunOffscreen(argc, argv); }

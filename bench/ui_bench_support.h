// What the benchmarks of the windows share: a copy of the shipped folder as
// the user's home, the demo model open in the real main window, and a main()
// on the offscreen platform. Header only: every .cpp of bench/ is a program.
#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <filesystem>
#include <memory>
#include <string>

#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/session.h"
#include "entry/window_logic.h"
#include "shell/ui/main_window.h"

namespace tarvokin::bench {

// A fresh copy of the shipped installation folder, removed at the end.
struct BenchHome {
    std::filesystem::path path;
    explicit BenchHome(const std::string& name) : path(std::filesystem::temp_directory_path() / name) {
        std::filesystem::remove_all(path);
        std::filesystem::copy(TARVOKIN_DATA_DIR, path, std::filesystem::copy_options::recursive);
    }
    ~BenchHome() { std::filesystem::remove_all(path); }
};

// The demo model in the main window, shown, messages swallowed.
struct DemoWindows {
    BenchHome home;
    Workbench wb{home.path};
    std::unique_ptr<ui::SheetBridge> bridge;
    std::unique_ptr<ui::MainWindow> window;

    explicit DemoWindows(const std::string& name) : home(name) {
        InstallWindowLogic(wb);
        wb.showMessage = [](const std::string&) {};
        ReadSettingsAndCatalogue(wb);
        bridge = std::make_unique<ui::SheetBridge>(wb);
        window = std::make_unique<ui::MainWindow>(wb, *bridge);
        OpenProject(wb, (home.path / "MODELES" / "DEMO.MDL").string());
        window->show();
    }
};

// main() of a benchmark program that needs Qt, without a screen.
template <class App = QApplication>
int RunOffscreen(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    App app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace tarvokin::bench

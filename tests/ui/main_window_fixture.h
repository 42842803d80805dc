// The real main window on a copy of the shipped installation, with the demo
// model open; messages the program shows are collected instead of boxed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "entry/session.h"
#include "shell/ui/main_window.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "entry/window_logic.h"

namespace tarvokin::test {

struct MainWindowFixture {
    TempDir dir;
    Workbench wb{dir.path()};
    std::vector<std::string> messages;
    std::unique_ptr<ui::SheetBridge> bridge;
    std::unique_ptr<ui::MainWindow> window;
    MainWindowFixture() {
        InstallWindowLogic(wb);
        copyInstallation(dir.path());
        wb.showMessage = [this](const std::string& t) { messages.push_back(t); };
        ReadSettingsAndCatalogue(wb);
        bridge = std::make_unique<ui::SheetBridge>(wb);
        window = std::make_unique<ui::MainWindow>(wb, *bridge);
        OpenProject(wb, (dir.path() / "MODELES" / "DEMO.MDL").string());
        window->show();
    }
};

}  // namespace tarvokin::test

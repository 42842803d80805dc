// The TARVOKIN application: tarvokin [--home DIR] [--open N]... [--lang N] [PROJECT.MDL]
#include <QApplication>
#include <QLocale>
#include <QMessageBox>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <optional>

#include "airfoils/solver_process.h"
#include "shell/gui_args.h"
#include "shell/home.h"
#include "core/settings.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "core/ui/cell_widgets.h"
#include "shell/ui/main_window.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

using namespace tarvokin;

int main(int argc, char** argv) {
    // The arguments first: --help and --version answer without a screen.
    GuiArgs given;
    {
        std::string error;
        if (!ParseGuiArgs(std::vector<std::string>(argv + 1, argv + argc), given, error)) {
            std::cerr << "tarvokin: " << error << "\n" << kGuiUsage;
            return 2;
        }
        if (given.help) {
            std::cout << kGuiUsage;
            return 0;
        }
        if (given.version) {
            std::cout << GuiVersionText() << "\n";
            return 0;
        }
    }
    QApplication app(argc, argv);
    // Number text is "." for the whole run, whatever the user's locale: Qt has
    // just taken the environment's locale, so put the numeric part back.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    QApplication::setApplicationName("TARVOKIN");
    // A solver run under way goes with the program when it is stopped.
    stopSolversOnSignals();

    std::optional<std::filesystem::path> requestedHome;
    if (given.home) requestedHome = std::filesystem::path(*given.home);
    const std::string project = given.project;

    const std::filesystem::path home = userHomeFolder(requestedHome);
    std::string error;
    if (!seedHomeFolder(home, shippedDataFolder(argv[0]), error)) {
        QMessageBox::critical(nullptr, "TARVOKIN", QString::fromStdString(error));
        return 1;
    }

    Workbench wb(home);
    InstallWindowLogic(wb);
    ui::SheetBridge bridge(wb);
    QWidget* messageParent = nullptr;
    wb.showMessage = [&messageParent](const std::string& text) {
        QMessageBox::information(messageParent, QStringLiteral("TARVOKIN V3.0"), ui::qs(text));
    };

    const StartupResult start = StartUp(wb);
    if (!start.message.empty()) wb.showMessage(start.message);
    if (start.stop) return 1;
    if (given.language) {
        // For this run only: the settings file keeps the modeller's choice.
        SetRunLanguage(wb, *given.language);
    }

    // The design window is where the modeller lives; the wing and its settings
    // are what a modeller works on first.
    wb.setOpen(button::View3D, true);
    wb.setOpen(button::Wing, true);
    wb.setOpen(button::Reglages, true);

    ui::MainWindow window(wb, bridge);
    messageParent = &window;
    window.show();
    if (!project.empty()) {
        ui::guarded(wb, [&] { OpenProject(wb, project); });
        if (!WingAirfoilKnown(wb) && wb.sheet.text(F_3D::T_NOM_Modele) != kUnknownModel) {
            wb.showMessage(UnknownAirfoilMessage(wb));
            return 1;
        }
    }
    // Each --open is a press of its toolbar button; a window already open stays.
    for (int n : given.open) {
        if (!window.opensWindow(n)) {
            std::cerr << "tarvokin: le bouton " << n << " de la barre d'outils n'ouvre pas de fenêtre\n";
            continue;
        }
        if (!wb.isOpen(n)) bridge.enter([&] { Click(wb, "F_Main", "Toolbar2", n); });
    }
    return QApplication::exec();
}

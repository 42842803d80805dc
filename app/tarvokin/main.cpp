// The TARVOKIN application: tarvokin [--home DIR] [PROJECT.MDL]
#include <QApplication>
#include <QLocale>
#include <QMessageBox>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <optional>

#include "airfoils/solver_process.h"
#include "shell/home.h"
#include "entry/session.h"
#include "core/ui/cell_widgets.h"
#include "shell/ui/main_window.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

using namespace tarvokin;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    // Number text is "." for the whole run, whatever the user's locale: Qt has
    // just taken the environment's locale, so put the numeric part back.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    QApplication::setApplicationName("TARVOKIN");
    // A solver run under way goes with the program when it is stopped.
    stopSolversOnSignals();

    std::optional<std::filesystem::path> requestedHome;
    std::string project;
    const QStringList args = QApplication::arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == "--home" && i + 1 < args.size()) {
            requestedHome = std::filesystem::path(args[++i].toStdString());
        } else if (!args[i].startsWith("-")) {
            project = args[i].toStdString();
        } else {
            std::cerr << "usage: tarvokin [--home DIR] [PROJECT.MDL]\n";
            return 2;
        }
    }

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
    return QApplication::exec();
}

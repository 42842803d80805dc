#include <clocale>
#include <iostream>
#include <memory>

#include "airfoils/solver_process.h"
#include "shell/cli.h"

#ifdef TARVOKIN_WITH_PICTURES
#include <QApplication>

#include "project/ui/report_pictures.h"
#include "shell/ui/captions_command.h"
#endif

int main(int argc, char** argv) {
    // A solver run under way goes with the program when it is stopped.
    tarvokin::stopSolversOnSignals();
    std::vector<std::string> args(argv + 1, argv + argc);
#ifdef TARVOKIN_WITH_PICTURES
    // Only the report draws; the other commands start no toolkit at all.
    std::unique_ptr<QApplication> app;
    if (!args.empty() && args[0] == "report") {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QApplication>(argc, argv);
        tarvokin::SetScreenHooks([](tarvokin::Workbench& wb) { tarvokin::ui::InstallPicturePainter(wb); });
    }
    if (!args.empty() && args[0] == "captions") {
        // The windows are built, never shown on a screen.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication windows(argc, argv);
        std::setlocale(LC_ALL, "C");
        return tarvokin::ui::RunCaptionsCommand({args.begin() + 1, args.end()}, argv[0], std::cout, std::cerr);
    }
#endif
    // Number text is "." whatever the user's locale (set after the toolkit,
    // which would otherwise take the user's).
    std::setlocale(LC_ALL, "C");
    return tarvokin::runCli(args, argv[0], std::cout, std::cerr);
}

#include <clocale>
#include <iostream>

#include "airfoils/solver_process.h"
#include "shell/cli.h"

int main(int argc, char** argv) {
    // Number text is "." whatever the user's locale.
    std::setlocale(LC_ALL, "C");
    // A solver run under way goes with the program when it is stopped.
    tarvokin::stopSolversOnSignals();
    std::vector<std::string> args(argv + 1, argv + argc);
    return tarvokin::runCli(args, argv[0], std::cout, std::cerr);
}

// The application's own command line: tarvokin [--home DIR] [--open N]...
// [--lang N] [PROJECT.MDL], --help, --version. Read apart from the toolkit so
// that it is checked without a screen.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarvokin {

struct GuiArgs {
    std::optional<std::string> home;
    std::vector<int> open;        // toolbar buttons pressed at start, in order
    std::optional<std::string> language;  // "0".."3", for this run only
    std::string project;
    bool help = false, version = false;
};

extern const char* const kGuiUsage;
// "TARVOKIN 3.1"
std::string GuiVersionText();

// False with a one-line reason when an argument is not understood.
bool ParseGuiArgs(const std::vector<std::string>& args, GuiArgs& out, std::string& error);

}  // namespace tarvokin

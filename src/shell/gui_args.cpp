#include "shell/gui_args.h"

#include <charconv>

#include "core/workbench.h"

namespace tarvokin {

const char* const kGuiUsage =
    "usage: tarvokin [--home DIR] [--open N]... [--lang N] [PROJECT.MDL]\n"
    "       tarvokin --help | --version\n"
    "  --home DIR   the user's folder (settings, airfoils, polars, models)\n"
    "  --open N     presses toolbar button N at start, as a click would (7 design window,\n"
    "               8 airfoils, 10 wing, 17 performance, 18 aspect ratio, ...)\n"
    "  --lang N     the language of this run: 0 French, 1 English, 2 Spanish, 3 Italian\n";

std::string GuiVersionText() {
    std::string v = std::string("TARVOKIN ") + kVersion;
    while (!v.empty() && v.back() == ' ') v.pop_back();
    return v;
}

namespace {

bool wholeNumber(const std::string& s, int& v) {
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return r.ec == std::errc{} && r.ptr == s.data() + s.size();
}

}  // namespace

bool ParseGuiArgs(const std::vector<std::string>& args, GuiArgs& out, std::string& error) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](std::string& v) {
            if (i + 1 >= args.size()) {
                error = a + " attend une valeur";
                return false;
            }
            v = args[++i];
            return true;
        };
        std::string v;
        if (a == "--help" || a == "-h") {
            out.help = true;
        } else if (a == "--version") {
            out.version = true;
        } else if (a == "--home") {
            if (!value(v)) return false;
            out.home = v;
        } else if (a == "--open") {
            int n = 0;
            if (!value(v)) return false;
            if (!wholeNumber(v, n) || n < 1 || n > 33) {
                error = "--open attend un numéro de bouton de 1 à 33 : " + v;
                return false;
            }
            out.open.push_back(n);
        } else if (a == "--lang") {
            int n = 0;
            if (!value(v)) return false;
            if (!wholeNumber(v, n) || n < 0 || n > 3) {
                error = "--lang attend 0, 1, 2 ou 3 : " + v;
                return false;
            }
            out.language = v;
        } else if (!a.empty() && a[0] != '-' && out.project.empty()) {
            out.project = a;
        } else {
            error = "argument inconnu : " + a;
            return false;
        }
    }
    return true;
}

}  // namespace tarvokin

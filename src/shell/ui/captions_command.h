// tarvokin-cli captions [--home DIR] [--lang N] [FORM...]: every window's texts
// (or the named windows') in language N, keyed as in a language file.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace tarvokin::ui {

// `args` without the command word. Needs a QApplication (offscreen will do).
int RunCaptionsCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                       std::ostream& err);

// A caption on one line of the listing: a line end written "\r", a backslash "\\".
std::string CaptionLine(const std::string& text);

}  // namespace tarvokin::ui

// Numbered messages ("[#1] " .. "[#27] ") read from the language file, and the
// event boundary that turns a run-time error into the "[#7] " message.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tarvokin {

class Workbench;

// Profile read of a language file (128-character buffer) with the escapes
// \r, \f and \\ expanded to a carriage return, a line feed and a backslash.
std::string ReadLanguage(std::string_view section, std::string_view key, std::string_view def,
                         const std::string& file);
std::string expandEscapes(std::string_view s);

// The text of message `id` (blanks trimmed) of [Messages]; when it holds "**",
// the part before, a blank, extra and the part after are joined.
std::string messageText(const Workbench& wb, std::string_view id, std::string_view extra);

// Shows message `id` through wb.showMessage.
void ShowMessage(Workbench& wb, std::string_view id, std::string_view extra);

// The question `id` of [AskFor], built as messageText builds a message, put
// through wb.askUser: true for Yes. Without a way to ask, the answer is No.
bool AskUser(Workbench& wb, std::string_view id, std::string_view extra);

// Runs a handler; a run-time error that slips through ends it and is shown as
// the "[#7] " message. Returns false when the handler was ended so.
bool runGuarded(Workbench& wb, const std::function<void()>& handler);

}  // namespace tarvokin

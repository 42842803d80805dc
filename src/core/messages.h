// Numbered messages ("[#1] " .. "[#27] ") read from the language file, and the
// event boundary that turns a run-time error into the "[#7] " message.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvokin {

class Workbench;

// Profile read of a language file (128-character buffer) with the escapes
// \r, \f and \\ expanded to a carriage return, a line feed and a backslash.
std::string ReadLanguage(std::string_view section, std::string_view key, std::string_view def,
                         const std::string& file);

// The program's French texts of [Messages] and [AskFor] by id ("[#7]"), what
// shows when the language file lacks one; the ids in use, in order.
std::string BuiltInMessage(std::string_view id);
std::string BuiltInQuestion(std::string_view id);
std::vector<std::string> MessageIds();
std::vector<std::string> QuestionIds();

// The text of message `id` (blanks trimmed) of [Messages]; when it holds "**",
// the part before, a blank, extra and the part after are joined.
std::string messageText(const Workbench& wb, std::string_view id, std::string_view extra);

// Shows message `id` through wb.showMessage (a box with the information icon
// and the title "TARVOKIN V3.0" in the program with a screen).
void ShowMessage(Workbench& wb, std::string_view id, std::string_view extra);

// The question `id` of [AskFor], built as messageText builds a message, put
// through wb.askUser (Yes and No, the title "ATTENTION"): true for Yes.
// Without a way to ask, the answer is No.
bool AskUser(Workbench& wb, std::string_view id, std::string_view extra);
std::string questionText(const Workbench& wb, std::string_view id, std::string_view extra);

// A notice (a file written) built from message `id` and shown through
// wb.showNotice.
void ShowNotice(Workbench& wb, std::string_view id, std::string_view extra);

// Runs a handler; a run-time error that slips through ends it and is shown as
// the "[#7] " message. Returns false when the handler was ended so.
bool runGuarded(Workbench& wb, const std::function<void()>& handler);

}  // namespace tarvokin

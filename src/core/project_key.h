// Keys the program writes into the project file at once, as the modeller
// makes a choice (motor, airfoil slots, view colours, background images),
// and the message that tells a write that failed.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvokin {

class Workbench;

// Tells the user, through wb.showMessage, that `file` could not be written and why.
void ReportWriteFailure(const Workbench& wb, const std::filesystem::path& file, const std::string& reason);

// Writes one key of wb.projectFilePath; a failure is told as a save's is.
// False when the key could not be written.
bool WriteProjectKey(const Workbench& wb, std::string_view section, std::string_view key, std::string_view value);

}  // namespace tarvokin

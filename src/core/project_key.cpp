#include "core/project_key.h"

#include "core/messages.h"

#include "core/file_replace.h"
#include "core/profile_file.h"
#include "core/workbench.h"

namespace tarvokin {

void ReportWriteFailure(const Workbench& wb, const std::filesystem::path& file, const std::string& reason) {
    // The file and the reason are the detail; the frame of the message is the language's.
    if (wb.showMessage) wb.showMessage(messageText(wb, "[#2] ", file.string() + " : " + reason + "."));
}

bool WriteProjectKey(const Workbench& wb, std::string_view section, std::string_view key, std::string_view value) {
    std::string reason;
    if (WriteProfileString(section, key, value, wb.projectFilePath, &reason)) return true;
    ReportWriteFailure(wb, wb.projectFilePath, reason);
    return false;
}

}  // namespace tarvokin

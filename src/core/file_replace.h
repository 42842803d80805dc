// Replacing a file's contents without ever leaving a half-written file in
// place of the good one: the bytes go to a temporary file beside the target,
// which is flushed to disk and then renamed over the target.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvokin {

// True when `file` now holds exactly `bytes`. A file that already holds them
// is not touched (its date stays), so reading a model never rewrites it.
// A symbolic link is written through to the file it names. A file the user
// made read-only is left alone and the call fails. On any failure (folder not
// writable, disk full, target is a folder) the target is left as it was, the
// temporary file is removed, and `reason` (when given) receives a short
// French explanation for the message to the user.
bool replaceFile(const std::filesystem::path& file, std::string_view bytes, std::string* reason = nullptr);

// The message telling the user that `file` could not be written, and why.
std::string writeFailureMessage(const std::filesystem::path& file, const std::string& reason);

}  // namespace tarvokin

// Replacing a file's contents without ever leaving a half-written file in
// place of the good one: the bytes go to a temporary file beside the target,
// which is flushed to disk and then renamed over the target.
#pragma once

#include <filesystem>
#include <string_view>

namespace tarvokin {

// True when `file` now holds exactly `bytes`. On any failure (folder not
// writable, disk full, target is a folder) the target is left as it was and
// the temporary file is removed.
bool replaceFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace tarvokin

// Files named in upper case by the catalogue (as the program has always stored
// the airfoils it adds) on a file system that tells letter cases apart.
#pragma once

#include <filesystem>

namespace tarvokin {

// The existing file whose folders and name equal `path` but for letter case,
// or the path as given when none matches.
std::filesystem::path existingSpelling(const std::filesystem::path& path);

}  // namespace tarvokin

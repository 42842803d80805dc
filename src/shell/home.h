// The program's folder: where TARVOKIN.INI, DATA/, POLAIRES/, MODELES/ and
// lang/ live for this user. The shipped installation may be read-only, so a
// user's folder is seeded from it on first start.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tarvokin {

// The shipped installation folder (data/ of the source tree, or
// <prefix>/share/tarvokin next to an installed binary); empty when none is found.
std::filesystem::path shippedDataFolder(const std::filesystem::path& executable);

// --home DIR when given; else $XDG_DATA_HOME/tarvokin or ~/.local/share/tarvokin.
std::filesystem::path userHomeFolder(const std::optional<std::filesystem::path>& requested);

// Copies what the shipped folder holds and `home` lacks (files already there are
// kept: they are the user's). Returns false with a reason when home cannot be made.
bool seedHomeFolder(const std::filesystem::path& home, const std::filesystem::path& shipped, std::string& error);

}  // namespace tarvokin

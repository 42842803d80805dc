// The project as a spreadsheet workbook and back. One sheet for each part of
// the design as the project file groups it (model, wing, fuselage, stab, fin,
// settings, colours, battery, motor, propeller), a row per field with its
// label, its cell name and its value; then the speed-polar tables and the
// three airfoils, for reading only. An import takes the values back by cell
// name into a project document, which is then loaded as a project is.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/profile_file.h"
#include "project/xlsx.h"

namespace tarvokin {

class Workbench;

inline constexpr const char* kLabelHeader = "Libellé";
inline constexpr const char* kCellHeader = "Champ";
inline constexpr const char* kValueHeader = "Valeur";
inline constexpr const char* kPolarSheet = "Polaires";
inline constexpr const char* kAirfoilSheet = "Profils";

XlsxWorkbook ProjectWorkbook(const Workbench& wb);

// Writes the workbook beside `file` and then puts it in place; false with
// `error` set when it cannot be written.
bool ExportWorkbook(const Workbench& wb, const std::filesystem::path& file, std::string& error);

// The project document of the current design with the workbook's values put
// in place of its own. Nothing when the workbook is not one of ours (a
// design sheet or its header missing, a cell name that is not the project's,
// a number field that holds no finite number), `error` then saying why.
std::optional<ProfileDocument> ImportedDocument(const Workbench& wb, const XlsxWorkbook& book, std::string& error);

}  // namespace tarvokin

// The files of the frame generator: the frame outline in the two-column
// format of an airfoil outline, so that any airfoil-cutting tool cuts the
// frame, and the frame project (.CVB, a profile file) that keeps the handles.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/frame_state.h"

namespace tarvokin {

// Drawing pixels for one unit of the outline file.
inline constexpr double kFrameUnitScale = 52.389;

// The dialog kinds of the construction files: suggested extension and caption.
enum class FileKind { Project, Airfoil, Fuselage, Cutting };
struct FileDialogSpec {
    std::string extension;  // ".CVB"
    std::string caption;    // "Fichier Projets"
};
FileDialogSpec FileDialogByType(FileKind kind);
// The text-file filters of the generic dialog, as (label, pattern) pairs, in order.
std::vector<std::pair<std::string, std::string>> GenericFileFilters();
// The picture filter of the frame generator.
inline constexpr const char* kImageFilterLabel = "Fichiers images";
inline constexpr const char* kImageFilterPattern = "*.bmp;*.jpg;*.tif;*.gif;";

// The name a typed answer becomes: ".DAT" appended when it holds no ".".
std::string OutlineFileName(const std::string& answer);

// One value as "0.0000000": at least one integer digit, seven decimals, "."
// whatever the locale.
std::string FrameNumber(double v);

// The text of the outline file: the outer contour as four runs from the
// middle of the main curve round the frame (the end points of each run
// repeated as the start of the next), then with doubling the inner contour
// the same way, no separator. x = px / 52.389, y = (BaseLineY - py) / 52.389,
// a point on the base line taken 1 pixel above it. Empty when a curve is empty.
std::string FrameOutlineText(const FrameState& f);

// Writes the outline file to `path` (named by OutlineFileName) beside and
// then in place: false with a message when it cannot be written, the old file
// then left as it was.
bool SaveFrameOutline(const FrameState& f, const std::string& answer, std::string& written, std::string& error);

// ---- frame project (.CVB) ---------------------------------------------------------

// Writes [Couple] and the two handle sections. False with a message on failure.
bool SaveFrameProject(const FrameState& f, const std::filesystem::path& file, std::string& error);
// Reads a frame project into f. What is missing or unreadable takes its start
// value, and `warning` says so in one line; the frame is always usable.
// False only when the file cannot be read at all (f unchanged).
bool LoadFrameProject(FrameState& f, const std::filesystem::path& file, std::string& warning);

}  // namespace tarvokin

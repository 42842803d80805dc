// Airfoil outlines: the .DAT files, the current outline of the run and its
// copies, thickness and camber figures, and the editing of both.
//
// An outline is one closed line in file order: from the trailing edge over
// the upper surface to the leading edge and back along the lower surface.
// Every routine here assumes that order and does not check it.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/outline_types.h"

namespace tarvokin {

class Workbench;

// ---- reading ---------------------------------------------------------------

// The file an outline name stands for: "," read as "."; an empty name is
// DATA/CLARKY.DAT; a bare name lies in DATA; a relative path is taken from the
// program's folder `home`. "\" counts as a folder separator. When the path
// does not exist as written, a file whose folders and name differ only in
// letter case is taken instead (catalogue rows hold upper-case paths).
std::filesystem::path outlinePath(const std::filesystem::path& home, std::string_view file);

// The points of a .DAT text by the forgiving line rules (any line with a "."
// or "," and without a capital from "A" to "P" is a point; a number that does
// not convert keeps the previous point's value), with the extremes.
OutlinePoints readOutlineText(std::string_view text, OutlineExtremes& extremes);

// The same on a file; false (points untouched) when it cannot be opened.
bool readOutlineFile(const std::filesystem::path& file, OutlinePoints& points, OutlineExtremes& extremes);

// Reads `file` (see outlinePath) into wb.outlines: normalised to a chord of 1
// at the largest x, closed onto the first point, figures routed, copies taken
// and the fine copy resampled. A file that cannot be opened leaves Outline as
// one point at 0 and returns false; a bad file leaves what could be read.
bool Load_Profil(Workbench& wb, std::string_view file, int slot, OutlineWindow form);

// ---- geometry --------------------------------------------------------------

// Index of the leading edge: the last point of the first run of strictly
// falling x (0 for an empty outline).
size_t Find_Nose(const OutlinePoints& outline);

// For each point, the opposite surface's y at the point's x, by linear
// interpolation; opposite keeps the point's x. False when two points of a
// segment share an x (the march stops there; the rest of opposite is 0).
bool Split_Surfaces(const OutlinePoints& outline, OutlinePoints& opposite);

// Split_Surfaces of wb.outlines.Outline, which also leaves the working files
// upper.txt (the outline) and lower.txt (the opposite), "x;y" a line, in the
// program's folder. They are for looking at; nothing reads them.
bool Split_Surfaces(Workbench& wb, OutlinePoints& opposite);

// y at x on the line through two points; the mean of y1 and y2 when x1 == x2.
double Interp_Y(double x1, double y1, double x2, double y2, double x);

// n + 1 points at equal steps of arc length on the spline under tension
// through the points (start and end kept). Consecutive equal points count once.
OutlinePoints TensionSpline(const OutlinePoints& points, int n, double tension = kSplineTension);

// ---- figures and editing of wb.outlines.Outline ------------------------------

// Largest thickness in per cent of chord, 2 decimals, and its position by
// `position`; "-" for both when the outline is empty or cannot be split.
std::string Get_Thickness(Workbench& wb, std::string& position);

// Largest camber above the chord (0 when the mean line is nowhere above) and
// its position, the same way; fills wb.outlines.CamberLine from the trailing
// edge to the nose.
std::string Get_Camber(Workbench& wb, std::string& position);

// Scale the mean line (keeping the thickness at each x), or the thickness
// (keeping the mean line), from the old figure to the new one, both in the
// units the fields show them. False, and the outline unchanged, when the old
// figure is 0, the outline cannot be split or has fewer than 3 points.
bool Edit_Camber(Workbench& wb, double newCamber, double oldCamber);
bool Edit_Thickness(Workbench& wb, double newThickness, double oldThickness);

// ---- writing ---------------------------------------------------------------

// Writes the points, "x y" a line with 7 decimals each, no title; ".DAT" is
// added when the chosen file name has no "."; a bare name goes to DATA of
// `home`. Returns the path written, "" on failure. Entering the file in the
// catalogue is the caller's next step.
std::string Write_Profil(const std::filesystem::path& home, const OutlinePoints& points, std::string_view name);

}  // namespace tarvokin

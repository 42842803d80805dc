// Shaping the fuselage by its frame markers in the two drawings of F_GEO_FUS,
// "VUE PROFIL" (side) and "VUE DESSUS" (top), and the figures of the body the
// markers describe. Positions are model millimetres: in the side view x is the
// station from the nose and y the height above the reference line; in the top
// view y is the half width, positive to the left. The widget converts its
// pixels with FuselageViewMapping.
#pragma once

#include <string>
#include <vector>

#include "views/aircraft_layout.h"

namespace tarvokin {

class DrawSurface;
class Sheet;
class Workbench;

inline constexpr int kNoMarker = 999;

enum class FuselageView { Side = 1, Top = 2 };

// One frame marker as stored, in millimetres: station, upper and lower edge
// (side), left and right half width (top).
struct FuselageMarker {
    double x1 = 0, y1 = 0, y2 = 0, v1 = 0, v2 = 0;
};
std::vector<FuselageMarker> ReadMarkers(const Sheet& s);
// The markers as shown, the shape factors applied.
std::vector<FuselageMarker> ShownMarkers(const Sheet& s);

// Pixels of a drawing for the model's millimetres: px = ox + x * scale,
// py = oy - y * scale, one scale both ways so the shape is true.
struct ViewMapping {
    double scale = 1, ox = 0, oy = 0;
    double toPixelX(double x) const { return ox + x * scale; }
    double toPixelY(double y) const { return oy - y * scale; }
    double toModelX(double px) const { return (px - ox) / scale; }
    double toModelY(double py) const { return (oy - py) / scale; }
};
ViewMapping FuselageViewMapping(const Sheet& s, FuselageView view, int width, int height);

// The marker nearest to the point (distance to its line), kNoMarker when the
// fuselage has none; `edge` says which end is nearer (1 upper/left, 2 lower/right).
int NearestMarker(const Sheet& s, FuselageView view, double x, double y, int& edge);

// The mouse on a drawing. Press takes the nearest marker (writing the frames
// of a new model into the markers first when none was placed); Move brings
// the held marker's station and nearer edge to the point and writes its
// label; Release lets it go. The markers keep their order. True when a
// marker was taken or moved.
bool FuselagePress(Workbench& wb, FuselageView view, double x, double y);
bool FuselageMove(Workbench& wb, FuselageView view, double x, double y);
void FuselageRelease(Workbench& wb);

// "330.00 mm / 33.00 mm"
std::string MarkerLabel(double a, double b);

// The figures of the body through the markers: "Surf. Mouillée" j24 and
// "Surf. Portante" j25 in dm², the neutral point j26 in percent of length.
struct FuselageFigures {
    bool valid = false;
    double wetted = 0;   // mm²
    double planArea = 0; // mm²
    double neutralPoint = 0;  // mm from the nose
    double neutralPercent = 0;
};
FuselageFigures ComputeFuselageFigures(const Sheet& s);
void UpdateFuselageFigures(Workbench& wb);

// The drawings, fitted to the surface: outline joined through the markers by
// straight segments, markers as lines, the held one in red with its label.
void DrawFuselageSide(const Sheet& s, DrawSurface& surface);
void DrawFuselageTop(const Sheet& s, DrawSurface& surface);

}  // namespace tarvokin

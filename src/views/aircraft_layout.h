// Where each part of the aircraft stands, read from the geometry fields: the
// shared ground of the 3D mesh and of the 2D plans. Millimetres, in the axes
// of mesh_skin.h (x backwards from the nose, y up, left wing towards -z).
//
// Each part is laid out in its own frame: the wing from the leading edge of
// its root, the stabiliser from its root leading edge, the fin from its root
// leading edge, the fuselage from its nose. The stations of those origins
// along the fuselage are given apart (`wingStation`...), because the 3D view
// places the parts only in some states of its check boxes.
#pragma once

#include <optional>
#include <vector>

#include "views/mesh_skin.h"

namespace tarvokin {

class Sheet;

struct WingPanelLayout {
    int panel = 1;         // 1..5, the column of the wing grid
    bool winglet = false;  // the panel named by the winglet switch
    PanelShape shape;
};

// A fuselage frame: its station from the nose, its size, and the height of
// its middle above the fuselage's reference line.
struct FuselageFrame {
    double station = 0, width = 0, height = 0, yCentre = 0;
};

struct AircraftLayout {
    // Panels that exist (span, root chord and tip chord all above 0), root to tip.
    std::vector<WingPanelLayout> wing;
    std::vector<WingPanelLayout> stab;
    std::optional<PanelShape> fin;  // one fin, or the left one of two
    double finSpacing = 0;          // distance between twin fins; 0 for one
    std::vector<FuselageFrame> frames;  // empty when there is no fuselage

    double wingStation = 0;  // nose to the wing's root leading edge
    double stabStation = 0;  // nose to the stabiliser's root leading edge
    double finStation = 0;   // nose to the fin's root leading edge
    // Length the view is centred on: the fuselage's, or without one the
    // reach of the parts behind the nose.
    double length = 0;
};

AircraftLayout LayoutAircraft(const Sheet& s);

// The fuselage frames: the eight frame markers of F_GEO_FUS (stations and
// sizes in mm) when any of them has a size; else frames placed by the rule of
// a new model from the length, nose distance, root chord, width and height.
// Empty when the length is not above 0.
// The shape factors of the fuselage window (HScroll1, HScroll2, VScroll1,
// VScroll2, VScroll3) are applied: width, stations, upper edges, lower edges
// and whole height, each in percent.
std::vector<FuselageFrame> FuselageFrames(const Sheet& s);
// The same frames before the shape factors.
std::vector<FuselageFrame> FuselageFramesAsMarked(const Sheet& s);

// The shape factors as multipliers, each held within 0.1..3.
struct FuselageShapeFactors {
    double width = 1, length = 1, upper = 1, lower = 1, height = 1;
    bool neutral() const { return width == 1 && length == 1 && upper == 1 && lower == 1 && height == 1; }
};
FuselageShapeFactors ShapeFactors(const Sheet& s);

// The count of ticked part boxes that decides whether the 3D view places the
// parts on the fuselage: each of F_3D.Check1 1, 2 and 3 ("aile D", "Stab",
// "Fuselage") ticked adds 1, and each of the pairs 1-2 and 2-3 ticked
// together takes 1 away. Placing happens when it comes to exactly 1.
int PartPlacingCount(const Sheet& s);

}  // namespace tarvokin

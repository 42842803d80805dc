// The frame as a 3D piece: the closed contour of the frame generator
// extruded by its thickness, in the frame's own scene with its own orbit.
#pragma once

#include "core/frame_state.h"
#include "views/mesh_skin.h"

namespace tarvokin {

class DrawSurface;

// The pieces that can be seen: the whole frame or one of its halves.
enum class FrameKind { Whole = 0, Left = 1, Right = 2, Lower = 3, Upper = 4 };
inline constexpr const char* kFrameKindNames[5] = {"Couple Entier", "Couple Gauche", "Couple Droit",
                                                   "CoupleInférieur", "Couple Supérieur"};
// The five ways of drawing it, by the camera's render mode.
inline constexpr const char* kFrameViewNames[5] = {"VueTransparent", "Vue Silhouette", "Vue Filaire", "Vue Solide",
                                                   "Vue Surface"};
int FrameViewRenderMode(int view);

// The closed contour of the piece, in millimetres about the axis line and the
// base line (x right, y up): the main curve and its mirror, cut to the kind.
std::vector<MeshPoint> FrameContour(const FrameState& f, const FramePoints& right, const FramePoints& left,
                                    FrameKind kind);

// The piece's skin at unit thickness (z from -0.5 to 0.5): a solid plate
// closed by its faces, or with doubling a ring between the two contours.
SkinMesh FrameSkin(const FrameState& f, FrameKind kind);

// Clears the old piece and builds the new one in f.engine, centred and
// coloured, then puts the sliders' sizes on it.
void BuildFrameMesh(FrameState& f, FrameKind kind, double thickness, double heightPercent, double lengthPercent);
// The sliders: the vertices rewritten in place from the piece as built.
void ResizeFrameMesh(FrameState& f, double thickness, double heightPercent, double lengthPercent);

// One frame of the piece on the surface, in the view's render mode.
void RenderFrame(FrameState& f, DrawSurface& surface, int view);
// The orbit: a drag turns the camera about the piece, a right drag zooms.
void OrbitFrame(FrameState& f, double dx, double dy, bool zoom);

// Millimetres of the 3D piece for one drawing pixel: an outline unit is a
// centimetre.
inline constexpr double kFrameMillimetresPerPixel = 10.0 / 52.389;

}  // namespace tarvokin

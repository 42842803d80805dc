// The frame generator's calculation: half a cross-section as a clamped
// uniform B-spline through handles, mirrored about the vertical axis line
// into a whole frame, with an optional second contour offset inside it (the
// doubling) for a hollow frame. Plain functions on FrameState, callable from
// the new-model wizard as from the window.
#pragma once

#include <string>

#include "core/frame_state.h"

namespace tarvokin {

class DrawSurface;

// Start offsets of the inner handles, drawing pixels, outwards from the round.
inline constexpr double kFrameStartOffsets[7] = {-10, -5, 10, 5, 3, -4, 4};
// Side of a handle's marker box, drawing pixels.
inline constexpr double kHandleSize = 8;

// Samples `pointCount` points of the clamped uniform B-spline of `order`
// through `controls` into `out`. Knots: t_i = 0 for i < k, i - k + 1 for
// k <= i <= n, n - k + 2 beyond (n the top control index, k the order); t
// runs evenly from 0 to n - k + 2, the first and last samples are the end
// controls exactly; the basis is Cox-de Boor with 0 for a zero denominator.
// The order is held within 2..n + 1 and the count at 2 at least.
void EvaluateBSpline(const FramePoints& controls, int order, int pointCount, FramePoints& out);

// The mirror of a curve about the vertical line x = axis.
FramePoints MirrorCurve(const FramePoints& curve, double axis);

// The start values: 9 handles on a round about the area's middle from the
// top of the axis line to the reference line, the inner ones moved outwards
// by the start offsets; counts, order, marks, thickness, curves.
void InitFrameGenerator(FrameState& f);

// The doubled handles: each main handle moved by the thickness along the
// curve's local normal, towards the inside of the frame.
void ApplyDoubling(FrameState& f);

// Evaluates the main curve and, with doubling on, the doubled one, and their
// mirrors.
void RecomputeFrameCurves(FrameState& f);

// The handle whose marker box (widened by the grab sizes) holds the point,
// first in index order; on the main handles or on the doubled ones. -1 when none.
int FindHandle(const FrameState& f, double x, double y, bool mainHandles);

// What the drawing shows, from the pb1 toolbar's toggles.
struct FrameDrawOptions {
    bool handles = true, dotted = false, points = false, axes = true, grid = true;
};

// Recomputes the curves and draws everything on the surface, the drawing
// area scaled to fit it: curve, mirror, doubled curve and mirror, handles,
// sample points, grid, axes.
void DisegnaCurva(FrameState& f, DrawSurface& surface, const FrameDrawOptions& o);

// The grid and the sample points alone, as the toolbar draws them.
void Quadrillage(DrawSurface& surface, double scale);
void Visu_Points(const FrameState& f, DrawSurface& surface, double scale);

// The drawing area's scale on a surface of that size (uniform, fits both ways).
double FrameDrawScale(int width, int height);

// "Assemblage": the frame and its doubler drawn apart for cutting, side by
// side (horizontal) or one above the other (vertical); the frame alone
// without doubling.
void DrawFrameAssembly(FrameState& f, DrawSurface& surface, bool horizontal);

// ---- the mouse on the drawing, in drawing pixels --------------------------------

// A press: with the left button the handle under the point becomes active;
// another button on a handle toggles its mark ("" -> "1"; "1" -> "" and red).
void FramePress(FrameState& f, double x, double y, int button, bool mainHandles);
// A move with the left button held: the active handle follows; in the
// slaved mode the doubled handles are recomputed. True when a handle moved.
bool FrameMove(FrameState& f, double x, double y, bool mainHandles);
void FrameRelease(FrameState& f);

// Starts a new frame from the points of a start outline in the two-column
// format (x and y a line, unit chord): the handles are picked evenly along
// its upper half and laid into the area. False (frame unchanged) when the
// file holds fewer than 3 points.
bool NewFrameFromOutline(FrameState& f, const std::string& path, std::string& error);

}  // namespace tarvokin

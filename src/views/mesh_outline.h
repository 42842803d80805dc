// Cross-sections of the aircraft's parts, as outlines of unit chord in the
// order of an airfoil file (trailing edge, upper surface, leading edge, lower
// surface, back to the trailing edge), each resampled to the same number of
// points so that two sections of a part can be joined point by point.
#pragma once

#include "airfoils/outline.h"

namespace tarvokin {

class Workbench;
class Sheet;

// Points in a resampled section; the engine's polyline primitive draws this
// many segments.
inline constexpr int kSectionPoints = 31;

// Resamples an outline to `count` points with a cubic spline through the
// points, separately on each side of the leading edge (the point of smallest
// x), so that the first point, the last point and the leading edge are kept.
// Points gather towards both edges, where the curvature is. Repeated points
// count once. Fewer than two distinct points, or count below 3, give an empty
// result.
OutlinePoints ResampleOutline(const OutlinePoints& points, int count);

// NACA four-digit section of unit chord: camber and thickness as fractions of
// the chord, camber position as a fraction; closed trailing edge.
OutlinePoints NacaSection(double camber, double camberPosition, double thickness, int count = kSectionPoints);

// The wing section: the outline file of the airfoil chosen in F_3D.Combo5,
// normalised to unit chord, resampled. When that file cannot be read, the
// outline of last resort (DATA/CLARKY.DAT); when neither can, a NACA 2412.
OutlinePoints WingSection(const Workbench& wb);

// Stabiliser section by its type (F_3D.Combo7): thin, medium or thick,
// symmetric or lifting.
OutlinePoints StabSection(const Sheet& s);

// Fin section: the symmetric section of the stabiliser's thickness class.
OutlinePoints FinSection(const Sheet& s);

// Fuselage cross-section by its type (F_3D.Combo9): round, oval or box, in a
// unit square (x 0..1, y -0.5..0.5).
OutlinePoints FuselageSection(const Sheet& s);

}  // namespace tarvokin

#include "views/aircraft_layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "core/sheet.h"

namespace tarvokin {

namespace {

// A field as a length or an angle for the drawing: the leading number of its
// text, and 0 for anything that is not a usable size (a drawing a million
// millimetres wide is already nonsense; beyond it floats would overflow).
double field(const Sheet& s, Cell c) {
    const double v = s.val(c);
    if (!std::isfinite(v) || std::fabs(v) > 1e6) return 0;
    return v;
}

double rowValue(const Sheet& s, const grid::Row& row, int k) { return field(s, row[static_cast<size_t>(k - 1)]); }

// Panels of a surface, each root at the tip of the one inside it: along x by
// the leading-edge sweeps, which are measured from the surface's root, and
// along the span lines of all inner panels, present or not, so a skipped
// panel leaves the others where they were.
std::vector<WingPanelLayout> layPanels(const Sheet& s, const grid::Row& rootRow, const grid::Row& tipRow,
                                       const grid::Row& lengthRow, const grid::Row& sweepRow,
                                       const grid::Row* twistRow, const grid::Row* dihedralRow, double fixedDihedral,
                                       MeshPoint origin, int winglet) {
    std::vector<WingPanelLayout> out;
    MeshPoint root = origin;
    double rootSweep = 0, rootTwist = 0;
    for (int k = 1; k <= 5; ++k) {
        const double cr = rowValue(s, rootRow, k), ct = rowValue(s, tipRow, k), L = rowValue(s, lengthRow, k);
        const double sweep = rowValue(s, sweepRow, k);
        const double twist = twistRow ? rowValue(s, *twistRow, k) : 0;
        const double dihedral = dihedralRow ? rowValue(s, *dihedralRow, k) : fixedDihedral;
        if (cr > 0 && ct > 0 && L > 0) {
            WingPanelLayout p;
            p.panel = k;
            p.winglet = k == winglet;
            p.shape.rootChord = cr;
            p.shape.tipChord = ct;
            p.shape.length = L;
            p.shape.sweep = sweep - rootSweep;
            p.shape.rootTwist = rootTwist;
            p.shape.tipTwist = twist;
            p.shape.dihedral = dihedral;
            p.shape.rootRoll = dihedral;
            p.shape.tipRoll = dihedral;
            p.shape.root = {origin.x + rootSweep, root.y, root.z};
            // Joints in the plane half way between neighbours; the first
            // root in the plane of symmetry.
            if (k == 1) {
                p.shape.rootRoll = 0;
            } else if (!out.empty() && out.back().panel == k - 1) {
                WingPanelLayout& inner = out.back();
                inner.shape.tipRoll = (inner.shape.dihedral + dihedral) / 2;
                p.shape.rootRoll = inner.shape.tipRoll;
            }
            out.push_back(p);
        }
        const double d = dihedral * std::numbers::pi / 180.0;
        root.y += L * std::sin(d);
        root.z -= L * std::cos(d);
        rootSweep = sweep;
        rootTwist = twist;
    }
    return out;
}

double frameFactor(double station, double nose, double tailStart, double length) {
    // A rounded nose up to the wing, full size along the root chord, then a
    // straight taper to a third of the size at the tail.
    if (station < nose && nose > 0) return 0.4 + 0.6 * std::sin(std::numbers::pi / 2 * station / nose);
    if (station > tailStart && length > tailStart) return 1.0 - 0.7 * (station - tailStart) / (length - tailStart);
    return 1.0;
}

}  // namespace

std::vector<FuselageFrame> FuselageFrames(const Sheet& s) {
    std::vector<FuselageFrame> frames = FuselageFramesAsMarked(s);
    const FuselageShapeFactors k = ShapeFactors(s);
    if (k.neutral()) return frames;
    for (FuselageFrame& f : frames) {
        const double up = f.yCentre + f.height / 2, down = f.yCentre - f.height / 2;
        const double u = up * k.upper * k.height, d = down * k.lower * k.height;
        f.station *= k.length;
        f.width *= k.width;
        f.height = std::fabs(u - d);
        f.yCentre = (u + d) / 2;
    }
    return frames;
}

FuselageShapeFactors ShapeFactors(const Sheet& s) {
    // A factor below a tenth would fold the body onto itself: the sliders
    // stop there, and a typed value is held to it.
    auto factor = [&s](Cell c) {
        double v = 0;
        if (!tryNumber(s.text(c), v) || !std::isfinite(v)) return 1.0;
        return std::clamp(v, 10.0, 300.0) / 100;
    };
    FuselageShapeFactors k;
    k.width = factor(F_GEO_FUS::HScroll1);
    k.length = factor(F_GEO_FUS::HScroll2);
    k.upper = factor(F_GEO_FUS::VScroll1);
    k.lower = factor(F_GEO_FUS::VScroll2);
    k.height = factor(F_GEO_FUS::VScroll3);
    return k;
}

std::vector<FuselageFrame> FuselageFramesAsMarked(const Sheet& s) {
    std::vector<FuselageFrame> frames;
    const double length = field(s, F_GEO_FUS::b24);
    if (!(length > 0)) return frames;

    bool marked = false;
    for (int n = 0; n < F_GEO_FUS::Couple_X1.count; ++n) {
        FuselageFrame f;
        const double up = field(s, F_GEO_FUS::Couple_Y1[n]), down = field(s, F_GEO_FUS::Couple_Y2[n]);
        f.station = field(s, F_GEO_FUS::Couple_X1[n]);
        f.height = std::fabs(up - down);
        f.yCentre = (up + down) / 2;
        f.width = std::fabs(field(s, F_GEO_FUS::CoupleV_Y1[n]) - field(s, F_GEO_FUS::CoupleV_Y2[n]));
        marked = marked || f.width > 0 || f.height > 0;
        frames.push_back(f);
    }
    if (marked) return frames;

    // No marker has been placed: the frames of a new model, at half the nose
    // distance, at the wing's leading edge and trailing edge, three evenly
    // behind, the first at a third of the second's distance and the last at
    // the tail.
    frames.clear();
    const double width = field(s, F_GEO_FUS::D24), height = field(s, F_GEO_FUS::D25);
    if (!(width > 0) || !(height > 0)) return frames;
    const double nose = std::max(0.0, field(s, F_GEO_FUS::b25));
    const double rootEnd = nose + std::max(0.0, field(s, F_GEO_SF::b5));
    const double step = (length - rootEnd) / 4;
    const double stations[8] = {nose / 6,          nose / 2,          nose,   rootEnd, rootEnd + step,
                                rootEnd + 2 * step, rootEnd + 3 * step, length};
    for (double st : stations) {
        const double f = frameFactor(st, nose, rootEnd, length);
        frames.push_back({st, width * f, height * f, 0});
    }
    return frames;
}

int PartPlacingCount(const Sheet& s) {
    const bool right = s.on(F_3D::Check1[1]), stab = s.on(F_3D::Check1[2]), fuselage = s.on(F_3D::Check1[3]);
    return int(right) + int(stab) + int(fuselage) - int(right && stab) - int(stab && fuselage);
}

AircraftLayout LayoutAircraft(const Sheet& s) {
    AircraftLayout a;
    a.wingStation = field(s, F_GEO_FUS::b25);
    a.stabStation = a.wingStation + field(s, F_GEO_STAB::b20);
    a.finStation = field(s, F_GEO_STAB::Text14);

    // The wing hangs at its height on the fuselage, measured downwards.
    a.wing = layPanels(s, grid::kRoot, grid::kTip, grid::kLength, grid::kSweep, &grid::kTwist, &grid::kDihedral, 0,
                       {0, -field(s, F_GEO_FUS::Text5), 0}, WingletPanel(s));
    // The two halves of a V-tail stand at half the opening from the vertical.
    a.stab = layPanels(s, grid::kStabRoot, grid::kStabTip, grid::kStabLength, grid::kStabSweep, nullptr, nullptr,
                       90.0 - OpeningAngle(s) / 2, {0, field(s, F_GEO_STAB::Text4), 0}, 0);

    const double finRoot = field(s, F_GEO_STAB::Text12), finHeight = field(s, F_GEO_STAB::Text10);
    if (finRoot > 0 && finHeight > 0) {
        PanelShape f;
        f.rootChord = finRoot;
        f.tipChord = std::max(0.0, field(s, F_GEO_STAB::Text11));
        f.length = finHeight;
        f.sweep = field(s, F_GEO_STAB::Text9);
        f.dihedral = 90;
        f.rootRoll = f.tipRoll = 90;
        if (s.on(F_GEO_STAB::Check2)) a.finSpacing = std::fabs(field(s, F_GEO_STAB::Text13));
        f.root = {0, field(s, F_GEO_STAB::Text2), -a.finSpacing / 2};
        a.fin = f;
    }

    a.frames = FuselageFrames(s);
    if (!a.frames.empty()) {
        a.length = field(s, F_GEO_FUS::b24);
    } else if (!a.stab.empty()) {
        a.length = a.stabStation + a.stab.front().shape.rootChord;
    } else if (!a.wing.empty()) {
        a.length = a.wingStation + a.wing.front().shape.rootChord;
    }
    return a;
}

}  // namespace tarvokin

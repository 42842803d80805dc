#include "construction/fuselage_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/numbers.h"
#include "core/workbench.h"
#include "views/draw_surface.h"

namespace tarvokin {

namespace {

double cellNumber(const Sheet& s, Cell c) {
    double v = 0;
    if (!tryNumber(s.text(c), v) || !std::isfinite(v)) return 0;
    return v;
}

// A written coordinate: two decimals, no trailing zeros, as a typed one.
std::string coordinate(double v) { return plain(roundHalfAway(v, 2)); }

bool anyPlaced(const std::vector<FuselageMarker>& m) {
    for (const FuselageMarker& k : m)
        if (k.y1 != k.y2 || k.v1 != k.v2) return true;
    return false;
}

double segmentDistance(double px, double py, double x, double ya, double yb) {
    const double lo = std::min(ya, yb), hi = std::max(ya, yb);
    const double dy = py < lo ? lo - py : (py > hi ? py - hi : 0);
    return std::hypot(px - x, dy);
}

}  // namespace

std::vector<FuselageMarker> ReadMarkers(const Sheet& s) {
    using namespace F_GEO_FUS;
    std::vector<FuselageMarker> m(static_cast<size_t>(Couple_X1.count));
    for (int n = 0; n < Couple_X1.count; ++n) {
        FuselageMarker& k = m[static_cast<size_t>(n)];
        k.x1 = cellNumber(s, Couple_X1[n]);
        k.y1 = cellNumber(s, Couple_Y1[n]);
        k.y2 = cellNumber(s, Couple_Y2[n]);
        k.v1 = cellNumber(s, CoupleV_Y1[n]);
        k.v2 = cellNumber(s, CoupleV_Y2[n]);
    }
    return m;
}

std::vector<FuselageMarker> ShownMarkers(const Sheet& s) {
    std::vector<FuselageMarker> m = ReadMarkers(s);
    const FuselageShapeFactors k = ShapeFactors(s);
    for (FuselageMarker& f : m) {
        f.x1 *= k.length;
        f.y1 *= k.upper * k.height;
        f.y2 *= k.lower * k.height;
        f.v1 *= k.width;
        f.v2 *= k.width;
    }
    return m;
}

ViewMapping FuselageViewMapping(const Sheet& s, FuselageView view, int width, int height) {
    const std::vector<FuselageMarker> m = ShownMarkers(s);
    double x0 = 0, x1 = std::max(1.0, cellNumber(s, F_GEO_FUS::b24) * ShapeFactors(s).length);
    const bool side = view == FuselageView::Side;
    const double half = (side ? cellNumber(s, F_GEO_FUS::D25) : cellNumber(s, F_GEO_FUS::D24)) / 2;
    double y0 = -std::max(half, 1.0), y1 = std::max(half, 1.0);
    for (const FuselageMarker& k : m) {
        x0 = std::min(x0, k.x1);
        x1 = std::max(x1, k.x1);
        const double a = side ? k.y1 : k.v1, b = side ? k.y2 : k.v2;
        y0 = std::min({y0, a, b});
        y1 = std::max({y1, a, b});
    }
    // Room round the body for the labels; the body's height is shown at
    // least at a fifth of its length so that a slim fuselage can be handled.
    const double spanX = (x1 - x0) * 1.1, spanY = std::max((y1 - y0) * 1.3, (x1 - x0) / 5);
    ViewMapping v;
    v.scale = std::max(1e-6, std::min(width / std::max(spanX, 1.0), height / std::max(spanY, 1.0)));
    v.ox = width / 2.0 - (x0 + x1) / 2 * v.scale;
    v.oy = height / 2.0 + (y0 + y1) / 2 * v.scale;
    return v;
}

int NearestMarker(const Sheet& s, FuselageView view, double x, double y, int& edge) {
    edge = 0;
    if (!(cellNumber(s, F_GEO_FUS::b24) > 0)) return kNoMarker;
    const std::vector<FuselageMarker> m = ShownMarkers(s);
    int best = kNoMarker;
    double bestDistance = 0;
    for (size_t n = 0; n < m.size(); ++n) {
        const double a = view == FuselageView::Side ? m[n].y1 : m[n].v1;
        const double b = view == FuselageView::Side ? m[n].y2 : m[n].v2;
        const double d = segmentDistance(x, y, m[n].x1, a, b);
        if (best == kNoMarker || d < bestDistance) {
            best = static_cast<int>(n);
            bestDistance = d;
            edge = std::fabs(y - a) <= std::fabs(y - b) ? 1 : 2;
        }
    }
    return best;
}

std::string MarkerLabel(double a, double b) { return fixed(a, 2) + " mm / " + fixed(b, 2) + " mm"; }

bool FuselagePress(Workbench& wb, FuselageView view, double x, double y) {
    Sheet& s = wb.sheet;
    using namespace F_GEO_FUS;
    // A model whose markers were never placed shows the frames of the new
    // model's rule: they become markers the moment one is taken.
    if (!anyPlaced(ReadMarkers(s))) {
        const std::vector<FuselageFrame> frames = FuselageFramesAsMarked(s);
        for (size_t n = 0; n < frames.size() && static_cast<int>(n) < Couple_X1.count; ++n) {
            const FuselageFrame& f = frames[n];
            const int i = static_cast<int>(n);
            s.set(Couple_X1[i], coordinate(f.station));
            s.set(Couple_Y1[i], coordinate(f.yCentre + f.height / 2));
            s.set(Couple_Y2[i], coordinate(f.yCentre - f.height / 2));
            s.set(CoupleV_Y1[i], coordinate(f.width / 2));
            s.set(CoupleV_Y2[i], coordinate(-f.width / 2));
        }
    }
    int edge = 0;
    const int n = NearestMarker(s, view, x, y, edge);
    s.set(T_Marker, std::to_string(n));
    s.set(T_MarkerView, n == kNoMarker ? "0" : std::to_string(static_cast<int>(view)));
    s.set(T_MarkerEdge, std::to_string(edge));
    s.set(L_Marker, "");
    return n != kNoMarker;
}

bool FuselageMove(Workbench& wb, FuselageView view, double x, double y) {
    Sheet& s = wb.sheet;
    using namespace F_GEO_FUS;
    const int n = static_cast<int>(s.val(T_Marker));
    if (n < 0 || n >= Couple_X1.count || static_cast<int>(s.val(T_MarkerView)) != static_cast<int>(view)) return false;
    if (!std::isfinite(x) || !std::isfinite(y)) return false;
    // The pointer is where the marker is shown: the stored value is that
    // position with the shape factors taken off.
    const FuselageShapeFactors k = ShapeFactors(s);
    const bool upperEdge = static_cast<int>(s.val(T_MarkerEdge)) != 2;
    s.set(Couple_X1[n], coordinate(x / k.length));
    if (view == FuselageView::Side) {
        const double f = (upperEdge ? k.upper : k.lower) * k.height;
        s.set(upperEdge ? Couple_Y1[n] : Couple_Y2[n], coordinate(y / f));
    } else {
        s.set(upperEdge ? CoupleV_Y1[n] : CoupleV_Y2[n], coordinate(y / k.width));
    }
    s.set(L_Marker, MarkerLabel(x, y));
    return true;
}

void FuselageRelease(Workbench& wb) {
    Sheet& s = wb.sheet;
    s.set(F_GEO_FUS::T_Marker, std::to_string(kNoMarker));
    s.set(F_GEO_FUS::T_MarkerView, "0");
    s.set(F_GEO_FUS::L_Marker, "");
}

// ---- figures ------------------------------------------------------------------------

namespace {

// Perimeter and area of a section: the "Caisse" body has rectangular
// frames, the round and oval ones elliptical (Ramanujan's perimeter, within a
// tenth of a percent up to a 5:1 oval).
struct Section {
    double perimeter = 0, area = 0;
};
Section section(double width, double height, bool box) {
    const double a = width / 2, b = height / 2;
    if (box) return {2 * (width + height), width * height};
    if (a + b <= 0) return {};
    const double h = (a - b) * (a - b) / ((a + b) * (a + b));
    return {std::numbers::pi * (a + b) * (1 + 3 * h / (10 + std::sqrt(4 - 3 * h))), std::numbers::pi * a * b};
}

}  // namespace

FuselageFigures ComputeFuselageFigures(const Sheet& s) {
    FuselageFigures r;
    const std::vector<FuselageFrame> frames = FuselageFrames(s);
    if (frames.size() < 2) return r;
    const bool box = s.listIndex(F_3D::Combo9) == 2;
    std::vector<Section> sec;
    for (const FuselageFrame& f : frames) sec.push_back(section(f.width, f.height, box));

    // Between two frames the skin is the ruled surface of the 3D body: its
    // area is the mean perimeter times the slant length (exact for a
    // frustum); the plan area is the trapezium of the two widths. Frames are
    // taken in the order the user left them, each gap counted by its length.
    double largest = -1, volumeAhead = 0, largestStation = 0;
    for (size_t i = 0; i + 1 < frames.size(); ++i) {
        const double dx = std::fabs(frames[i + 1].station - frames[i].station);
        const double dr = (sec[i + 1].perimeter - sec[i].perimeter) / (2 * std::numbers::pi);
        r.wetted += (sec[i].perimeter + sec[i + 1].perimeter) / 2 * std::hypot(dx, dr);
        r.planArea += (frames[i].width + frames[i + 1].width) / 2 * dx;
    }
    // Closed ends add their frame as a flat cap, as the 3D body closes them.
    const bool tube = s.on(F_GEO_FUS::Option1), noseOnly = !tube && s.on(F_GEO_FUS::Option2);
    if (!tube) r.wetted += sec.front().area;
    if (!tube && !noseOnly) r.wetted += sec.back().area;

    // Neutral point by slender-body theory: the lift of a body grows where
    // its section grows, so it acts ahead of the largest section, at
    // x_max - (volume ahead of it) / (largest section area).
    size_t m = 0;
    for (size_t i = 0; i < frames.size(); ++i)
        if (sec[i].area > largest) {
            largest = sec[i].area;
            m = i;
            largestStation = frames[i].station;
        }
    for (size_t i = 0; i < m; ++i) {
        const double dx = std::fabs(frames[i + 1].station - frames[i].station);
        volumeAhead += (sec[i].area + sec[i + 1].area) / 2 * dx;
    }
    double length = s.num(F_GEO_FUS::b24) * ShapeFactors(s).length;
    if (!(length > 0)) length = std::fabs(frames.back().station - frames.front().station);
    if (!(largest > 0) || !(length > 0) || !(r.wetted > 0)) return r;
    r.neutralPoint = std::max(0.0, largestStation - volumeAhead / largest);
    r.neutralPercent = 100 * r.neutralPoint / length;
    r.valid = std::isfinite(r.wetted) && std::isfinite(r.planArea) && std::isfinite(r.neutralPercent);
    return r;
}

void UpdateFuselageFigures(Workbench& wb) {
    Sheet& s = wb.sheet;
    using namespace F_GEO_FUS;
    const FuselageFigures f = ComputeFuselageFigures(s);
    if (!f.valid) {
        s.set(j24, "-");
        s.set(j25, "-");
        s.set(j26, "-");
        return;
    }
    s.setFixed(j24, f.wetted / 1e4, 1);  // mm² to dm²
    s.setFixed(j25, f.planArea / 1e4, 1);
    s.setFixed(j26, f.neutralPercent, 1);
}

// ---- drawings ---------------------------------------------------------------------

namespace {

constexpr PackedColour kWhite = 0xFFFFFF, kOutline = 0x000000, kMarker = 0xC08000, kHeld = 0x0000FF,
                       kReference = 0xA0A0A0, kTitle = 0x404040;

int ix(double v) { return static_cast<int>(std::lround(std::clamp(v, -1e6, 1e6))); }

void drawView(const Sheet& s, DrawSurface& d, FuselageView view) {
    const bool side = view == FuselageView::Side;
    const ViewMapping v = FuselageViewMapping(s, view, d.width(), d.height());
    d.setDrawMode(drawmode::CopyPen);
    d.setDrawStyle(drawstyle::Solid);
    d.clear(kWhite);
    d.setForeColor(kTitle);
    d.textOut(6, 4, side ? "VUE PROFIL" : "VUE DESSUS");
    // The reference line (side) or the axis (top).
    d.setForeColor(kReference);
    d.moveTo(0, ix(v.toPixelY(0)));
    d.lineTo(d.width(), ix(v.toPixelY(0)));
    if (!(s.val(F_GEO_FUS::b24) > 0)) return;

    std::vector<FuselageMarker> m = ShownMarkers(s);
    if (!anyPlaced(ReadMarkers(s))) {
        // Not placed yet: the frames the 3D body is built from.
        m.clear();
        for (const FuselageFrame& f : FuselageFrames(s))
            m.push_back({f.station, f.yCentre + f.height / 2, f.yCentre - f.height / 2, f.width / 2, -f.width / 2});
    }
    // The outline: upper and lower edges joined marker to marker, in the
    // markers' own order, closed at both ends.
    d.setForeColor(kOutline);
    for (int edge = 0; edge < 2; ++edge) {
        for (size_t i = 0; i < m.size(); ++i) {
            const double y = side ? (edge == 0 ? m[i].y1 : m[i].y2) : (edge == 0 ? m[i].v1 : m[i].v2);
            const int px = ix(v.toPixelX(m[i].x1)), py = ix(v.toPixelY(y));
            if (i == 0)
                d.moveTo(px, py);
            else
                d.lineTo(px, py);
        }
    }
    const int held = static_cast<int>(s.val(F_GEO_FUS::T_Marker));
    const bool heldHere = static_cast<int>(s.val(F_GEO_FUS::T_MarkerView)) == static_cast<int>(view);
    for (size_t i = 0; i < m.size(); ++i) {
        const double a = side ? m[i].y1 : m[i].v1, b = side ? m[i].y2 : m[i].v2;
        const bool isHeld = heldHere && held == static_cast<int>(i);
        d.setForeColor(isHeld ? kHeld : kMarker);
        const int px = ix(v.toPixelX(m[i].x1));
        d.moveTo(px, ix(v.toPixelY(a)));
        d.lineTo(px, ix(v.toPixelY(b)));
        if (isHeld && !s.text(F_GEO_FUS::L_Marker).empty())
            d.textOut(px + 4, ix(v.toPixelY(std::max(a, b))) - 18, s.text(F_GEO_FUS::L_Marker));
    }
}

}  // namespace

void DrawFuselageSide(const Sheet& s, DrawSurface& surface) { drawView(s, surface, FuselageView::Side); }
void DrawFuselageTop(const Sheet& s, DrawSurface& surface) { drawView(s, surface, FuselageView::Top); }

}  // namespace tarvokin

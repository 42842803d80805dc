// VLM_Strips: one row of 32 horseshoes on the surface as drawn, panel by
// panel with its sweep, dihedral and twist, with the flaps and ailerons
// deflected and the speed varying across the span in a turn. Metric units.
#include <algorithm>
#include <cmath>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "design/vlm.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr double kGravity = 9.81;
constexpr double kDensity = 1.225;
constexpr double kSpeed = 20;  // m/s
constexpr double kBoundAt = 0.25;  // chord fraction of the bound vortex

struct Vec {
    double x = 0, y = 0, z = 0;
};
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec operator*(Vec a, double k) { return {a.x * k, a.y * k, a.z * k}; }
double dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec cross(Vec a, Vec b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double norm(Vec a) { return std::sqrt(dot(a, a)); }

// Below this squared distance from a vortex line a point takes nothing from it.
constexpr double kCore = 1e-18;

// Velocity at p of a unit vortex segment a -> b, without 1 / (4 pi).
Vec segment(Vec a, Vec b, Vec p) {
    const Vec r1 = p - a, r2 = p - b;
    const Vec c = cross(r1, r2);
    const double c2 = dot(c, c);
    const double n1 = norm(r1), n2 = norm(r2);
    if (c2 < kCore || n1 == 0 || n2 == 0) return {};
    return c * (dot(b - a, r1 * (1 / n1) - r2 * (1 / n2)) / c2);
}

// Velocity at p of a unit vortex running from a to infinity downstream (+x).
Vec trailing(Vec a, Vec p) {
    const Vec r = p - a;
    const Vec e{1, 0, 0};
    const Vec c = cross(e, r);
    const double c2 = dot(c, c);
    const double n = norm(r);
    if (c2 < kCore || n == 0) return {};
    return c * ((1 + r.x / n) / c2);
}

// Horseshoe: from downstream infinity to a, bound a -> b, b to downstream infinity.
Vec horseshoe(Vec a, Vec b, Vec p) { return segment(a, b, p) + trailing(b, p) - trailing(a, p); }

// A panel of the surface as the fields give it: mm and degrees.
struct Panel {
    double root = 0, tip = 0, length = 0, sweep = 0, twist = 0, dihedral = 0;
};

// The point of the surface at a distance s (mm) from the root along the
// panels: chord, leading edge, twist, lateral position and height, and the
// slope of the panel (radians).
struct Walked {
    double chord = 0, le = 0, twist = 0, y = 0, z = 0, slope = 0;
};

Walked walk(const std::array<Panel, 5>& p, double s) {
    const double toRad = PiValue() / 180;
    Walked w;
    double start = 0, slope = 0, sweep0 = 0, twist0 = 0;
    for (size_t k = 0; k < 5; ++k) {
        const Panel& q = p[k];
        if (!(q.length > 0)) continue;
        slope += q.dihedral * toRad;
        const double end = start + q.length;
        const bool last = [&] {
            for (size_t m = k + 1; m < 5; ++m)
                if (p[m].length > 0) return false;
            return true;
        }();
        if (s <= end || last) {
            const double along = std::min(s, end) - start;
            const double t = along / q.length;
            w.chord = q.root + (q.tip - q.root) * t;
            w.le = sweep0 + (q.sweep - sweep0) * t;
            w.twist = twist0 + (q.twist - twist0) * t;
            w.y += std::cos(slope) * along;
            w.z += std::sin(slope) * along;
            w.slope = slope;
            return w;
        }
        w.y += std::cos(slope) * q.length;
        w.z += std::sin(slope) * q.length;
        start = end;
        sweep0 = q.sweep;
        twist0 = q.twist;
    }
    return w;
}

std::array<Panel, 5> readPanels(const Workbench& wb, bool wing) {
    const Sheet& s = wb.sheet;
    std::array<Panel, 5> p{};
    for (size_t k = 0; k < 5; ++k) {
        if (wing) {
            // The twist field is read with its sign turned, as the stations
            // take the twist slope negated again.
            p[k] = {s.val(grid::kRoot[k]),  s.val(grid::kTip[k]),         s.val(grid::kLength[k]),
                    s.val(grid::kSweep[k]), -s.val(grid::kTwist[k]),      s.val(grid::kDihedral[k])};
        } else {
            p[k] = {s.val(grid::kStabRoot[k]), s.val(grid::kStabTip[k]), s.val(grid::kStabLength[k]),
                    s.val(grid::kStabSweep[k]), 0, 0};
        }
        if (!std::isfinite(p[k].length) || p[k].length < 0) p[k].length = 0;
    }
    // A V tail leans each half by the complement of half its opening; the
    // panels beyond the first continue in the same plane.
    if (!wing) p[0].dihedral = 90 - OpeningAngle(s) / 2;
    return p;
}

// A flap or aileron between two span positions (mm from the root) with its
// chord fraction, deflected by `left` and `right` degrees on the two sides.
struct Surface {
    double from = 0, to = 0, effect = 0, left = 0, right = 0;
    double at(double s, bool rightSide) const {
        if (!(s >= from && s <= to)) return 0;
        return effect * (rightSide ? right : left);
    }
};

Surface readSurface(const Sheet& s, Cell posL, Cell posR, Cell pourc, Cell pourcD, Cell angL, Cell angR) {
    Surface f;
    f.from = std::min(s.val(posL), s.val(posR));
    f.to = std::max(s.val(posL), s.val(posR));
    f.effect = FlapEffectiveness((s.val(pourc) + s.val(pourcD)) / 200);
    f.left = s.val(angL);
    f.right = s.val(angR);
    return f;
}

double finiteOr0(double v) { return std::isfinite(v) ? v : 0; }

}  // namespace

double FlapEffectiveness(double chordFraction) {
    // Thin-aerofoil theory for a plain flap: the zero-lift angle moves by
    // 1 - (theta - sin theta) / pi per degree, with cos theta = 2E - 1.
    if (!std::isfinite(chordFraction)) return 0;
    const double e = std::clamp(chordFraction, 0.0, 1.0);
    const double theta = std::acos(2 * e - 1);
    return std::clamp(1 - (theta - std::sin(theta)) / PiValue(), 0.0, 1.0);
}

bool VLM_Strips(Workbench& wb) {
    const Sheet& s = wb.sheet;
    VlmState& v = wb.vlm;
    v.strips.clear();
    v.stripsHalfSpan = 0;
    const bool wing = VlmPanelState(wb) == VlmSurface::Wing;
    const std::array<Panel, 5> panels = readPanels(wb, wing);
    double half = 0;  // mm along the panels
    for (const Panel& p : panels) half += p.length;
    if (!(half > 0) || !std::isfinite(half)) return false;

    constexpr int n = kVlmStations, perSide = kVlmStations / 2;
    const double width = half / perSide;  // mm
    const double pi = PiValue();

    // Edges of the right half, root to tip, in metres (x aft).
    std::array<Walked, perSide + 1> edge{};
    for (int e = 0; e <= perSide; ++e) edge[static_cast<size_t>(e)] = walk(panels, e * width);
    const double tipY = edge[perSide].y / 1000;

    const double roll = 180 - s.val(F_VLM::Hscroll1);
    const double tanRoll = std::isfinite(roll) ? std::tan(roll * pi / 180) : 0;
    const double radius = roll > 0 && tanRoll != 0 ? kSpeed * kSpeed / (kGravity * tanRoll) : 0;
    const double zeroLift = s.val(F_GEO_SF::j12);
    const double attack = s.val(F_VLM::N25);

    using namespace F_GEO_SF;
    const Surface flaps =
        readSurface(s, T_Flap_PosL, T_Flap_PosR, T_Flap_Pourc, T_Flap_PourcD, F_VLM::T_Flap_AngL, F_VLM::T_Flap_AngR);
    const Surface ailerons =
        readSurface(s, T_Ail_PosL, T_Ail_PosR, T_Ail_Pourc, T_Ail_PourcD, F_VLM::T_Ail_AngL, F_VLM::T_Ail_AngR);

    // Stations left tip to right tip; each has its bound vortex from a to b
    // (always towards +y), its control point and its normal.
    struct Station {
        Vec a, b, control, normal;
        double chord = 0, alpha = 0, speed = 0;
    };
    std::array<Station, n> st{};
    for (int j = 0; j < perSide; ++j) {
        const Walked& in = edge[static_cast<size_t>(j)];
        const Walked& out = edge[static_cast<size_t>(j) + 1];
        const Walked mid = walk(panels, (j + 0.5) * width);
        auto bound = [](const Walked& w) {
            return Vec{(w.le + kBoundAt * w.chord) / 1000, w.y / 1000, w.z / 1000};
        };
        // The control point lies at three quarters of the chord, halfway
        // between the two edges of the strip.
        const double xc = ((in.le + 0.75 * in.chord) + (out.le + 0.75 * out.chord)) / 2000;
        const Vec control{xc, (in.y + out.y) / 2000, (in.z + out.z) / 2000};
        const double chord = (in.chord + out.chord) / 2000;
        const double sMid = (j + 0.5) * width;
        const double twist = -(in.twist + out.twist) / 2;
        for (int side = 0; side < 2; ++side) {
            const bool right = side == 1;
            Station& t = st[static_cast<size_t>(right ? perSide + j : perSide - 1 - j)];
            const Vec ia = bound(in), ob = bound(out);
            if (right) {
                t.a = ia;
                t.b = ob;
                t.control = control;
                t.normal = {0, -std::sin(mid.slope), std::cos(mid.slope)};
            } else {
                t.a = {ob.x, -ob.y, ob.z};
                t.b = {ia.x, -ia.y, ia.z};
                t.control = {control.x, -control.y, control.z};
                t.normal = {0, std::sin(mid.slope), std::cos(mid.slope)};
            }
            t.chord = chord;
            t.alpha = twist + (attack - zeroLift) + flaps.at(sMid, right) + ailerons.at(sMid, right);
            t.speed = radius != 0 ? kSpeed * (radius + t.control.y) / radius : kSpeed;
        }
    }

    // Downwash factors (no 1 / (4 pi): the right-hand side carries it).
    std::vector<double> m(static_cast<size_t>(n * n));
    std::vector<double> rhs(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const Station& ci = st[static_cast<size_t>(i)];
        for (int j = 0; j < n; ++j) {
            const Station& hj = st[static_cast<size_t>(j)];
            m[static_cast<size_t>(i * n + j)] = -dot(horseshoe(hj.a, hj.b, ci.control), ci.normal);
        }
        rhs[static_cast<size_t>(i)] = 4 * pi * ci.speed * ci.alpha / 180 * pi;
    }

    // Gaussian elimination without pivoting: the matrix is dominated by its
    // diagonal (each horseshoe acts most on its own control point).
    for (int k = 0; k < n; ++k) {
        const double pivot = m[static_cast<size_t>(k * n + k)];
        if (pivot == 0 || !std::isfinite(pivot)) {
            if (wb.beep) wb.beep();
            return false;
        }
        for (int i = k + 1; i < n; ++i) {
            const double f = m[static_cast<size_t>(i * n + k)] / pivot;
            if (f == 0) continue;
            for (int j = k; j < n; ++j) m[static_cast<size_t>(i * n + j)] -= f * m[static_cast<size_t>(k * n + j)];
            rhs[static_cast<size_t>(i)] -= f * rhs[static_cast<size_t>(k)];
        }
    }
    std::vector<double> gamma(static_cast<size_t>(n));
    for (int i = n - 1; i >= 0; --i) {
        double sum = rhs[static_cast<size_t>(i)];
        for (int j = i + 1; j < n; ++j) sum -= m[static_cast<size_t>(i * n + j)] * gamma[static_cast<size_t>(j)];
        gamma[static_cast<size_t>(i)] = sum / m[static_cast<size_t>(i * n + i)];
    }

    const double w = width / 1000;  // m
    std::vector<StripRow> rows(static_cast<size_t>(n));
    double total = 0;
    for (int i = 0; i < n; ++i) {
        const Station& t = st[static_cast<size_t>(i)];
        StripRow& r = rows[static_cast<size_t>(i)];
        r.y = t.control.y;
        r.z = t.control.z;
        r.chord = t.chord;
        r.alpha = t.alpha;
        r.speed = t.speed;
        r.gamma = finiteOr0(gamma[static_cast<size_t>(i)]);
        r.lift = RoundTo(finiteOr0(kDensity * t.speed * r.gamma), 7);
        r.cl = t.chord > 0 ? finiteOr0(2 * r.lift / (kDensity * kSpeed * kSpeed * t.chord)) : 0;
        total += r.lift * w;
    }
    // Elliptic loading of the same total lift over the projected span.
    for (StripRow& r : rows) {
        const double eta = tipY > 0 ? r.y / tipY : 0;
        r.ellipse = tipY > 0 ? finiteOr0(2 * total / (pi * tipY) * std::sqrt(std::max(0.0, 1 - eta * eta))) : 0;
    }
    // Shear and bending moment, each half from its tip inwards.
    for (int i = n - 1; i >= perSide; --i) {
        const size_t u = static_cast<size_t>(i);
        const double outerShear = i == n - 1 ? 0 : rows[u + 1].shear;
        const double outerMoment = i == n - 1 ? 0 : rows[u + 1].moment;
        rows[u].shear = outerShear - rows[u].lift * w;
        rows[u].moment = outerMoment + rows[u].shear * w;
    }
    for (int i = 0; i < perSide; ++i) {
        const size_t u = static_cast<size_t>(i);
        const double outerShear = i == 0 ? 0 : rows[u - 1].shear;
        const double outerMoment = i == 0 ? 0 : rows[u - 1].moment;
        rows[u].shear = outerShear - rows[u].lift * w;
        rows[u].moment = outerMoment + rows[u].shear * w;
    }
    v.strips = std::move(rows);
    v.stripsHalfSpan = tipY;
    return true;
}

}  // namespace tarvokin

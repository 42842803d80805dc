#include "construction/frame_curve.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>

#include "core/numbers.h"
#include "views/draw_surface.h"

namespace tarvokin {

void EvaluateBSpline(const FramePoints& controls, int order, int pointCount, FramePoints& out) {
    out.clear();
    if (controls.empty()) return;
    const int n = static_cast<int>(controls.size()) - 1;
    pointCount = std::max(2, pointCount);
    out.resize(static_cast<size_t>(pointCount));
    if (n == 0) {
        std::fill(out.begin(), out.end(), controls[0]);
        return;
    }
    const int k = std::clamp(order, 2, n + 1);
    const int knots = n + k + 1;
    std::vector<double> t(static_cast<size_t>(knots));
    for (int i = 0; i < knots; ++i) t[static_cast<size_t>(i)] = i < k ? 0.0 : (i <= n ? i - k + 1.0 : n - k + 2.0);
    const double tMax = n - k + 2.0;

    // Only the k basis functions of the span holding t are non-zero; the
    // recursion is run on that triangle alone, with the same zero-denominator
    // rule as the full one.
    std::vector<double> N(static_cast<size_t>(k + 1)), next(static_cast<size_t>(k + 1));
    for (int s = 0; s < pointCount; ++s) {
        if (s == 0) {
            out[0] = controls[0];
            continue;
        }
        if (s == pointCount - 1) {
            out[static_cast<size_t>(s)] = controls[static_cast<size_t>(n)];
            continue;
        }
        const double u = tMax * s / (pointCount - 1);
        int mu = -1;
        for (int i = 0; i + 1 < knots; ++i)
            if (t[static_cast<size_t>(i)] <= u && u < t[static_cast<size_t>(i + 1)]) mu = i;
        FramePoint p;
        if (mu >= 0) {
            // N[j] holds N_(mu - d + j, d) for the order d being built.
            std::fill(N.begin(), N.end(), 0.0);
            N[0] = 1.0;
            for (int d = 2; d <= k; ++d) {
                for (int j = 0; j < d; ++j) {
                    const int i = mu - d + 1 + j;
                    double v = 0;
                    // Left term: N_(i, d-1) is N[j - 1] of the previous order.
                    if (j >= 1) {
                        const double den = t[static_cast<size_t>(i + d - 1)] - t[static_cast<size_t>(i)];
                        if (den != 0) v += (u - t[static_cast<size_t>(i)]) / den * N[static_cast<size_t>(j - 1)];
                    }
                    // Right term: N_(i+1, d-1) is N[j].
                    if (j < d - 1) {
                        const double den = t[static_cast<size_t>(i + d)] - t[static_cast<size_t>(i + 1)];
                        if (den != 0) v += (t[static_cast<size_t>(i + d)] - u) / den * N[static_cast<size_t>(j)];
                    }
                    next[static_cast<size_t>(j)] = v;
                }
                std::copy(next.begin(), next.begin() + d, N.begin());
            }
            for (int j = 0; j < k; ++j) {
                const int i = mu - k + 1 + j;
                if (i < 0 || i > n) continue;
                const double w = N[static_cast<size_t>(j)];
                p.x += w * controls[static_cast<size_t>(i)].x;
                p.y += w * controls[static_cast<size_t>(i)].y;
                p.z += w * controls[static_cast<size_t>(i)].z;
            }
        }
        out[static_cast<size_t>(s)] = p;
    }
}

FramePoints MirrorCurve(const FramePoints& curve, double axis) {
    FramePoints m(curve);
    for (FramePoint& p : m) p.x = 2 * axis - p.x;
    return m;
}

void InitFrameGenerator(FrameState& f) {
    f.ControlCount = 8;
    f.PointCount = 12;
    f.CurveOrder = f.ControlCount + 1;
    f.ActiveHandle = -1;
    f.HandleGrabX = 0.0105882;
    f.HandleGrabY = 0.0092924;
    f.Thickness = 10;
    f.Doubling = false;
    f.Slaved = true;
    f.AxeX = kFrameAreaWidth / 2;
    f.BaseLineY = 480;
    f.dragging = false;
    const double middle = kFrameAreaHeight / 2 + 40;  // the round's centre
    const double radius = f.BaseLineY - middle;
    f.ControlPoints.assign(static_cast<size_t>(f.ControlCount + 1), {});
    for (int i = 0; i <= f.ControlCount; ++i) {
        const double a = std::numbers::pi * i / f.ControlCount;
        double r = radius;
        if (i > 0 && i < f.ControlCount) r += kFrameStartOffsets[(i - 1) % 7];
        // The ends stay on the axis line so that the mirrored halves meet.
        f.ControlPoints[static_cast<size_t>(i)] = {f.AxeX + r * std::sin(a), middle - radius * std::cos(a), 0};
    }
    f.HandleMarks.assign(f.ControlPoints.size(), "");
    f.HandleRed.assign(f.ControlPoints.size(), false);
    ApplyDoubling(f);
    RecomputeFrameCurves(f);
}

void ApplyDoubling(FrameState& f) {
    const FramePoints& c = f.ControlPoints;
    const size_t count = c.size();
    f.DoubledControl.assign(count, {});
    for (size_t i = 0; i < count; ++i) {
        const FramePoint& a = c[i == 0 ? 0 : i - 1];
        const FramePoint& b = c[i + 1 < count ? i + 1 : count - 1];
        // The half frame runs from the top of the axis round to the bottom,
        // clockwise on the screen (y down): turning the tangent a quarter
        // turn (tx, ty) -> (-ty, tx) points inside.
        double tx = b.x - a.x, ty = b.y - a.y;
        // An end on the axis line: the whole frame is symmetric about it, so
        // its tangent there runs across the axis and the end stays on it.
        if (count > 1 && (i == 0 || i + 1 == count) && c[i].x == f.AxeX) {
            const FramePoint& next = c[i == 0 ? 1 : count - 2];
            tx = (i == 0 ? 1 : -1) * 2 * (next.x - f.AxeX);
            ty = 0;
        }
        const double len = std::hypot(tx, ty);
        FramePoint d = c[i];
        if (len > 0) {
            tx /= len;
            ty /= len;
            d.x += -ty * f.Thickness;
            d.y += tx * f.Thickness;
        }
        f.DoubledControl[i] = d;
    }
}

void RecomputeFrameCurves(FrameState& f) {
    EvaluateBSpline(f.ControlPoints, f.CurveOrder, f.PointCount, f.CurveRight);
    f.CurveLeft = MirrorCurve(f.CurveRight, f.AxeX);
    if (f.Doubling) {
        EvaluateBSpline(f.DoubledControl, f.CurveOrder, f.PointCount, f.DoubledRight);
        f.DoubledLeft = MirrorCurve(f.DoubledRight, f.AxeX);
    } else {
        f.DoubledRight.clear();
        f.DoubledLeft.clear();
    }
}

int FindHandle(const FrameState& f, double x, double y, bool mainHandles) {
    const FramePoints& h = mainHandles ? f.ControlPoints : f.DoubledControl;
    const int top = std::min(f.ControlCount, static_cast<int>(h.size()) - 1);
    for (int i = 0; i <= top; ++i) {
        const double left = h[static_cast<size_t>(i)].x - kHandleSize / 2;
        const double upper = h[static_cast<size_t>(i)].y - kHandleSize / 2;
        if (x >= left - f.HandleGrabX && x <= left + kHandleSize + f.HandleGrabX && y >= upper - f.HandleGrabY &&
            y <= upper + kHandleSize + f.HandleGrabY)
            return i;
    }
    return -1;
}

double FrameDrawScale(int width, int height) {
    return std::min(width / kFrameAreaWidth, height / kFrameAreaHeight);
}

namespace {

constexpr PackedColour kWhite = 0xFFFFFF, kCurve = 0x000000, kMirror = 0x404040, kDoubled = 0xC00000,
                       kHandle = 0x0080FF, kHandleRed = 0x0000FF, kGrid = 0xE0E0E0, kAxis = 0x008000,
                       kPoints = 0x800080, kActive = 0x00A0FF;

SurfacePoint px(const FramePoint& p, double s) {
    return {static_cast<int>(std::lround(p.x * s)), static_cast<int>(std::lround(p.y * s))};
}

void polyline(DrawSurface& d, const FramePoints& c, double s, bool dotted) {
    if (c.empty()) return;
    if (dotted) {
        for (size_t i = 0; i < c.size(); ++i) {
            const SurfacePoint a = px(c[i], s);
            d.moveTo(a.x, a.y);
            d.lineTo(a.x + 1, a.y);
        }
        return;
    }
    SurfacePoint a = px(c[0], s);
    d.moveTo(a.x, a.y);
    for (size_t i = 1; i < c.size(); ++i) {
        a = px(c[i], s);
        d.lineTo(a.x, a.y);
    }
}

void handles(const FrameState& f, const FramePoints& h, DrawSurface& d, double s, bool main) {
    d.setDrawStyle(drawstyle::Solid);
    d.setFillStyle(fillstyle::None);
    for (size_t i = 0; i < h.size(); ++i) {
        const bool red = main && i < f.HandleRed.size() && f.HandleRed[i];
        d.setForeColor(red ? kHandleRed : (static_cast<int>(i) == f.ActiveHandle ? kActive : kHandle));
        const double half = kHandleSize / 2;
        const SurfacePoint a = px({h[i].x - half, h[i].y - half, 0}, s), b = px({h[i].x + half, h[i].y + half, 0}, s);
        const SurfacePoint box[4] = {{a.x, a.y}, {b.x, a.y}, {b.x, b.y}, {a.x, b.y}};
        d.polygon(box);
        if (main && i < f.HandleMarks.size() && !f.HandleMarks[i].empty()) d.textOut(b.x + 2, a.y - 2, f.HandleMarks[i]);
    }
}

}  // namespace

void Quadrillage(DrawSurface& d, double s) {
    d.setDrawStyle(drawstyle::Solid);
    d.setForeColor(kGrid);
    for (double x = 0; x <= kFrameAreaWidth; x += 20) {
        d.moveTo(static_cast<int>(std::lround(x * s)), 0);
        d.lineTo(static_cast<int>(std::lround(x * s)), static_cast<int>(std::lround(kFrameAreaHeight * s)));
    }
    for (double y = 0; y <= kFrameAreaHeight; y += 20) {
        d.moveTo(0, static_cast<int>(std::lround(y * s)));
        d.lineTo(static_cast<int>(std::lround(kFrameAreaWidth * s)), static_cast<int>(std::lround(y * s)));
    }
}

void Visu_Points(const FrameState& f, DrawSurface& d, double s) {
    for (const FramePoints* c : {&f.CurveRight, &f.CurveLeft, &f.DoubledRight, &f.DoubledLeft})
        for (const FramePoint& p : *c) {
            const SurfacePoint a = px(p, s);
            for (int dx = -1; dx <= 1; ++dx)
                for (int dy = -1; dy <= 1; ++dy) d.setPixel(a.x + dx, a.y + dy, kPoints);
        }
}

void DisegnaCurva(FrameState& f, DrawSurface& d, const FrameDrawOptions& o) {
    const double s = FrameDrawScale(d.width(), d.height());
    d.setDrawMode(drawmode::CopyPen);
    d.clear(kWhite);
    RecomputeFrameCurves(f);
    if (o.grid) Quadrillage(d, s);
    if (o.axes) {
        d.setForeColor(kAxis);
        const int ax = static_cast<int>(std::lround(f.AxeX * s)), by = static_cast<int>(std::lround(f.BaseLineY * s));
        d.moveTo(ax, 0);
        d.lineTo(ax, static_cast<int>(std::lround(kFrameAreaHeight * s)));
        d.moveTo(0, by);
        d.lineTo(static_cast<int>(std::lround(kFrameAreaWidth * s)), by);
    }
    d.setDrawStyle(drawstyle::Solid);
    d.setForeColor(kCurve);
    polyline(d, f.CurveRight, s, o.dotted);
    d.setForeColor(kMirror);
    polyline(d, f.CurveLeft, s, o.dotted);
    if (f.Doubling) {
        d.setForeColor(kDoubled);
        polyline(d, f.DoubledRight, s, o.dotted);
        polyline(d, f.DoubledLeft, s, o.dotted);
    }
    if (o.handles) {
        handles(f, f.ControlPoints, d, s, true);
        if (f.Doubling) handles(f, f.DoubledControl, d, s, false);
    }
    if (o.points) Visu_Points(f, d, s);
}

void DrawFrameAssembly(FrameState& f, DrawSurface& d, bool horizontal) {
    RecomputeFrameCurves(f);
    d.setDrawMode(drawmode::CopyPen);
    d.setDrawStyle(drawstyle::Solid);
    d.clear(kWhite);
    const int pieces = f.Doubling ? 2 : 1;
    // Each piece gets its share of the surface at the drawing's own scale.
    const int w = horizontal ? d.width() / pieces : d.width(), h = horizontal ? d.height() : d.height() / pieces;
    const double s = FrameDrawScale(w, h);
    for (int k = 0; k < pieces; ++k) {
        const FramePoints& r = k == 0 ? f.CurveRight : f.DoubledRight;
        const FramePoints& l = k == 0 ? f.CurveLeft : f.DoubledLeft;
        const double ox = horizontal ? k * w / s : 0, oy = horizontal ? 0 : k * h / s;
        FramePoints loop(r);
        for (size_t i = l.size(); i-- > 0;) loop.push_back(l[i]);
        for (FramePoint& p : loop) {
            p.x += ox;
            p.y += oy;
        }
        d.setForeColor(k == 0 ? kCurve : kDoubled);
        polyline(d, loop, s, false);
        d.textOut(static_cast<int>(ox * s) + 6, static_cast<int>(oy * s) + 4, k == 0 ? "Couple" : "Doublage");
    }
}

void FramePress(FrameState& f, double x, double y, int button, bool mainHandles) {
    const int hit = FindHandle(f, x, y, mainHandles);
    if (button == 1) {
        if (hit >= 0) f.ActiveHandle = hit;
        f.dragging = hit >= 0;
        return;
    }
    f.dragging = false;
    if (hit < 0 || static_cast<size_t>(hit) >= f.HandleMarks.size()) return;
    std::string& mark = f.HandleMarks[static_cast<size_t>(hit)];
    if (mark.empty()) {
        mark.assign(1, '1');
    } else {
        mark.clear();
        f.HandleRed[static_cast<size_t>(hit)] = true;
    }
}

bool FrameMove(FrameState& f, double x, double y, bool mainHandles) {
    if (!f.dragging || f.ActiveHandle < 0) return false;
    FramePoints& h = mainHandles ? f.ControlPoints : f.DoubledControl;
    if (static_cast<size_t>(f.ActiveHandle) >= h.size()) return false;
    h[static_cast<size_t>(f.ActiveHandle)].x = x;
    h[static_cast<size_t>(f.ActiveHandle)].y = y;
    if (mainHandles && f.Slaved) ApplyDoubling(f);
    RecomputeFrameCurves(f);
    return true;
}

void FrameRelease(FrameState& f) { f.dragging = false; }

bool NewFrameFromOutline(FrameState& f, const std::string& path, std::string& error) {
    std::ifstream in(path);
    if (!in) {
        error = "impossible de lire le contour de départ " + path;
        return false;
    }
    FramePoints pts;
    std::string line;
    while (std::getline(in, line)) {
        // x and y split at the first blank; a line that is not two numbers
        // (a name line) is passed over.
        const size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos) continue;
        const size_t blank = line.find_first_of(" \t", start);
        if (blank == std::string::npos) continue;
        double x = 0, y = 0;
        std::string ys = line.substr(blank);
        ys.erase(0, ys.find_first_not_of(" \t"));
        while (!ys.empty() && (ys.back() == '\r' || ys.back() == ' ' || ys.back() == '\t')) ys.pop_back();
        if (!tryNumber(line.substr(start, blank - start), x) || !tryNumber(ys, y)) continue;
        pts.push_back({x, y, 0});
    }
    if (pts.size() < 3) {
        error = "le contour de départ " + path + " a moins de 3 points";
        return false;
    }
    // The outline is read as a half frame: its first point at the top of the
    // axis, its last at the bottom; x across, y up, unit size. Nine handles
    // are picked evenly along it and laid into the area's round.
    InitFrameGenerator(f);
    const double middle = kFrameAreaHeight / 2 + 40;
    const double radius = f.BaseLineY - middle;
    double ymin = pts[0].y, ymax = pts[0].y;
    for (const FramePoint& p : pts) {
        ymin = std::min(ymin, p.y);
        ymax = std::max(ymax, p.y);
    }
    const double span = ymax - ymin > 0 ? ymax - ymin : 1;
    for (int i = 0; i <= f.ControlCount; ++i) {
        const size_t j = static_cast<size_t>(std::lround(double(i) * (pts.size() - 1) / f.ControlCount));
        const double scale = 2 * radius / span;
        f.ControlPoints[static_cast<size_t>(i)] = {f.AxeX + std::fabs(pts[j].x) * scale,
                                                   f.BaseLineY - (pts[j].y - ymin) * scale, 0};
    }
    f.ControlPoints.front().x = f.AxeX;
    f.ControlPoints.back().x = f.AxeX;
    ApplyDoubling(f);
    RecomputeFrameCurves(f);
    return true;
}

}  // namespace tarvokin

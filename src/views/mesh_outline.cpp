#include "views/mesh_outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/sheet.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

bool finitePoint(const OutlinePoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// Drops non-finite points and repeats of the previous point.
OutlinePoints distinctPoints(const OutlinePoints& in) {
    OutlinePoints out;
    out.reserve(in.size());
    for (const OutlinePoint& p : in) {
        if (!finitePoint(p)) continue;
        if (!out.empty() && out.back() == p) continue;
        out.push_back(p);
    }
    return out;
}

// Second derivatives of the natural cubic spline through (s, v).
std::vector<double> splineMoments(const std::vector<double>& s, const std::vector<double>& v) {
    const size_t n = s.size();
    std::vector<double> m(n, 0.0);
    if (n < 3) return m;
    // Tridiagonal system of the inner moments, solved by elimination.
    std::vector<double> diag(n, 0.0), rhs(n, 0.0), upper(n, 0.0);
    for (size_t i = 1; i + 1 < n; ++i) {
        const double h0 = s[i] - s[i - 1], h1 = s[i + 1] - s[i];
        diag[i] = 2.0 * (h0 + h1);
        upper[i] = h1;
        rhs[i] = 6.0 * ((v[i + 1] - v[i]) / h1 - (v[i] - v[i - 1]) / h0);
        if (i > 1) {
            const double w = h0 / diag[i - 1];
            diag[i] -= w * upper[i - 1];
            rhs[i] -= w * rhs[i - 1];
        }
    }
    for (size_t i = n - 2; i >= 1; --i) {
        m[i] = (rhs[i] - upper[i] * m[i + 1]) / diag[i];
        if (i == 1) break;
    }
    return m;
}

double splineAt(const std::vector<double>& s, const std::vector<double>& v, const std::vector<double>& m,
                double t) {
    size_t i = static_cast<size_t>(std::upper_bound(s.begin(), s.end(), t) - s.begin());
    i = std::clamp<size_t>(i, 1, s.size() - 1) - 1;
    const double h = s[i + 1] - s[i];
    const double a = (s[i + 1] - t) / h, b = (t - s[i]) / h;
    return a * v[i] + b * v[i + 1] + ((a * a * a - a) * m[i] + (b * b * b - b) * m[i + 1]) * h * h / 6.0;
}

// n points along one side, from its first point to its last, by chord length;
// the ends are the side's own points.
OutlinePoints resampleSide(const OutlinePoints& side, int n) {
    std::vector<double> s(side.size(), 0.0), x(side.size()), y(side.size());
    for (size_t i = 0; i < side.size(); ++i) {
        x[i] = side[i].x;
        y[i] = side[i].y;
        if (i > 0) s[i] = s[i - 1] + std::hypot(x[i] - x[i - 1], y[i] - y[i - 1]);
    }
    const double total = s.back();
    const std::vector<double> mx = splineMoments(s, x), my = splineMoments(s, y);
    OutlinePoints out;
    out.reserve(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        if (i == 0) {
            out.push_back(side.front());
        } else if (i == n - 1) {
            out.push_back(side.back());
        } else {
            // Cosine spacing: dense at the trailing and at the leading edge.
            const double t = total * (1.0 - std::cos(std::numbers::pi * i / (n - 1))) / 2.0;
            out.push_back({splineAt(s, x, mx, t), splineAt(s, y, my, t)});
        }
    }
    return out;
}

// Reads an outline file as unit chord from x = 0 to x = 1, closed onto its
// first point; empty when the file gives fewer than three usable points.
OutlinePoints unitOutlineFromFile(const std::filesystem::path& file) {
    OutlinePoints pts;
    OutlineExtremes e;
    if (!readOutlineFile(file, pts, e)) return {};
    pts = distinctPoints(pts);
    if (pts.size() < 3) return {};
    double xMin = pts.front().x, xMax = pts.front().x;
    for (const OutlinePoint& p : pts) {
        xMin = std::min(xMin, p.x);
        xMax = std::max(xMax, p.x);
    }
    const double chord = xMax - xMin;
    if (!(chord > 0) || !std::isfinite(chord)) return {};
    for (OutlinePoint& p : pts) p = {(p.x - xMin) / chord, p.y / chord};
    if (!(pts.back() == pts.front())) pts.push_back(pts.front());
    return pts;
}

int thicknessClass(const Sheet& s) { return s.listIndex(F_3D::Combo7); }

}  // namespace

OutlinePoints ResampleOutline(const OutlinePoints& points, int count) {
    const OutlinePoints pts = distinctPoints(points);
    if (pts.size() < 2 || count < 3) return {};
    size_t nose = 0;
    for (size_t i = 1; i < pts.size(); ++i) {
        if (pts[i].x < pts[nose].x) nose = i;
    }
    if (nose == 0 || nose + 1 == pts.size()) return resampleSide(pts, count);
    const int upperCount = (count + 1) / 2;
    const int lowerCount = count - upperCount + 1;
    OutlinePoints out = resampleSide(OutlinePoints(pts.begin(), pts.begin() + static_cast<std::ptrdiff_t>(nose) + 1),
                                     upperCount);
    const OutlinePoints lower =
        resampleSide(OutlinePoints(pts.begin() + static_cast<std::ptrdiff_t>(nose), pts.end()), lowerCount);
    out.insert(out.end(), lower.begin() + 1, lower.end());
    return out;
}

OutlinePoints NacaSection(double camber, double camberPosition, double thickness, int count) {
    if (count < 3) return {};
    auto half = [thickness](double x) {
        return 5.0 * thickness *
               (0.2969 * std::sqrt(x) - 0.1260 * x - 0.3516 * x * x + 0.2843 * x * x * x - 0.1036 * x * x * x * x);
    };
    auto meanLine = [camber, camberPosition](double x, double& slope) {
        const double m = camber, p = camberPosition;
        if (!(m > 0) || !(p > 0) || !(p < 1)) {
            slope = 0;
            return 0.0;
        }
        if (x < p) {
            slope = 2 * m / (p * p) * (p - x);
            return m / (p * p) * (2 * p * x - x * x);
        }
        slope = 2 * m / ((1 - p) * (1 - p)) * (p - x);
        return m / ((1 - p) * (1 - p)) * ((1 - 2 * p) + 2 * p * x - x * x);
    };
    auto surfacePoint = [&](double x, int side) {
        double slope = 0;
        const double yc = meanLine(x, slope);
        const double th = std::atan(slope), yt = half(x);
        return OutlinePoint{x - side * yt * std::sin(th), yc + side * yt * std::cos(th)};
    };
    const int upperCount = (count + 1) / 2;
    const int lowerCount = count - upperCount + 1;
    OutlinePoints out;
    for (int i = 0; i < upperCount; ++i) {
        const double x = (1.0 + std::cos(std::numbers::pi * i / (upperCount - 1))) / 2.0;
        out.push_back(surfacePoint(x, +1));
    }
    for (int j = 1; j < lowerCount; ++j) {
        const double x = (1.0 - std::cos(std::numbers::pi * j / (lowerCount - 1))) / 2.0;
        out.push_back(surfacePoint(x, -1));
    }
    out.back() = out.front();
    return out;
}

OutlinePoints WingSection(const Workbench& wb) {
    const size_t row = wb.catalogue.Find_Profil(wb.sheet.text(F_3D::Combo5));
    OutlinePoints pts;
    if (row != kNotFound) pts = unitOutlineFromFile(outlinePath(wb.home(), wb.catalogue.rows[row].Path));
    if (pts.empty()) pts = unitOutlineFromFile(outlinePath(wb.home(), ""));
    OutlinePoints r = ResampleOutline(pts, kSectionPoints);
    if (r.size() != static_cast<size_t>(kSectionPoints)) r = NacaSection(0.02, 0.4, 0.12);
    return r;
}

OutlinePoints StabSection(const Sheet& s) {
    switch (thicknessClass(s)) {
        case 0: return NacaSection(0, 0, 0.06);
        case 1: return NacaSection(0.02, 0.4, 0.06);
        case 3: return NacaSection(0.02, 0.4, 0.09);
        case 4: return NacaSection(0, 0, 0.12);
        default: return NacaSection(0, 0, 0.09);
    }
}

OutlinePoints FinSection(const Sheet& s) {
    switch (thicknessClass(s)) {
        case 0:
        case 1: return NacaSection(0, 0, 0.06);
        case 4: return NacaSection(0, 0, 0.12);
        default: return NacaSection(0, 0, 0.09);
    }
}

OutlinePoints FuselageSection(const Sheet& s) {
    // Superellipse |u|^n + |v|^n = 1: an ellipse for the round section, a
    // fuller one for the oval, nearly a rectangle with rounded corners for the box.
    double n = 2.0;
    switch (s.listIndex(F_3D::Combo9)) {
        case 1: n = 2.6; break;
        case 2: n = 8.0; break;
        default: break;
    }
    const double e = 2.0 / n;
    auto signedPow = [e](double v) { return std::copysign(std::pow(std::fabs(v), e), v); };
    OutlinePoints out;
    for (int i = 0; i < kSectionPoints; ++i) {
        const double phi = 2.0 * std::numbers::pi * i / (kSectionPoints - 1);
        out.push_back({0.5 + 0.5 * signedPow(std::cos(phi)), 0.5 * signedPow(std::sin(phi))});
    }
    out.back() = out.front();
    return out;
}

}  // namespace tarvokin

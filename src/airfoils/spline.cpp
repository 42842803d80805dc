// Spline under tension through a plane curve, parametrised by the length of
// its polygon. On each interval of length h the coordinate is
//
//   x(s) = [M_i sinh(σ(s_i+1 - s)) + M_i+1 sinh(σ(s - s_i))] / (σ² sinh σh)
//          + (x_i - M_i/σ²)(s_i+1 - s)/h + (x_i+1 - M_i+1/σ²)(s - s_i)/h
//
// with M the second derivatives, found from the continuity of the slope
// (natural ends, M = 0). The tension is scaled by the mean interval,
// σ = tension (m - 1) / length, so that it means the same for any number of
// points and any size; at 100 the curve hugs the polygon and never
// overshoots at the nose.
//
// sinh of σh overflows on long intervals (a stray point far from the others),
// so the quotients are taken in forms that stay finite, and short intervals,
// where the differences cancel, use their series.
#include <cmath>

#include "airfoils/outline.h"

namespace tarvokin {

namespace {

double Sinh(double z) { return (std::exp(z) - std::exp(-z)) / 2.0; }
double Cosh(double z) { return (std::exp(z) + std::exp(-z)) / 2.0; }

// sinh(a) / sinh(b) for 0 <= a <= b, b > 0.
double sinhRatio(double a, double b) {
    if (b < 1e-4) return a / b * (1.0 + (a * a - b * b) / 6.0);
    if (b < 20.0) return Sinh(a) / Sinh(b);
    return std::exp(a - b) * std::expm1(-2.0 * a) / std::expm1(-2.0 * b);
}

// coth z - 1/z and 1/z - 1/sinh z, both positive for z > 0.
double cothLess(double z) {
    if (z < 1e-2) return z / 3.0 - z * z * z / 45.0 + 2.0 * std::pow(z, 5) / 945.0;
    if (z > 20.0) return 1.0 - 1.0 / z;  // coth is 1 to double precision
    return Cosh(z) / Sinh(z) - 1.0 / z;
}
double invLessInvSinh(double z) {
    if (z < 1e-2) return z / 6.0 - 7.0 * z * z * z / 360.0 + 31.0 * std::pow(z, 5) / 15120.0;
    if (z > 20.0) return 1.0 / z - 2.0 * std::exp(-z);
    return 1.0 / z - 1.0 / Sinh(z);
}

// Solves the tridiagonal system sub[i] M[i-1] + diag[i] M[i] + sup[i] M[i+1] = rhs[i].
std::vector<double> thomas(std::vector<double> sub, std::vector<double> diag, std::vector<double> sup,
                           std::vector<double> rhs) {
    const size_t n = diag.size();
    for (size_t i = 1; i < n; ++i) {
        const double w = sub[i] / diag[i - 1];
        diag[i] -= w * sup[i - 1];
        rhs[i] -= w * rhs[i - 1];
    }
    std::vector<double> m(n);
    m[n - 1] = rhs[n - 1] / diag[n - 1];
    for (size_t i = n - 1; i-- > 0;) m[i] = (rhs[i] - sup[i] * m[i + 1]) / diag[i];
    return m;
}

// Second derivatives of one coordinate over the knots s.
std::vector<double> secondDerivatives(const std::vector<double>& s, const std::vector<double>& v, double sigma) {
    const size_t m = s.size();
    std::vector<double> M(m, 0.0);
    if (m < 3) return M;
    const size_t k = m - 2;  // unknowns M[1..m-2]
    std::vector<double> sub(k, 0.0), diag(k), sup(k, 0.0), rhs(k);
    for (size_t j = 0; j < k; ++j) {
        const size_t i = j + 1;
        const double h0 = s[i] - s[i - 1], h1 = s[i + 1] - s[i];
        // Slope at the end of an interval:  e M_i + d M_i+1 + Δ,
        // at its start:                  -d M_i - e M_i+1 + Δ.
        const double d0 = cothLess(sigma * h0) / sigma, e0 = invLessInvSinh(sigma * h0) / sigma;
        const double d1 = cothLess(sigma * h1) / sigma, e1 = invLessInvSinh(sigma * h1) / sigma;
        diag[j] = d0 + d1;
        if (j > 0) sub[j] = e0;
        if (j + 1 < k) sup[j] = e1;
        rhs[j] = (v[i + 1] - v[i]) / h1 - (v[i] - v[i - 1]) / h0;
    }
    const std::vector<double> inner = thomas(sub, diag, sup, rhs);
    for (size_t j = 0; j < k; ++j) M[j + 1] = inner[j];
    return M;
}

double evaluate(double s0, double s1, double v0, double v1, double M0, double M1, double sigma, double s) {
    const double h = s1 - s0, del1 = s - s0, del2 = s1 - s;
    const double s2 = sigma * sigma;
    return (M0 * sinhRatio(sigma * del2, sigma * h) + M1 * sinhRatio(sigma * del1, sigma * h)) / s2 +
           (v0 - M0 / s2) * del2 / h + (v1 - M1 / s2) * del1 / h;
}

}  // namespace

OutlinePoints TensionSpline(const OutlinePoints& points, int n, double tension) {
    if (points.empty() || n < 1) return points;
    OutlinePoints knots;
    std::vector<double> s;
    for (const OutlinePoint& p : points) {
        if (!knots.empty()) {
            const double step = std::hypot(p.x - knots.back().x, p.y - knots.back().y);
            if (!(step > 0.0)) continue;  // a repeated point adds no length
            s.push_back(s.back() + step);
        } else {
            s.push_back(0.0);
        }
        knots.push_back(p);
    }
    const size_t m = knots.size();
    const double length = s.back();
    if (m < 2 || !std::isfinite(length)) return OutlinePoints(static_cast<size_t>(n) + 1, knots.front());

    // The parameter is measured in mean intervals, so that the tension is
    // tension (m - 1) / length per unit of arc length, whatever the scale of
    // the coordinates.
    const double span = static_cast<double>(m - 1);
    for (double& v : s) v *= span / length;
    s.back() = span;
    const double sigma = std::fabs(tension) > 1e-6 ? std::fabs(tension) : 1e-6;
    std::vector<double> xs(m), ys(m);
    for (size_t i = 0; i < m; ++i) {
        xs[i] = knots[i].x;
        ys[i] = knots[i].y;
    }
    const std::vector<double> Mx = secondDerivatives(s, xs, sigma);
    const std::vector<double> My = secondDerivatives(s, ys, sigma);

    OutlinePoints out;
    out.reserve(static_cast<size_t>(n) + 1);
    size_t i = 0;
    for (int k = 0; k < n; ++k) {
        const double t = span * k / n;
        while (i + 2 < m && s[i + 1] < t) ++i;
        OutlinePoint p{evaluate(s[i], s[i + 1], xs[i], xs[i + 1], Mx[i], Mx[i + 1], sigma, t),
                       evaluate(s[i], s[i + 1], ys[i], ys[i + 1], My[i], My[i + 1], sigma, t)};
        // Coordinates near the limit of the doubles can overflow on the way:
        // the knot the point stands on is the nearest sane answer.
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) p = t - s[i] < s[i + 1] - t ? knots[i] : knots[i + 1];
        out.push_back(p);
    }
    out.push_back(knots.back());
    return out;
}

}  // namespace tarvokin

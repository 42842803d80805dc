// Mean lines of the NACA families, from their published formulas. Ordinates
// and slopes in unit chord. The logarithmic terms of the 6-series lines are
// taken as their limits at the ends of the chord (u ln u -> 0), where the
// formulas themselves read 0 x infinity.
#include <cmath>
#include <numbers>

#include "airfoils/naca_generator.h"

namespace tarvokin {

namespace {

constexpr double kPi = std::numbers::pi;

// u ln|u|, and u² ln|u|, with their limits at u = 0.
double uLogU(double u) { return u == 0.0 ? 0.0 : u * std::log(std::fabs(u)); }
double u2LogU(double u) { return u == 0.0 ? 0.0 : u * u * std::log(std::fabs(u)); }

// The slope of a 6-series line is infinite at the very ends; a large finite
// value keeps the surface angle at its limit (90°) without an infinity.
double finiteLog(double u) { return std::log(std::max(std::fabs(u), 1e-300)); }

// The five-digit constants as published for a design lift of 0.3 (first
// digit 2): position of the largest camber m and k1, by the second digit;
// the reflexed lines (third digit 1) with their k2/k1.
struct FiveConstants {
    double m, k1, k21;
};
constexpr FiveConstants kStandard[6] = {
    {0, 0, 0}, {0.0580, 361.400, 0}, {0.1260, 51.640, 0}, {0.2025, 15.957, 0}, {0.2900, 6.643, 0}, {0.3910, 3.230, 0}};
constexpr FiveConstants kReflexed[6] = {{0, 0, 0},
                                        {0, 0, 0},
                                        {0.1300, 51.990, 0.000764},
                                        {0.2170, 15.793, 0.00677},
                                        {0.3180, 6.520, 0.0303},
                                        {0.4410, 3.191, 0.1355}};

// Where the 6A line leaves the scaled a = 0.8 curve for its straight run to
// the trailing edge, the factor of that curve and the slope of the run.
constexpr double kA08ModJoin = 0.87437;
constexpr double kA08ModScale = 0.97948;
constexpr double kA08ModTail = 0.24521;

}  // namespace

MeanLinePoint NacaFourMeanLine(double x, double m, double p) {
    MeanLinePoint r;
    if (m == 0.0) return r;
    if (x < p) {
        r.y = m / (p * p) * (2 * p * x - x * x);
        r.slope = 2 * m / (p * p) * (p - x);
    } else {
        const double q = (1 - p) * (1 - p);
        r.y = m / q * ((1 - 2 * p) + 2 * p * x - x * x);
        r.slope = 2 * m / q * (p - x);
    }
    return r;
}

bool NacaFiveMeanLine(double x, int lift, int position, int reflex, MeanLinePoint& out) {
    if (position < 1 || position > 5 || reflex < 0 || reflex > 1) return false;
    const FiveConstants c = reflex ? kReflexed[position] : kStandard[position];
    if (c.k1 == 0.0) return false;
    // The constants give a design lift of 0.3; the line scales with the lift.
    const double scale = lift / 2.0;
    const double m = c.m, k1 = c.k1 * scale, m3 = m * m * m;
    MeanLinePoint r;
    if (!reflex) {
        if (x < m) {
            r.y = k1 / 6 * (x * x * x - 3 * m * x * x + m * m * (3 - m) * x);
            r.slope = k1 / 6 * (3 * x * x - 6 * m * x + m * m * (3 - m));
        } else {
            r.y = k1 * m3 / 6 * (1 - x);
            r.slope = -k1 * m3 / 6;
        }
    } else {
        const double k21 = c.k21, t = (1 - m) * (1 - m) * (1 - m);
        if (x < m) {
            r.y = k1 / 6 * ((x - m) * (x - m) * (x - m) - k21 * t * x - m3 * x + m3);
            r.slope = k1 / 6 * (3 * (x - m) * (x - m) - k21 * t - m3);
        } else {
            r.y = k1 / 6 * (k21 * (x - m) * (x - m) * (x - m) - k21 * t * x - m3 * x + m3);
            r.slope = k1 / 6 * (3 * k21 * (x - m) * (x - m) - k21 * t - m3);
        }
    }
    out = r;
    return true;
}

MeanLinePoint NacaMeanLineA10(double x, double cli) {
    MeanLinePoint r;
    const double f = -cli / (4 * kPi);
    r.y = f * (uLogU(1 - x) + uLogU(x));
    r.slope = f * (finiteLog(x) - finiteLog(1 - x));
    return r;
}

MeanLinePoint NacaMeanLineA(double x, double a, double cli) {
    const double g = -1 / (1 - a) * (a * a * (0.5 * std::log(a) - 0.25) + 0.25);
    const double h = 1 / (1 - a) * (0.5 * (1 - a) * (1 - a) * std::log(1 - a) - 0.25 * (1 - a) * (1 - a)) + g;
    const double f = cli / (2 * kPi * (a + 1));
    MeanLinePoint r;
    r.y = f * (1 / (1 - a) *
                   (0.5 * u2LogU(a - x) - 0.5 * u2LogU(1 - x) + 0.25 * (1 - x) * (1 - x) - 0.25 * (a - x) * (a - x)) -
               uLogU(x) + g - h * x);
    r.slope = f * (1 / (1 - a) * (uLogU(1 - x) - uLogU(a - x)) - finiteLog(x) - 1 - h);
    return r;
}

MeanLinePoint NacaMeanLineA08Modified(double x, double cli) {
    if (x <= kA08ModJoin) {
        MeanLinePoint r = NacaMeanLineA(x, 0.8, cli);
        r.y *= kA08ModScale;
        r.slope *= kA08ModScale;
        return r;
    }
    return {kA08ModTail * cli * (1 - x), -kA08ModTail * cli};
}

}  // namespace tarvokin

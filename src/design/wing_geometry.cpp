// The wing: trapezium panels on each side, described at their root, tip, span
// and leading-edge sweep; the whole wing as area-weighted sums of the panels.
#include <cmath>

#include "design/geometry.h"
#include "design/grid_cells.h"

namespace tarvokin {

namespace {

double at(const Sheet& s, const grid::Row& row, int k) { return s.num(row[static_cast<size_t>(k - 1)]); }

double rootChord(const Sheet& s, int k) { return at(s, grid::kRoot, k); }
double tipChord(const Sheet& s, int k) { return at(s, grid::kTip, k); }
double length(const Sheet& s, int k) { return at(s, grid::kLength, k); }
double sweep(const Sheet& s, int k) { return at(s, grid::kSweep, k); }

// Share of a trapezium's mean chord taken along the sweep line:
// (cr + 2 ct) / ((cr + ct) × 3).
double sweepFraction(double cr, double ct) { return divide(cr + 2 * ct, (cr + ct) * 3); }

double rawArea(const Sheet& s) {
    double sum = 0;
    for (int k = 1; k <= 5; ++k) sum += PanelArea(s, k);
    return sum;
}

// Σ S(k) × value(k) / Σ S(k). Panels without area add nothing and are not
// evaluated, so a zero panel never reaches a division of its own.
template <class F>
double areaWeighted(const Sheet& s, F value) {
    double weighted = 0, area = 0;
    for (int k = 1; k <= 5; ++k) {
        const double a = PanelArea(s, k);
        if (a == 0) continue;
        weighted += a * value(k);
        area += a;
    }
    return divide(weighted, area);
}

double readBack(double x, int decimals) { return toNumber(fixed(x, decimals)); }

}  // namespace

int WingletPanel(const Sheet& s) {
    if (!s.on(F_3D::Ch_Winglets)) return 0;
    const double t = s.val(F_3D::Text8);
    if (t == 1 || t == 2 || t == 3 || t == 4) return static_cast<int>(t) + 1;
    return 0;
}

double PanelArea(const Sheet& s, int k) {
    if (k >= 2 && WingletPanel(s) == k) return 0;
    return length(s, k) * (rootChord(s, k) + tipChord(s, k)) / 10000;
}

double PanelMac(const Sheet& s, int k) {
    if (k >= 2 && (WingletPanel(s) == k || PanelArea(s, k) == 0)) return 0;
    const double cr = rootChord(s, k), ct = tipChord(s, k);
    return ct + divide((cr - ct) * (ct + 2 * cr), (cr + ct) * 3);
}

double PanelSweepShift(const Sheet& s, int k) {
    const double cr = rootChord(s, k), ct = tipChord(s, k);
    if (k == 1) return sweep(s, 1) * sweepFraction(cr, ct);
    if (ct == 0 || WingletPanel(s) == k) return 0;
    return (sweep(s, k) - sweep(s, k - 1)) * sweepFraction(cr, ct);
}

double PanelPointAt(const Sheet& s, int k, double f) {
    if (k == 1) return PanelSweepShift(s, 1) + PanelMac(s, 1) * f;
    if (tipChord(s, k) == 0 || WingletPanel(s) == k) return 0;
    return sweep(s, k - 1) + PanelSweepShift(s, k) + PanelMac(s, k) * f;
}

double WingArea(const Sheet& s) {
    // The winglet's own area is already 0, so the sum is the wing's area.
    return readBack(rawArea(s), 2);
}

double Span(const Sheet& s) {
    double sum = 0;
    const int w = WingletPanel(s);
    for (int k = 1; k <= 5; ++k)
        if (k != w) sum += length(s, k);
    return 2 * sum;
}

double SpanAll(const Sheet& s) {
    double sum = 0;
    for (int k = 1; k <= 5; ++k) sum += length(s, k);
    return 2 * sum;
}

double MeanChordPlain(const Sheet& s) {
    return areaWeighted(s, [&](int k) { return PanelMac(s, k); });
}

double MeanChord(const Sheet& s) { return readBack(MeanChordPlain(s), 2); }

double MeanChordStation(const Sheet& s) {
    // The station of panel k adds the tip sweeps of the panels inside it, not
    // their spans: this is the station the plans and the report were drawn with.
    const double y = areaWeighted(s, [&](int k) {
        double v = length(s, k);
        for (int i = 1; i < k; ++i) v += sweep(s, i);
        return v;
    });
    return readBack(y / 2, 2);
}

double AspectRatio(const Sheet& s) {
    const double b = Span(s);
    return divide(b * b, WingArea(s)) / 10000;
}

double AspectRatio5(const Sheet& s) { return roundHalfAway(AspectRatio(s), 5); }

double EllipticAspectRatio(const Sheet& s) { return divide(1.27 * Span(s), rootChord(s, 1)); }

double WingFoyer(const Sheet& s) {
    return areaWeighted(s, [&](int k) { return PanelPointAt(s, k, 0.25); });
}

double FlatAreaM2(const Sheet& s) { return WingArea(s) / 100; }

double SpanM(const Sheet& s) { return Span(s) / 1000; }

double AspectRatioSI(const Sheet& s) {
    const double b = SpanM(s);
    return divide(b * b, FlatAreaM2(s));
}

double AverageChordCheck(const Sheet& s) { return divide(10 * WingArea(s), Span(s)); }

double WingLoading(const Sheet& s, double massGrams) { return divide(massGrams / 1000, FlatAreaM2(s)) * 10; }

double Reynolds(double chordMm, double speedKmh) {
    // 70 is the rounded Reynolds factor of sea-level air for a chord in mm and
    // a speed in m/s (kinematic viscosity about 1.5e-5 m²/s).
    return intPart(chordMm * 70 * speedKmh / 3.6);
}

double Reynolds(const Sheet& s, double chordMm) { return Reynolds(chordMm, s.num(F_GEO_SF::a12)); }

double LiftSlopeFactor(const Sheet& s) {
    const double a = AspectRatio5(s);
    return divide(a, a + 2);
}

}  // namespace tarvokin

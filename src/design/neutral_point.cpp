// Downwash at the tail and the neutral point of the whole aircraft: the wing,
// the tail and the fuselage each add their lift slope times their area, and the
// neutral point is where their moments balance.
//
// A part that is absent (no tail, no fuselage) has a zero area; its terms are
// then left out rather than computed, so the slopes that only make sense for a
// real part (a division by the fuselage width, by the tail lever) are never
// asked for.
#include <cmath>

#include "design/geometry.h"

namespace tarvokin {

namespace {

// Σ S(k) × PanelPointAt(k, f) / Σ S(k) over the wing panels.
double wingStation(const Sheet& s, double f) {
    double weighted = 0, area = 0;
    for (int k = 1; k <= 5; ++k) {
        const double a = PanelArea(s, k);
        if (a == 0) continue;
        weighted += a * PanelPointAt(s, k, f);
        area += a;
    }
    return divide(weighted, area);
}

}  // namespace

double DownwashSlopeOf(double A, double r, double m) {
    const double pi = PiValue();
    const double q = std::sqrt(pi * pi / 16 + r * r + m * m);
    const double a1 = divide(2, pi * (std::sqrt(1 + A * A / 4) + 1));
    const double a2 = 1 + divide(r, q);
    const double a3 = divide(pi, 4 * (pi * pi / 16 + m * m));
    const double a4 = divide(pi * r, 4 * q);
    const double a5 = divide(1, r * r + m * m);
    return a1 * (a2 * a3 + a4 * a5);
}

double DownwashSlope(Sheet& s) {
    const double b = Span(s);
    const double r = divide(2 * StabLever(s), b);
    const double m = divide(2 * StabHeight(s), b);
    return DownwashSlopeOf(AspectRatio5(s), r, m);
}

double DownwashAngle(Sheet& s) {
    return divide(DownwashSlope(s) * s.num(F_GEO_SF_REGLAGES::F29), LiftSlopeFactor(s) * kSectionLiftSlope);
}

double SlopeSum(Sheet& s) {
    double lifting = LiftSlopeFactor(s) * WingArea(s);
    const double tail = StabProjectedArea(s);
    if (tail != 0) lifting += (1 - DownwashSlope(s)) * StabLiftSlope(s) * tail;
    double sum = kSectionLiftSlope * lifting;
    const double body = FuselageArea100(s);
    if (body != 0) sum += FuselageSlope(s) * body;
    return sum;
}

double TailShift(Sheet& s) {
    const double tail = StabProjectedArea(s);
    if (tail == 0) {
        // No tail term, but the lever's rule for a field at zero (shown as
        // 0.0) holds for a flying wing as for any model.
        KeepLeverFieldNumeric(s);
        return 0.25;
    }
    return 0.25 + divide(kSectionLiftSlope * StabLiftSlope(s) * StabLever(s) * tail, MeanChordPlain(s) * SlopeSum(s));
}

double DownwashShift(Sheet& s) {
    // The true stabiliser area here, where TailShift takes the projected one.
    const double area = StabArea(s);
    if (area == 0) return 0;
    return divide(DownwashSlope(s) * StabLever(s) * kSectionLiftSlope * StabLiftSlope(s) * area,
                  MeanChordPlain(s) * SlopeSum(s));
}

double FuselageShift(Sheet& s) {
    const double body = FuselageArea100(s);
    if (body == 0) return 0;
    const double arm = divide(WingFoyerFromNose(s) - FuselageFoyerStation(s), MeanChordPlain(s));
    return divide(arm * FuselageSlope(s) * body, SlopeSum(s));
}

double NeutralPoint(Sheet& s) { return TailShift(s) - DownwashShift(s) - FuselageShift(s); }

double CgPoint(Sheet& s) { return NeutralPoint(s) - s.num(F_GEO_SF_REGLAGES::C29) / 100; }

double CgStation(Sheet& s) { return wingStation(s, CgPoint(s)); }

double NeutralStation(Sheet& s) { return wingStation(s, NeutralPoint(s)); }

}  // namespace tarvokin

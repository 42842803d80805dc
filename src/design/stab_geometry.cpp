// The horizontal tail (flat or V) and the fin. The stabiliser panels follow
// the wing's trapezium rules, without winglets.
#include <cmath>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "core/list_items.h"

namespace tarvokin {

namespace {

double at(const Sheet& s, const grid::Row& row, int k) { return s.num(row[static_cast<size_t>(k - 1)]); }

double rootChord(const Sheet& s, int k) { return at(s, grid::kStabRoot, k); }
double tipChord(const Sheet& s, int k) { return at(s, grid::kStabTip, k); }
double length(const Sheet& s, int k) { return at(s, grid::kStabLength, k); }
double sweep(const Sheet& s, int k) { return at(s, grid::kStabSweep, k); }

template <class F>
double areaWeighted(const Sheet& s, F value) {
    double weighted = 0, area = 0;
    for (int k = 1; k <= 5; ++k) {
        const double a = StabPanelArea(s, k);
        if (a == 0) continue;
        weighted += a * value(k);
        area += a;
    }
    return divide(weighted, area);
}

// Half the opening angle in radians, with the library's pi.
double halfOpening(const Sheet& s) { return OpeningAngle(s) / 2 * PiValue() / 180; }

}  // namespace

double OpeningAngle(const Sheet& s) { return openingAngle(s.listIndex(F_GEO_STAB::b21)); }

double StabPanelArea(const Sheet& s, int k) {
    return length(s, k) * (rootChord(s, k) + tipChord(s, k)) / 10000;
}

double StabPanelMac(const Sheet& s, int k) {
    if (StabPanelArea(s, k) == 0) return 0;
    const double cr = rootChord(s, k), ct = tipChord(s, k);
    return ct + divide((cr - ct) * (ct + 2 * cr), (cr + ct) * 3);
}

double StabSweepShift(const Sheet& s, int k) {
    const double cr = rootChord(s, k), ct = tipChord(s, k);
    if (ct == 0) return 0;
    const double fromRoot = k == 1 ? sweep(s, 1) : sweep(s, k) - sweep(s, k - 1);
    return fromRoot * divide(cr + 2 * ct, (cr + ct) * 3);
}

double StabPanelFoyer(const Sheet& s, int k) {
    if (tipChord(s, k) == 0) return 0;
    const double atQuarter = StabSweepShift(s, k) + StabPanelMac(s, k) * StabFoyerPercent() / 100;
    return k == 1 ? atQuarter : sweep(s, k - 1) + atQuarter;
}

double StabArea(const Sheet& s) {
    double sum = 0;
    for (int k = 1; k <= 5; ++k) sum += StabPanelArea(s, k);
    return sum;
}

double StabSpan(const Sheet& s) {
    double sum = 0;
    for (int k = 1; k <= 5; ++k) sum += length(s, k);
    return 2 * sum;
}

double StabMeanChord(const Sheet& s) {
    return areaWeighted(s, [&](int k) { return StabPanelMac(s, k); });
}

double StabAspectRatio(const Sheet& s) {
    const double b = StabSpan(s);
    return divide(b * b, StabArea(s)) / 10000;
}

double StabEllipticRatio(const Sheet& s) { return divide(1.27 * StabSpan(s), rootChord(s, 1)); }

double StabFoyer(const Sheet& s) {
    return areaWeighted(s, [&](int k) { return StabPanelFoyer(s, k); });
}

void KeepLeverFieldNumeric(Sheet& s) {
    // A lever field left at zero (or blank) is given a tiny value at one
    // decimal, which shows as 0.0: the field then always holds a number.
    if (s.val(F_GEO_STAB::b20) == 0) s.setFixed(F_GEO_STAB::b20, 0.001, 1);
}

double StabLever(Sheet& s) {
    KeepLeverFieldNumeric(s);
    // Without a stabiliser root (flying wing, canard study) the tail terms
    // must vanish without a division by a zero lever.
    if (rootChord(s, 1) == 0) return 1;
    return s.num(F_GEO_STAB::b20) + StabFoyer(s) - WingFoyer(s);
}

double StabProjectedArea(const Sheet& s) {
    const double area = StabArea(s);
    if (area == 0) return 0;
    const double sine = std::sin(halfOpening(s));
    return area * sine * sine;
}

double StabVolume(Sheet& s) {
    const double projected = StabProjectedArea(s);
    if (projected == 0) return 0;
    return divide(divide(projected * StabLever(s), WingArea(s)), MeanChordPlain(s));
}

double StabLiftSlope(const Sheet& s) {
    if (!(StabArea(s) > 0)) return 0.000001;
    const double b = StabAspectRatio(s);
    return divide(b, b + 2);
}

double StabHeight(const Sheet& s) {
    if (OpeningAngle(s) >= 160) return s.num(F_3D::D20);
    return (StabSpan(s) / 2) * std::cos(halfOpening(s)) / 2.5;
}

double StabDragFactor(const Sheet& s) {
    switch (s.listIndex(F_3D::Combo7) + 1) {
        case 1:
        case 2: return 0.01;
        case 3:
        case 4: return 0.015;
        default: return 0.02;
    }
}

double StabChord10(const Sheet& s) { return divide(10 * StabArea(s), StabSpan(s)); }

double StabAreaM2(const Sheet& s) { return StabArea(s) / 100; }

double FinPercent(const Sheet& s) {
    // Only a V-tail counts its fin area here; a flat tail's fin stands apart.
    if (OpeningAngle(s) >= 160) return 0;
    return s.num(F_3D::d21) / 100;
}

double FinArea(const Sheet& s) {
    const double one = s.num(F_GEO_STAB::Text10) * (s.num(F_GEO_STAB::Text12) + s.num(F_GEO_STAB::Text11)) / 2 / 10000;
    return s.on(F_GEO_STAB::Check2) ? 2 * one : one;
}

}  // namespace tarvokin

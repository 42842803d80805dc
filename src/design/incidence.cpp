// Wing and stabiliser settings from the trim of the whole aircraft.
//
// The tail is taken here from what the user moves on the design window: slider
// 0 is the station of the wing's leading edge on the fuselage and slider 5 the
// stabiliser lever, both in mm. The tail's projection uses one power of the
// sine of the half opening (the formula library's projected area squares it):
// the trim was tuned with this one and the two are kept apart on purpose.
#include <algorithm>
#include <cmath>
#include <optional>

#include "design/geometry.h"
#include "design/recalc.h"
#include "core/workbench.h"

namespace tarvokin {

void Incidence(Workbench& wb) {
    using namespace F_GEO_SF_REGLAGES;
    Sheet& s = wb.sheet;

    const double Sw = WingArea(s);
    if (!(Sw > 0)) {
        for (Cell c : {F30, F31, F32}) s.set(c, "-");
        return;
    }
    const double b = Span(s);
    const double A = divide(b * b, Sw) / 10000;
    const double c = MeanChord(s);
    const double Sh = StabArea(s);
    const double Foy = toNumber(fixed(WingFoyer(s), 2));

    const double halfOpening = OpeningAngle(s) / 2 * PiValue() / 180;
    const double sine = std::sin(halfOpening);
    const double ShP = Sh * sine;
    const double BhP = StabSpan(s) * sine;

    const double f = LiftSlopeFactor(s);
    // "- %" (no fuselage) reads as no number, so 0.
    const double Nf = s.val(F_3D::j26a);
    const double wingStation = s.num(F_3D::Slider1[0]);
    const double stabLever = s.num(F_3D::Slider1[5]);
    const double b24 = s.num(F_GEO_FUS::b24);
    const double Xw = wingStation + Foy;
    const double Xf = b24 * Nf / 100;
    const double Rf = divide(Nf / 100 * b24 - Xw, c);

    // Fuselage: its slope only counts through its area, so a fuselage of no
    // width adds nothing and its slope (a division by the width) is not needed.
    const double Af = 100 * FuselagePlanArea(s);
    double Kf = 0;
    if (Af != 0) {
        Kf = std::clamp(0.0217 * divide(c, s.num(F_GEO_FUS::D24)) + 0.0204, 0.05, 0.11);
        if (stabLever > 0 && !(Sh > 0)) Kf = 0.04;
    }
    const double KfAf = Af != 0 ? Kf * Af : 0;

    // Tail: its terms all carry the projected area, so without a stabiliser
    // they vanish and neither the lever nor the downwash is asked for.
    const bool tail = Sh > 0;
    double l = 1, DS = 0, fh = 0.000001, Vb = 0;
    if (tail) {
        if (s.num(F_GEO_STAB::b16) != 0) l = stabLever + s.num(F_GEO_STAB::J20) - Foy;
        const double theta = OpeningAngle(s);
        const double height = theta >= 160 ? s.num(F_GEO_STAB::Text4) : (BhP / 2) * std::cos(halfOpening) / 2.5;
        DS = DownwashSlopeOf(A, divide(2 * l, b), divide(2 * height, b));
        Vb = divide(divide(ShP * l, Sw), c);
        const double Ah = divide(BhP * BhP, ShP) / 10000;
        fh = divide(Ah, Ah + 2);
    }

    const double Sum = kSectionLiftSlope * (f * Sw + (tail ? (1 - DS) * fh * ShP : 0)) + KfAf;
    const double T1 = KfAf != 0 ? divide(divide(Xw - Xf, c) * KfAf, Sum) : 0;
    const double T2 = 0.25 + (tail ? divide(kSectionLiftSlope * fh * l * ShP, c * Sum) : 0);
    const double T3 = tail ? divide(DS * l * kSectionLiftSlope * fh * ShP, c * Sum) : 0;
    const double N = T2 - T3 - T1;
    const double Vc = tail ? Vb * (1 + (0.25 - N) * divide(c, l)) : 0;

    const double Cz = s.num(F29);
    const double cm0 = s.num(F_GEO_SF::j11);
    const double alpha0 = s.num(F_GEO_SF::j12);

    const double wingSetting = Cz * (divide(18.2, A) + 1 / kSectionLiftSlope) + alpha0;
    s.setFixed(F31, wingSetting, 2);

    // Cambered tail sections (list positions 1 and 3) lift at zero incidence
    // and are set 1.5 degrees apart.
    const int section = s.listIndex(F_3D::Combo7);
    const double Off = (section == 1 || section == 3) ? -1.5 : 0;

    // Without a tail volume there is no stabiliser setting to give.
    std::optional<double> stabSetting;
    if (Vc != 0) {
        const double G = divide((N - Rf) * KfAf, Vc * kSectionLiftSlope * fh * Sw);
        stabSetting = (divide(-cm0, Vc * kSectionLiftSlope * fh) + alpha0) + G * (wingSetting - alpha0) - Off;
    }
    if (stabSetting) {
        s.setFixed(F30, *stabSetting, 2);
        s.setFixed(F32, wingSetting - *stabSetting, 2);
    } else {
        s.set(F30, "-");
        s.set(F32, "-");
    }

    // Cz at the CG and at the neutral point; a model trimmed exactly on its
    // wing's own neutral point has none.
    const double atCg = N - s.num(C29) / 100 - 0.25;
    if (atCg != 0)
        s.setFixed(D30, -cm0 / atCg, 2);
    else
        s.set(D30, "-");
    const double atNeutral = N - 0.25;
    if (atNeutral != 0)
        s.setFixed(D31, -cm0 / atNeutral, 2);
    else
        s.set(D31, "-");
}

}  // namespace tarvokin

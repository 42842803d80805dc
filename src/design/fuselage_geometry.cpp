// The fuselage as the neutral-point estimate sees it: a box of length b24 and
// width D24 shaped by its cross-section (Combo9) and tail cone (Combo10).
#include <algorithm>

#include "design/geometry.h"

namespace tarvokin {

namespace {
double lengthM(const Sheet& s) { return s.num(F_GEO_FUS::b24) / 1000; }
double widthM(const Sheet& s) { return s.num(F_GEO_FUS::D24) / 1000; }
}  // namespace

int FuselageType(const Sheet& s) { return s.listIndex(F_3D::Combo9) + 1; }

int TailType(const Sheet& s) { return s.listIndex(F_3D::Combo10) + 1; }

double FuselageFoyerPercent(const Sheet& s) {
    // The slimmer the tail cone, the further forward the fuselage's own
    // neutral point. The caller shows "-" when there is no plan area.
    switch (TailType(s)) {
        case 1: return 15;
        case 2: return 20;
        default: return 25;
    }
}

double FuselagePlanArea(const Sheet& s) {
    double fill;
    switch (TailType(s)) {
        case 1: fill = 0.55; break;
        case 2: fill = 0.7; break;
        default: fill = 0.85; break;
    }
    return lengthM(s) * widthM(s) * fill;
}

double FuselageBox(const Sheet& s) { return lengthM(s) * widthM(s); }

double FuselageShapeFactor(const Sheet& s) {
    switch (FuselageType(s)) {
        case 1: return 1;
        case 2: return 1.2;
        default: return 1.4;
    }
}

double FuselageWetArea(const Sheet& s) {
    const double plan = FuselagePlanArea(s);
    if (!(plan > 0)) return 0;
    const double meanDiameter = (s.num(F_GEO_FUS::D24) / 1000 + s.num(F_GEO_FUS::D25) / 1000) / 2;
    return lengthM(s) * PiValue() * meanDiameter * divide(plan, FuselageBox(s)) * FuselageShapeFactor(s);
}

double FuselageSlopeRaw(const Sheet& s) {
    return 0.0217 * divide(MeanChordPlain(s), s.num(F_GEO_FUS::D24)) + 0.0204;
}

double FuselageSlope(const Sheet& s) {
    if (!(StabArea(s) > 0)) return 0.04;
    return std::clamp(FuselageSlopeRaw(s), 0.05, 0.11);
}

double FuselageArea100(const Sheet& s) { return FuselagePlanArea(s) * 100; }

double FuselageFoyerStation(const Sheet& s) {
    double percent = 0;
    if (!tryNumber(s.text(F_GEO_FUS::j26), percent)) return 0;
    return s.num(F_GEO_FUS::b24) * percent / 100;
}

double WingFoyerFromNose(const Sheet& s) { return s.num(F_GEO_FUS::b25) + WingFoyer(s); }

}  // namespace tarvokin

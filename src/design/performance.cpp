// The performance kernel: one sweep of the section Cz through the polar of the
// complete model (wing profile and induced drag, fuselage, stabiliser trim and
// drag, interference), at the speed that carries the mass (the speed polar)
// or at an imposed speed (constant Reynolds).
#include <algorithm>
#include <cmath>

#include "airfoils/polar_lookup.h"
#include "design/performance.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

// Kinematic viscosity of air, m²/s; deliberately not derived from temperature.
constexpr double kViscosity = 1e-5 * 1.5;

double readBack7(double x) { return toNumber(fixed(x, 7)); }

// Everything the sweep reads once before its first point.
struct RunInputs {
    double mass = 0;          // g
    double rho = 0;           // kg/m³
    double areaDm2 = 0;       // wing, dm²
    double areaM2 = 0;        // wing, m²
    double charge = 0;        // wing loading as the speed formula takes it
    double aspect = 0;        // A
    double wingChord = 0;     // mm
    double stabChord = 0;     // mm
    double xcg = 0;           // CG as a fraction of the mean chord
    double tailVolume = 0;    // Vs
    double stabAspect = 0;    // A_stab
    double stabArea = 0;      // dm²
    double finArea = 0;       // dm²
    double fuselageWet = 0;   // m²
    double fuselageLength = 0, fuselageWidth = 0;  // mm
    bool fuselagePresent = false, stabPresent = false;
    bool chkStab = true, chkFuselage = true;
    double interference = 1.1;
    double cx0Stab = 0.02;
    double czRef = 0;
    double cm0 = 0;
};

RunInputs readRunInputs(Workbench& wb, int massIndex) {
    Sheet& s = wb.sheet;
    RunInputs in;
    in.mass = s.num(massIndex == 0 ? F_GEO_SF_REGLAGES::H30 : F_GEO_SF_REGLAGES::I30);
    in.rho = DensiteAir(wb);
    in.areaDm2 = WingArea(s);
    in.areaM2 = in.areaDm2 / 100;
    const double span = Span(s);
    const double stabSpan = StabSpan(s);
    in.stabArea = StabArea(s);
    // A wing without area has no aspect ratio, loading, chord or CG: its points
    // cannot be computed and stay at 0 (see computePoint).
    if (in.areaDm2 > 0) {
        in.charge = (in.mass / 1000) / in.areaM2 * 10;
        in.aspect = AspectRatio5(s);
        if (span > 0) in.wingChord = 10 * in.areaDm2 / span;
        in.xcg = CgPoint(s);
        in.tailVolume = StabVolume(s);
    }
    if (stabSpan > 0) in.stabChord = 10 * in.stabArea / stabSpan;
    const double projected = StabProjectedArea(s);
    if (projected > 0) {
        const double sine = std::sin(OpeningAngle(s) / 2 * PiValue() / 180);
        const double projectedSpan = s.val(F_3D::j17) * sine;
        in.stabAspect = (projectedSpan * projectedSpan / projected) / 10000;
    }
    in.finArea = s.val(F_3D::d21);
    in.fuselageWet = FuselageWetArea(s);
    in.fuselageLength = s.num(F_GEO_FUS::b24);
    in.fuselageWidth = s.num(F_GEO_FUS::D24);
    in.fuselagePresent = in.fuselageLength != 0 && in.fuselageWidth != 0;
    in.stabPresent = stabSpan != 0;
    // The panel's switches count only while it is open; closed, every
    // contribution is taken.
    if (wb.isOpen(button::Performances)) {
        in.chkStab = s.on(F_GEO_3::Check1);
        in.chkFuselage = s.on(F_GEO_3::Check2);
        in.interference = s.on(F_GEO_3::Check3) ? 1.1 : 1.0;
    }
    in.cx0Stab = StabDragFactor(s);
    in.czRef = s.val(F_3D::F29);
    in.cm0 = s.val(F_GEO_SF::j11);
    return in;
}

bool allFinite(const PerfPoint& p) {
    for (double v : {p.CzAvion, p.ReAile, p.CxProfil, p.CxInduit, p.ReFuselage, p.CxFuselage, p.ReStab, p.CxStab,
                     p.CzStab, p.CxInduitStab, p.CxTotal, p.V, p.VKmh, p.Vz, p.Finesse, p.PuissanceAero, p.Trainee})
        if (!std::isfinite(v)) return false;
    return true;
}

// A point that cannot be computed (no wing area or aspect ratio, no mass, no
// speed, or a value that would not be a finite number) keeps its section Cz
// and the carried polar values, and shows 0 everywhere else, so that no inf
// or nan reaches a cell or a chart.
void clearPoint(PerfPoint& p) {
    PerfPoint cleared;
    cleared.CzProfil = p.CzProfil;
    cleared.PolCz = p.PolCz;
    cleared.PolCx = p.PolCx;
    cleared.Spare1 = p.Spare1;
    cleared.Spare2 = p.Spare2;
    p = cleared;
}

// Steps 1 to 16 of one point, at the speed that carries the mass when
// imposedSpeed is 0, else at that speed (m/s). False when the point could not
// be computed; it is then cleared.
bool computePoint(Workbench& wb, const RunInputs& in, int airfoilIndex, double imposedSpeed, PerfPoint& p) {
    if (!(in.aspect > 0) || !(in.areaDm2 > 0) || !(in.rho > 0)) {
        clearPoint(p);
        return false;
    }
    const double pi = PiValue();
    p.CzAvion = p.CzProfil / (1 + 2 / in.aspect);
    if (imposedSpeed > 0)
        p.V = imposedSpeed;
    else
        p.V = std::sqrt((19.62 * in.charge / 10) / (in.rho * p.CzAvion));
    if (!(p.V > 0) || !std::isfinite(p.V)) {
        clearPoint(p);
        return false;
    }
    p.ReAile = intPart(p.V * in.wingChord / kViscosity);
    p.CxProfil = Get_Cx(wb, airfoilIndex, p.ReAile, p.CzProfil);
    p.CxInduit = p.CzAvion * p.CzAvion / (pi * in.aspect);
    p.ReFuselage = (in.fuselageLength / 1000) * p.V / kViscosity;
    if (in.chkFuselage && in.fuselagePresent) {
        const double lift = in.czRef - p.CzAvion;
        p.CxFuselage = 0.074 / std::pow(p.ReFuselage, 1.0 / 5) * in.fuselageWet / in.areaM2 +
                       1.4 * (in.fuselageWidth / in.fuselageLength) * lift * lift * in.fuselageWet / in.areaM2;
    } else {
        p.CxFuselage = 0;
    }
    p.ReStab = intPart(p.V * in.stabChord / kViscosity);
    // A stabiliser with a span but no chord has no Reynolds number and no drag.
    if (in.chkStab && in.stabPresent && p.ReStab > 0)
        p.CxStab = readBack7(in.cx0Stab * (in.finArea + in.stabArea) / in.areaDm2 * std::sqrt(100000 / p.ReStab));
    else
        p.CxStab = 0;
    // Without a stabiliser (tail volume 0) there is no trim term.
    if (in.tailVolume != 0)
        p.CzStab = readBack7(p.CzAvion * (in.xcg - (0.25 - in.cm0 / p.CzAvion)) / in.tailVolume);
    else
        p.CzStab = 0;
    if (in.chkStab && in.stabPresent && in.stabAspect > 0)
        p.CxInduitStab = p.CzStab * p.CzStab / (pi * in.stabAspect) * in.stabArea / in.areaDm2;
    else
        p.CxInduitStab = 0;
    p.CxTotal = (p.CxInduit + p.CxProfil + p.CxStab + p.CxFuselage + p.CxInduitStab) * in.interference;
    p.VKmh = p.V * 3.6;
    p.Vz = -(p.CxTotal / p.CzAvion) * p.V;
    p.Finesse = p.CxTotal != 0 ? p.CzAvion / p.CxTotal : 0;
    if (imposedSpeed > 0) {
        p.Trainee = 0.5 * in.rho * in.areaM2 * p.V * p.V * p.CxTotal;
        p.PuissanceAero = p.V * p.Trainee;
    } else {
        p.PuissanceAero = p.Vz * -9.81 * in.mass / 1000;
    }
    if (!allFinite(p)) {
        clearPoint(p);
        return false;
    }
    return true;
}

// The working table starts from the carried polar values of the previous
// contents, point by point, and replaces the old table when complete.
PerfPoint carriedPoint(const PerfTableT& previous, size_t i) {
    PerfPoint p;
    if (i < previous.size()) {
        p.PolCz = previous[i].PolCz;
        p.PolCx = previous[i].PolCx;
        p.Spare1 = previous[i].Spare1;
        p.Spare2 = previous[i].Spare2;
    }
    return p;
}

}  // namespace

void CalculPerformances(Workbench& wb, int airfoilIndex, int massIndex, int slot, int reynoldsMode) {
    (void)reynoldsMode;
    Sheet& s = wb.sheet;
    if (s.val(F_GEO_SF_REGLAGES::T_ALLOW) == 0) return;
    if (slot == kSlotByAirfoil) slot = airfoilIndex;
    if (slot < 0 || slot >= static_cast<int>(wb.perf.PerfTable.size())) return;

    PerformanceState& perf = wb.perf;
    perf.CzStabMin = 9999;
    perf.CzStabMax = -9999;
    const RunInputs in = readRunInputs(wb, massIndex);

    const PerfTableT& previous = perf.PerfTable[static_cast<size_t>(slot)];
    PerfTableT table;
    table.reserve(kPerfPoints);
    double cz = 0;
    for (size_t i = 0; i < static_cast<size_t>(kPerfPoints); ++i) {
        PerfPoint p = carriedPoint(previous, i);
        cz = cz + 0.05;
        p.CzProfil = cz;
        if (computePoint(wb, in, airfoilIndex, 0, p) && massIndex == 0) {
            perf.CzStabMin = std::min(perf.CzStabMin, p.CzStab);
            perf.CzStabMax = std::max(perf.CzStabMax, p.CzStab);
        }
        table.push_back(p);
    }
    perf.PerfTable[static_cast<size_t>(slot)] = std::move(table);

    if (perf.CzStabMin != 9999 && perf.CzStabMax != -9999) {
        s.setFixed(F_GEO_SF_REGLAGES::C32, std::max(std::fabs(perf.CzStabMin), perf.CzStabMax), 2);
        s.set(F_3D::C32, s.text(F_GEO_SF_REGLAGES::C32));
        s.setFixed(F_3D::CX0_STAB, perf.PerfTable[static_cast<size_t>(slot)][0].CxStab, 4);
    }
    if (wb.isOpen(button::Performances)) {
        for (int i = 0; i < 3; ++i) {
            s.set(F_GEO_3::Text4[i], s.text(F_3D::H32));
            s.set(F_GEO_3::Text11[i], s.text(F_3D::I32));
        }
    }
}

void CalculPerformancesReConstant(Workbench& wb, PerfTableT& result, int airfoilIndex, int massIndex) {
    if (wb.sheet.val(F_GEO_SF_REGLAGES::T_ALLOW) == 0) return;
    const RunInputs in = readRunInputs(wb, massIndex);
    const double speed = wb.sheet.val(F_GEO_5::Text2) / 3.6;
    PerfTableT table;
    table.reserve(kPerfPointsReConstant);
    double cz = -0.05;
    for (size_t i = 0; i < static_cast<size_t>(kPerfPointsReConstant); ++i) {
        PerfPoint p = carriedPoint(result, i);
        cz = cz + 0.1;
        p.CzProfil = cz;
        // A speed of 0 or less cannot be imposed: the points stay cleared.
        if (speed > 0)
            computePoint(wb, in, airfoilIndex, speed, p);
        else
            clearPoint(p);
        table.push_back(p);
    }
    result = std::move(table);
}

}  // namespace tarvokin

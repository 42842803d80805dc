// The curves of the performance windows: the six speed polars folded at their
// stalled end, smoothed into PerfTableLisse, drawn as ChartData, and read at
// the cursor; and the constant-speed curves of F_GEO_5.
#include <algorithm>
#include <cmath>
#include <string>

#include "airfoils/polar_lookup.h"
#include "design/performance.h"
#include "core/workbench.h"
#include "core/translations.h"

namespace tarvokin {

namespace {

constexpr int kSlots = 6;
constexpr const char* kDash = "-";

// The slot runs of Courbes_Performances: (airfoil, mass) by slot.
constexpr int airfoilOf(int slot) { return slot % 3; }
constexpr int massOf(int slot) { return slot / 3; }

std::string airfoilCaption(const Sheet& s, int airfoil) {
    const std::string& name = s.text(F_PROFILS::CB_1[airfoil]);
    return name.empty() ? s.text(F_PROFILS::L_PROFIL[airfoil]) : name;
}


int massStyle(int mass) { return mass == 0 ? linestyle::Solid : linestyle::Dashed; }

using Field = double PerfPoint::*;

// Every numeric field of a point, in pairs for the smoothing.
constexpr Field kFields[] = {&PerfPoint::CzProfil, &PerfPoint::CzAvion,  &PerfPoint::ReAile,
                             &PerfPoint::CxProfil, &PerfPoint::CxInduit, &PerfPoint::ReFuselage,
                             &PerfPoint::CxFuselage, &PerfPoint::ReStab, &PerfPoint::CxStab,
                             &PerfPoint::CzStab, &PerfPoint::CxInduitStab, &PerfPoint::CxTotal,
                             &PerfPoint::V, &PerfPoint::VKmh, &PerfPoint::Vz,
                             &PerfPoint::Finesse, &PerfPoint::PuissanceAero, &PerfPoint::Trainee,
                             &PerfPoint::PolCz, &PerfPoint::PolCx, &PerfPoint::Spare1,
                             &PerfPoint::Spare2};
static_assert(std::size(kFields) % 2 == 0);

// Each field goes through the smoothing of the plotted curves: the smoothing
// treats x and y alike, so a curve of any two fields drawn from the result is
// the smoothed curve of those fields.
PerfTableT smoothTable(const PerfTableT& in) {
    if (in.size() < 2) return in;
    PerfTableT out(2 * in.size() - 1);
    std::vector<ChartPoint> curve(in.size());
    for (size_t f = 0; f < std::size(kFields); f += 2) {
        const Field fx = kFields[f], fy = kFields[f + 1];
        for (size_t i = 0; i < in.size(); ++i) curve[i] = {in[i].*fx, in[i].*fy};
        const std::vector<ChartPoint> smooth = Smooth_Curve(curve);
        for (size_t i = 0; i < out.size(); ++i) {
            out[i].*fx = smooth[i].x;
            out[i].*fy = smooth[i].y;
        }
    }
    return out;
}



ChartSeries seriesOf(int code, std::string name, Rgb colour, int style, const PerfTableT& t, Field x, Field y) {
    ChartSeries s;
    s.code = code;
    s.name = std::move(name);
    s.colour = colour;
    s.style = style;
    s.points.reserve(t.size());
    for (const PerfPoint& p : t) s.points.push_back({p.*x, p.*y});
    return s;
}

// A vertical line at the speed of the best point of a plotted curve (the
// highest y among the points that have a speed).
void markBest(ChartData& chart, const ChartSeries& series, const PerfTableT& t, Field y) {
    const PerfPoint* best = nullptr;
    for (const PerfPoint& p : t)
        if (p.VKmh > 0 && (!best || p.*y > best->*y)) best = &p;
    if (!best) return;
    ChartMarker m;
    m.kind = ChartMarker::Kind::VerticalLine;
    m.x = best->VKmh;
    m.colour = series.colour;
    m.label = series.name + " (" + fixed(best->VKmh, 1) + " Km/h)";
    chart.markers.push_back(m);
}

ChartData chartTitled(const char* title, const char* xTitle, const char* yTitle) {
    ChartData c;
    c.title = title;
    c.xTitle = xTitle;
    c.yTitle = yTitle;
    return c;
}

// Lowest sink rate of all six tables, halved: the floor onto which the stalled
// low-speed ends are folded.
void foldStalledEnds(PerformanceState& perf) {
    double floor = 9999;
    for (const PerfTableT& t : perf.PerfTable)
        for (const PerfPoint& p : t) floor = std::min(floor, p.Vz);
    floor = floor / 2;
    for (PerfTableT& t : perf.PerfTable) {
        for (size_t i = 1; i < t.size(); ++i) {
            if (t[i].VKmh < 50 && t[i].Vz < floor) {
                t[i].Vz = floor;
                t[i].VKmh = t[i - 1].VKmh;
            }
        }
    }
}

void buildSpeedPolarCharts(Workbench& wb) {
    const Sheet& s = wb.sheet;
    PerformanceState& perf = wb.perf;
    const std::array<bool, 3>& shown = perf.charts.readoutShown;

    ChartData sink = chartTitled("Taux de chute Vz (m/s) / V (km/h)", "V Km/h", "Taux de chute Vz (m/s)");
    ChartData finesse = chartTitled("Finesse / V (km/h)", "V(km/h)", "Finesse");
    ChartData lift = chartTitled("Cz / V (km/h)", "V(km/h)", "Cz");
    ChartData polar = chartTitled("", "Cx", "Cz");

    for (int slot = 0; slot < kSlots; ++slot) {
        const int a = airfoilOf(slot), m = massOf(slot);
        if (!shown[static_cast<size_t>(a)]) continue;
        const PerfTableT& t = perf.PerfTableLisse[static_cast<size_t>(slot)];
        const std::string name = airfoilCaption(s, a) + MassWords(wb.settings.languageCode, m);
        const Rgb colour = kAirfoilColours[a];
        sink.series.push_back(seriesOf(slot, name, colour, massStyle(m), t, &PerfPoint::VKmh, &PerfPoint::Vz));
        markBest(sink, sink.series.back(), t, &PerfPoint::Vz);
        finesse.series.push_back(
            seriesOf(6 + slot, name, colour, massStyle(m), t, &PerfPoint::VKmh, &PerfPoint::Finesse));
        markBest(finesse, finesse.series.back(), t, &PerfPoint::Finesse);
    }

    // The lift of the model at each speed does not depend on the airfoil: the
    // first shown airfoil's tables carry it, with the stabiliser's trim lift.
    const auto first = std::find(shown.begin(), shown.end(), true);
    if (first != shown.end()) {
        const int a = static_cast<int>(first - shown.begin());
        const bool flyingWing = s.val(F_GEO_SF_REGLAGES::Ch_Aile) == 1;
        for (int m = 0; m < 2; ++m) {
            const PerfTableT& t = perf.PerfTableLisse[static_cast<size_t>(a + 3 * m)];
            const std::string mass = MassWords(wb.settings.languageCode, m);
            lift.series.push_back(seriesOf(12 + m, "cz" + mass, kAirfoilColours[0], massStyle(m), t, &PerfPoint::VKmh,
                                           &PerfPoint::CzAvion));
        }
        for (int m = 0; m < 2; ++m) {
            const PerfTableT& t = perf.PerfTableLisse[static_cast<size_t>(a + 3 * m)];
            const std::string mass = MassWords(wb.settings.languageCode, m);
            ChartSeries stab = seriesOf(14 + m, "cz stab" + mass, kAirfoilColours[1], massStyle(m), t, &PerfPoint::VKmh,
                                        &PerfPoint::CzStab);
            // A flying wing has no stabiliser to trim with.
            if (flyingWing)
                for (ChartPoint& p : stab.points) p.y = 0;
            lift.series.push_back(std::move(stab));
        }
    }

    // The polar of each airfoil at Re 220000, as read.
    for (int a = 0; a < 3; ++a) {
        if (!shown[static_cast<size_t>(a)]) continue;
        const PolarRecord& r = wb.polars.Polars[static_cast<size_t>(a)][3];
        if (r.LastRow == 0 && r.Points[0].Cz == 0 && r.Points[0].Cx == 0) continue;
        ChartSeries s16;
        s16.code = 16 + a;
        s16.name = airfoilCaption(s, a);
        s16.colour = kAirfoilColours[a];
        for (int i = 0; i <= r.LastRow && i < kPolarRows; ++i)
            s16.points.push_back({r.Points[static_cast<size_t>(i)].Cx, r.Points[static_cast<size_t>(i)].Cz});
        polar.series.push_back(std::move(s16));
    }

    perf.charts.speedPolar = {std::move(sink), std::move(finesse), std::move(lift), std::move(polar)};
    for (ChartData& c : perf.charts.speedPolar) c.dropNonFinite();
}

// Linear interpolation of a smoothed curve at a speed; false when the curve
// does not reach that speed.
bool valuesAtSpeed(const PerfTableT& t, double v, PerfPoint& out) {
    for (size_t j = 0; j + 1 < t.size(); ++j) {
        const double x0 = t[j].VKmh, x1 = t[j + 1].VKmh;
        if ((x0 - v) * (x1 - v) > 0) continue;
        // A folded stretch is vertical: its first point stands for it.
        const double f = x1 == x0 ? 0.0 : (v - x0) / (x1 - x0);
        out.Vz = t[j].Vz + f * (t[j + 1].Vz - t[j].Vz);
        out.Finesse = t[j].Finesse + f * (t[j + 1].Finesse - t[j].Finesse);
        out.PuissanceAero = t[j].PuissanceAero + f * (t[j + 1].PuissanceAero - t[j].PuissanceAero);
        return true;
    }
    return false;
}

}  // namespace

// Lookup noise in the polars otherwise draws a second hump before the maximum.
void KeepSingleFinesseMaximum(PerfTableT& t) {
    if (t.size() < 2) return;
    size_t top = 0;
    for (size_t i = 1; i < t.size(); ++i)
        if (t[i].Finesse > t[top].Finesse) top = i;
    for (size_t i = 1; i < top; ++i) {
        const double before = t[i - 1].Finesse;
        if (t[i].Finesse < before) t[i].Finesse = before - (before - t[i].Finesse) / 10;
    }
}

void Affiche_Curseur(Workbench& wb) {
    Sheet& s = wb.sheet;
    const PerformanceState& perf = wb.perf;
    const std::array<bool, 3>& shown = perf.charts.readoutShown;
    const int point = std::clamp(static_cast<int>(s.val(F_GEO_3::Text12)), 1, kPerfPoints - 1);
    const size_t i = static_cast<size_t>(point - 1);
    const int mass = s.on(F_GEO_3::Option1[1]) ? 1 : 0;
    const auto first = std::find(shown.begin(), shown.end(), true);
    const int airfoil = first == shown.end() ? 0 : static_cast<int>(first - shown.begin());
    const PerfTableT& current = perf.PerfTable[static_cast<size_t>(airfoil + 3 * mass)];

    static const CellGroup kReadout[2][3] = {{F_GEO_3::Text5, F_GEO_3::Text6, F_GEO_3::Text7},
                                             {F_GEO_3::Text8, F_GEO_3::Text9, F_GEO_3::Text10}};
    if (i >= current.size()) {
        s.set(F_GEO_3::T_Cz, kDash);
        s.set(F_GEO_3::T_Vitesse, kDash);
        for (const auto& row : kReadout)
            for (const CellGroup& g : row)
                for (int a = 0; a < 3; ++a) s.set(g[a], kDash);
        return;
    }
    s.setFixed(F_GEO_3::T_Cz, current[i].CzAvion, 2);
    s.setFixed(F_GEO_3::T_Vitesse, current[i].VKmh, 2);
    const double speed = current[i].VKmh;
    for (int a = 0; a < 3; ++a) {
        if (!shown[static_cast<size_t>(a)]) continue;
        for (int m = 0; m < 2; ++m) {
            PerfPoint at;
            const auto& row = kReadout[m];
            if (valuesAtSpeed(perf.PerfTableLisse[static_cast<size_t>(a + 3 * m)], speed, at)) {
                s.setFixed(row[0][a], at.Vz, 2);
                s.setFixed(row[1][a], at.Finesse, 1);
                s.setFixed(row[2][a], at.PuissanceAero, 2);
            } else {
                for (const CellGroup& g : row) s.set(g[a], kDash);
            }
        }
    }
}

void Courbes_Performances(Workbench& wb) {
    Sheet& s = wb.sheet;
    PerformanceState& perf = wb.perf;
    s.setFixed(F_GEO_3::Text1, DensiteAir(wb), 2);

    for (int a = 0; a < 3; ++a) {
        const Cell choice = F_PROFILS::Check2[a];
        perf.charts.readoutShown[static_cast<size_t>(a)] = s.on(choice);
        if (s.text(F_GEO_3::Check5[a]) != s.text(choice)) s.set(F_GEO_3::Check5[a], s.text(choice));
    }

    for (int slot = 0; slot < kSlots; ++slot) CalculPerformances(wb, airfoilOf(slot), massOf(slot), slot);

    foldStalledEnds(perf);

    for (int slot = 0; slot < kSlots; ++slot) {
        PerfTableT plotted = perf.PerfTable[static_cast<size_t>(slot)];
        KeepSingleFinesseMaximum(plotted);
        perf.PerfTableLisse[static_cast<size_t>(slot)] = smoothTable(plotted);
    }
    buildSpeedPolarCharts(wb);
    Affiche_Curseur(wb);
}

void Courbes_ReConstant(Workbench& wb) {
    const Sheet& s = wb.sheet;
    PerformanceState& perf = wb.perf;
    ChartData finesse = chartTitled("Cz / Cx", "Cz", "Finesse");
    ChartData power = chartTitled("Puissance aéro (W)", "Cz", "Puissance aéro (W)");
    for (int slot = 0; slot < kSlots; ++slot) {
        const int a = airfoilOf(slot), m = massOf(slot);
        PerfTableT& result = perf.ReConstant[static_cast<size_t>(slot)];
        CalculPerformancesReConstant(wb, result, a, m);
        if (!s.on(F_GEO_5::Check2[a])) continue;
        PerfTableT plotted = result;
        KeepSingleFinesseMaximum(plotted);
        plotted = smoothTable(plotted);
        const std::string name = airfoilCaption(s, a) + MassWords(wb.settings.languageCode, m);
        finesse.series.push_back(seriesOf(200 + slot, name, kAirfoilColours[a], massStyle(m), plotted,
                                          &PerfPoint::CzAvion, &PerfPoint::Finesse));
        power.series.push_back(seriesOf(300 + slot, name, kAirfoilColours[a], massStyle(m), plotted,
                                        &PerfPoint::CzAvion, &PerfPoint::PuissanceAero));
    }
    if (s.val(F_GEO_5::Text3) > 0) finesse.yMax = s.val(F_GEO_5::Text3);
    if (s.val(F_GEO_5::Text4) > 0) power.yMax = s.val(F_GEO_5::Text4);
    perf.charts.constantReynolds = {std::move(finesse), std::move(power)};
    for (ChartData& c : perf.charts.constantReynolds) c.dropNonFinite();
}

}  // namespace tarvokin

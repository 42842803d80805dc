#include "design/aspect_ratio.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

#include "airfoils/polar_lookup.h"
#include "design/geometry.h"
#include "core/workbench.h"
#include "core/translations.h"

namespace tarvokin {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr const char* kNotComputed = "-";
constexpr int kFlightCzCount = 10;
constexpr int kTurnFirstA = 4, kTurnLastA = 35;
// The first curve's best aspect ratio beyond which the sweep's end, not the
// wing, decides the optimum.
constexpr double kUnboundedA = 30;

// A cell as a number, or NaN when it does not hold one ("", "-").
double field(const Sheet& s, Cell c) {
    double v = 0;
    return tryNumber(s.text(c), v) ? v : kNaN;
}

// a / b, NaN when b is zero or either side is not finite.
double quotient(double a, double b) {
    if (b == 0 || !std::isfinite(a) || !std::isfinite(b)) return kNaN;
    const double q = a / b;
    return std::isfinite(q) ? q : kNaN;
}

void put(Sheet& s, Cell c, double v, int decimals) {
    if (std::isfinite(v))
        s.setFixed(c, v, decimals);
    else
        s.set(c, kNotComputed);
}

// V(m/s) = sqrt(load * 1.6 / Cz): lift equal to weight at sea level, the
// loading in g/dm².
double flightSpeed(double load, double cz) { return std::sqrt(quotient(load * 1.6, cz)); }

// Reynolds number of a chord in mm, the kinematic viscosity folded in.
double reynolds(double speed, double chordMm) { return speed * chordMm / 0.015; }

double profileDrag(const AspectInputs& in, int slot, double czProfil, double re, bool atReynolds) {
    if (!std::isfinite(re) || re <= 0 || !std::isfinite(czProfil)) return kNaN;
    const auto i = static_cast<size_t>(slot);
    if (in.analytic) {
        const AnalyticPolar p = atReynolds ? PolarAtReynolds(in.at200[i], in.at1500[i], re) : in.at200[i];
        return AnalyticCx(p, czProfil, re);
    }
    if (in.polars == nullptr) return kNaN;
    return Get_Cx(*in.polars, slot, re, czProfil);
}

// The columns of one mass in a row.
struct MassColumns {
    double& V;
    double& Re;
    std::array<double, 3>& Cx;
    double& CxInduit;
    std::array<double, 3>& Finesse;
};

MassColumns miniColumns(AllongementPoint& p) { return {p.VMini, p.ReMini, p.CxMini, p.CxInduitMini, p.FinesseMini}; }
MassColumns maxiColumns(AllongementPoint& p) { return {p.VMaxi, p.ReMaxi, p.CxMaxi, p.CxInduitMaxi, p.FinesseMaxi}; }

// One mass of a row flown at flight Cz `cz`: speed from the loading, Reynolds
// number of the row's chord, drag of each airfoil, induced drag, glide ratio.
void fillMass(const AspectInputs& in, const AllongementPoint& p, double cz, double load, bool roundSpeed,
              bool atReynolds, MassColumns m) {
    m.V = flightSpeed(load, cz);
    if (roundSpeed) m.V = roundHalfAway(m.V, 3);
    const double re = reynolds(m.V, p.Corde);
    m.Re = std::isfinite(re) ? std::trunc(re) : kNaN;
    m.CxInduit = roundHalfAway(quotient(cz * cz, PiValue() * p.A), 7);
    for (int i = 0; i < 3; ++i) {
        m.Cx[static_cast<size_t>(i)] = profileDrag(in, i, p.CzProfil, m.Re, atReynolds);
        m.Finesse[static_cast<size_t>(i)] = quotient(cz, m.CxInduit + m.Cx[static_cast<size_t>(i)]);
    }
}

void carry(AllongementPoint& p, double cz) {
    p.CzMini = cz;
    p.CxMini0 = p.CxMini[0];
    p.CzMini0 = p.CzProfil;
}

double meanChord(double area, double a) { return std::sqrt(quotient(area, a)) * 100; }

// Flight Cz 0.1, 0.2, ... 1.0. V2.22 adds 0.1 as it comes; V2.23 rounds each
// step to one decimal so that the values are exact tenths.
template <class F>
void forEachFlightCz(bool rounded, F f) {
    double cz = 0.1;
    for (int n = 0; n < kFlightCzCount; ++n) {
        if (n > 0) cz = rounded ? roundHalfAway(cz + 0.1, 1) : cz + 0.1;
        f(cz);
    }
}

// ---- charts ----------------------------------------------------------------------

struct RawPoint {
    double x = 0, y = 0;
    bool marks = true;  // may carry the curve's maximum marker
};

// A point of size 13 in the curve's colour at the highest plotted point that
// may carry it.
void MarqueMax(ChartData& chart, const ChartSeries& s, const std::vector<bool>& marks) {
    size_t best = s.points.size();
    for (size_t i = 0; i < s.points.size(); ++i) {
        if (!marks[i]) continue;
        if (best == s.points.size() || s.points[i].y > s.points[best].y) best = i;
    }
    if (best == s.points.size()) return;
    ChartMarker m;
    m.kind = ChartMarker::Kind::Point;
    m.x = s.points[best].x;
    m.y = s.points[best].y;
    m.colour = s.colour;
    m.size = 13;
    chart.markers.push_back(m);
}

// Smooths the computable points of a curve, adds it and marks its maximum. A
// point inserted by the smoothing may carry the marker when both its
// neighbours may.
void plotCurve(ChartData& chart, int code, std::string name, Rgb colour, int style, const std::vector<RawPoint>& raw) {
    std::vector<ChartPoint> pts;
    std::vector<bool> rawMarks;
    for (const RawPoint& r : raw) {
        if (!std::isfinite(r.x) || !std::isfinite(r.y)) continue;
        pts.push_back({r.x, r.y});
        rawMarks.push_back(r.marks);
    }
    if (pts.empty()) return;
    ChartSeries s;
    s.code = code;
    s.name = std::move(name);
    s.colour = colour;
    s.style = style;
    s.points = Smooth_Curve(pts);
    std::vector<bool> marks(s.points.size(), false);
    for (size_t i = 0; i < s.points.size(); ++i)
        marks[i] = i % 2 == 0 ? rawMarks[i / 2] : rawMarks[i / 2] && rawMarks[i / 2 + 1];
    MarqueMax(chart, s, marks);
    chart.series.push_back(std::move(s));
}

void verticalLine(ChartData& chart, double x) {
    if (!std::isfinite(x)) return;
    ChartMarker m;
    m.kind = ChartMarker::Kind::VerticalLine;
    m.x = x;
    chart.markers.push_back(m);
}

std::optional<double> yLimit(const Sheet& s, Cell c) {
    const double v = field(s, c);
    if (std::isfinite(v) && v > 0) return v;
    return std::nullopt;
}

struct Curves {
    std::array<bool, 3> shown{};
    std::array<std::string, 3> caption;
    std::string language;

    std::string name(int curve) const { return caption[static_cast<size_t>(curve % 3)] + MassWords(language, curve < 3 ? 0 : 1); }
    Rgb colour(int curve) const { return kAirfoilColours[curve % 3]; }
    int style(int curve) const { return curve < 3 ? linestyle::Solid : linestyle::Dashed; }
    bool show(int curve) const { return shown[static_cast<size_t>(curve % 3)]; }
};

// The trace of the potential glide-ratio curves: "x;y;A;VMini" a point.
void writeTrace(const Workbench& wb, const std::string& text) {
    // A debugging aid: if the folder is not writable the calculation goes on
    // without it, and a half-written trace costs nothing. The file is written
    // over and then cut to its new length rather than emptied first: ext4
    // pushes a file emptied and rewritten to the disk at close, which cost a
    // few milliseconds at each slider move.
    const int fd = ::open((wb.home() / "verif.txt").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return;
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n <= 0) break;
        done += static_cast<size_t>(n);
    }
    if (::ftruncate(fd, static_cast<off_t>(done)) != 0) {
        // Nothing to do: the trace is only informative.
    }
    ::close(fd);
}

void runVariant(Workbench& wb, bool analytic) {
    const Sheet& s = wb.sheet;
    const AspectInputs in = ReadAspectInputs(wb, analytic);
    AspectRatioState st;
    st.analytic = analytic;

    Curves curves;
    curves.language = wb.settings.languageCode;
    for (int i = 0; i < 3; ++i) {
        curves.caption[static_cast<size_t>(i)] = s.text(F_PROFILS::CB_1[i]);
        // A slot without an airfoil has nothing to show.
        curves.shown[static_cast<size_t>(i)] = s.on(F_ALLONGEMENT::Check2[i]) && !s.text(F_PROFILS::CB_1[i]).empty();
    }

    forEachFlightCz(analytic, [&](double cz) {
        CzPoint p = BestOfSweep(cz, FinesseAllongement(in, cz));
        p.VMini = flightSpeed(in.loadMini, cz) * 3.6;
        p.VMaxi = flightSpeed(in.loadMaxi, cz) * 3.6;
        for (double v : {p.VMini, p.VMaxi})
            if (std::isfinite(v)) st.maxSpeed = std::max(st.maxSpeed, v);
        st.czRows.push_back(p);
    });
    st.chosenRows = FinesseCzChoisi(in);
    st.turnRows = FinesseVirage(in);

    // The designer's design Cz, and the chosen aspect ratio on the turn chart.
    const double czMark = field(s, F_GEO_SF_REGLAGES::F29);
    auto& ch = st.charts;

    ch[0].title = "Vitesse de Vol (km/h) / Cz Aile";
    ch[0].yMax = yLimit(s, F_ALLONGEMENT::T_MAX_G1);
    if (!ch[0].yMax && st.maxSpeed > 0) ch[0].yMax = st.maxSpeed;
    {
        std::vector<RawPoint> mini, maxi;
        for (const CzPoint& p : st.czRows) {
            mini.push_back({p.Cz, p.VMini});
            maxi.push_back({p.Cz, p.VMaxi});
        }
        plotCurve(ch[0], 0, "VMini", kAirfoilColours[0], linestyle::Solid, mini);
        plotCurve(ch[0], 1, "VMaxi", kAirfoilColours[0], linestyle::Dashed, maxi);
    }

    ch[1].title = "Finesse Aile (à allongement choisi) / Cz Aile";
    ch[1].yMax = yLimit(s, F_ALLONGEMENT::T_MAX_G2);
    ch[2].title = "Allongement optimal / Cz Aile";
    ch[2].yMax = yLimit(s, F_ALLONGEMENT::T_MAX_G3);
    ch[3].title = "Potentiel Finesse max Aile / Cz Aile";
    ch[3].yMax = yLimit(s, F_ALLONGEMENT::T_MAX_G5);
    ch[4].title = "Finesse Aile en virage serré / Allongement";

    std::string trace;
    for (int c = 0; c < kAspectCurves; ++c) {
        if (!curves.show(c)) continue;
        const auto k = static_cast<size_t>(c);
        std::vector<RawPoint> chosen, optimalA, best, turn;
        for (const AllongementPoint& r : st.chosenRows) chosen.push_back({r.CzMini, r.finesse(c)});
        for (const CzPoint& p : st.czRows) {
            optimalA.push_back({p.Cz, p.A[k], !p.unbounded});
            best.push_back({p.Cz, p.Finesse[k]});
            const double values[4] = {p.Cz, p.Finesse[k], p.A[k], p.SourceVMini[k]};
            if (std::all_of(std::begin(values), std::end(values), [](double v) { return std::isfinite(v); }))
                trace += plain(values[0]) + ";" + plain(values[1]) + ";" + plain(values[2]) + ";" +
                         plain(values[3]) + "\n";
        }
        for (const AllongementPoint& r : st.turnRows) turn.push_back({r.A, r.finesse(c)});
        plotCurve(ch[1], c, curves.name(c), curves.colour(c), curves.style(c), chosen);
        plotCurve(ch[2], c, curves.name(c), curves.colour(c), curves.style(c), optimalA);
        plotCurve(ch[3], c, curves.name(c), curves.colour(c), curves.style(c), best);
        plotCurve(ch[4], c, curves.name(c), curves.colour(c), curves.style(c), turn);
    }
    for (int i = 0; i < 4; ++i) verticalLine(ch[static_cast<size_t>(i)], czMark);
    verticalLine(ch[4], in.chosenA);
    for (ChartData& c : ch) c.dropNonFinite();

    wb.aspectRatio = std::move(st);
    writeTrace(wb, trace);
}

}  // namespace

AspectRange AspectRatioRange(double cz) {
    // By the index of the flight Cz in tenths, so that a Cz reached by adding
    // 0.1 in floating point finds its row.
    static constexpr AspectRange kByTenth[10] = {{1, 14}, {2, 22}, {2, 25}, {3, 35}, {4, 35},
                                                 {5, 35}, {6, 35}, {7, 35}, {8, 35}, {9, 35}};
    if (!std::isfinite(cz)) return {};
    const double tenths = std::round(cz * 10);
    if (std::fabs(cz * 10 - tenths) > 1e-6 || tenths < 1 || tenths > 10) return {};
    return kByTenth[static_cast<int>(tenths) - 1];
}

double StallOnset(double czDecroch) {
    if (czDecroch >= 0.1 && czDecroch <= 1.25) return czDecroch - 0.05;
    return 1.25;
}

double AnalyticCx(const AnalyticPolar& p, double czProfil, double re) {
    if (!std::isfinite(re) || re <= 0 || !std::isfinite(czProfil)) return kNaN;
    const double czD = StallOnset(p.CzDecroch);
    const double beyond = czProfil - czD;
    // Truncation makes the penalty 0 below the stall onset and lets it count
    // once, twice... for each unit of Cz above it.
    if (!(std::fabs(beyond) < 1e9)) return kNaN;
    const double steps = IntPart(beyond + 1);
    const double parabola = p.Cx0 + p.k * (czProfil - p.Cz0) * (czProfil - p.Cz0);
    const double cx = parabola * (1 + std::pow(4 * beyond, 3) * steps) * std::sqrt(200000 / re);
    return std::isfinite(cx) ? cx : kNaN;
}

double InterpolateRe(double at200, double at1500, double re) {
    return ((at1500 - at200) * (re / 1000 - 1500)) / 1300 + at1500;
}

AnalyticPolar PolarAtReynolds(const AnalyticPolar& at200, const AnalyticPolar& at1500, double re) {
    return {InterpolateRe(at200.Cx0, at1500.Cx0, re), InterpolateRe(at200.Cz0, at1500.Cz0, re),
            InterpolateRe(at200.k, at1500.k, re), at200.CzDecroch};
}

AspectInputs ReadAspectInputs(const Workbench& wb, bool analytic) {
    const Sheet& s = wb.sheet;
    AspectInputs in;
    in.polars = &wb.polars;
    in.analytic = analytic;
    for (int i = 0; i < 3; ++i) {
        const auto k = static_cast<size_t>(i);
        in.at200[k] = {field(s, F_PROFILS::T_CXMin[i]), field(s, F_PROFILS::T_CzOpt[i]), field(s, F_PROFILS::T_k[i]),
                       field(s, F_PROFILS::T_Cz_Decroch[i])};
        // The high end of the Reynolds interpolation is the slot's 1500000
        // polar; without one, the figures of the window hold at every Re.
        const PolarRecord& r = wb.polars.Polars[k][kReynoldsCount - 1];
        in.at1500[k] = r.LastRow > 0 ? AnalyticPolar{r.Cxmin, r.Czopt, r.k, in.at200[k].CzDecroch} : in.at200[k];
    }
    in.area = field(s, F_ALLONGEMENT::B4);
    in.loadMini = field(s, F_ALLONGEMENT::b6);
    in.loadMaxi = field(s, F_ALLONGEMENT::c6);
    in.chosenA = field(s, F_ALLONGEMENT::B10);
    in.turnSpeed = field(s, F_ALLONGEMENT::b15);
    in.turnCz = field(s, F_ALLONGEMENT::b16);
    return in;
}

std::vector<AllongementPoint> FinesseAllongement(const AspectInputs& in, double cz) {
    const AspectRange range = AspectRatioRange(cz);
    std::vector<AllongementPoint> rows;
    rows.reserve(static_cast<size_t>(range.last - range.first + 1));
    for (int a = range.first; a <= range.last; ++a) {
        AllongementPoint p;
        p.A = a;
        p.Corde = meanChord(in.area, p.A);
        p.CzProfil = cz * (p.A + 2) / p.A;
        fillMass(in, p, cz, in.loadMini, true, true, miniColumns(p));
        fillMass(in, p, cz, in.loadMaxi, true, true, maxiColumns(p));
        carry(p, cz);
        rows.push_back(p);
    }
    return rows;
}

CzPoint BestOfSweep(double cz, const std::vector<AllongementPoint>& rows) {
    CzPoint p;
    p.Cz = cz;
    p.Finesse.fill(kNaN);
    p.A.fill(kNaN);
    p.SourceVMini.fill(kNaN);
    for (int c = 0; c < kAspectCurves; ++c) {
        const auto k = static_cast<size_t>(c);
        double best = 0;
        bool found = false;
        for (const AllongementPoint& r : rows) {
            const double f = r.finesse(c);
            if (!std::isfinite(f)) continue;
            const double rounded = roundHalfAway(f, 7);
            if (found && rounded < best) continue;
            best = rounded;
            found = true;
            p.Finesse[k] = f;
            p.A[k] = r.A;
            p.SourceVMini[k] = r.VMini;
        }
    }
    p.unbounded = p.A[0] > kUnboundedA;
    return p;
}

std::vector<AllongementPoint> FinesseCzChoisi(const AspectInputs& in) {
    std::vector<AllongementPoint> rows;
    rows.reserve(kFlightCzCount);
    const double a = in.chosenA > 0 ? in.chosenA : kNaN;
    forEachFlightCz(in.analytic, [&](double cz) {
        AllongementPoint p;
        p.A = a;
        p.Corde = meanChord(in.area, a);
        p.CzProfil = cz * (2 / a + 1);
        fillMass(in, p, cz, in.loadMini, false, false, miniColumns(p));
        fillMass(in, p, cz, in.loadMaxi, false, false, maxiColumns(p));
        carry(p, cz);
        rows.push_back(p);
    });
    return rows;
}

std::vector<AllongementPoint> FinesseVirage(const AspectInputs& in) {
    std::vector<AllongementPoint> rows;
    rows.reserve(kTurnLastA - kTurnFirstA + 1);
    const double cz = in.turnCz;
    for (int a = kTurnFirstA; a <= kTurnLastA; ++a) {
        AllongementPoint p;
        p.A = a;
        p.Corde = meanChord(in.area, p.A);
        p.CzProfil = cz * (1 + 2 / p.A);
        p.VMini = in.turnSpeed / 3.6;
        p.ReMini = reynolds(p.VMini, p.Corde);
        p.CxInduitMini = quotient(cz * cz, PiValue() * p.A);
        for (int i = 0; i < 3; ++i) {
            const auto k = static_cast<size_t>(i);
            p.CxMini[k] = profileDrag(in, i, p.CzProfil, p.ReMini, true);
            p.FinesseMini[k] = quotient(cz, p.CxInduitMini + p.CxMini[k]);
        }
        p.VMaxi = p.VMini;
        p.ReMaxi = p.ReMini;
        p.CxMaxi = p.CxMini;
        p.CxInduitMaxi = p.CxInduitMini;
        p.FinesseMaxi = p.FinesseMini;
        carry(p, cz);
        rows.push_back(p);
    }
    return rows;
}

void CalculAllongementV222(Workbench& wb) { runVariant(wb, false); }
void CalculAllongementV223(Workbench& wb) { runVariant(wb, true); }

void MajAllongement(Workbench& wb) {
    Sheet& s = wb.sheet;
    using namespace F_ALLONGEMENT;
    for (int i = 0; i < 3; ++i) s.set(Label7[i], s.text(F_PROFILS::CB_1[i]));

    const double area = field(s, B4);
    const double massMini = field(s, b5), massMaxi = field(s, c5);
    put(s, b6, quotient(massMini, area), 2);
    put(s, c6, quotient(massMaxi, area), 2);

    // Span and root chord of an elliptical wing of that area and aspect ratio.
    const double a = field(s, B10);
    const double spanRaw = std::sqrt(a * area) * 100;
    const double span = std::isfinite(spanRaw) ? intPart(spanRaw) : kNaN;
    put(s, b11, span, 0);
    const double chordRaw = quotient(span * 1.27, a);
    put(s, b12, std::isfinite(chordRaw) ? intPart(chordRaw) : kNaN, 0);

    // The turn at Cz b16: radius where lift balances the centrifugal force,
    // the distance flown along the arc b17, and the load at speed b15.
    const double surface = area / 100;  // m²
    const double cz = field(s, b16), angle = field(s, b17), speed = field(s, b15) / 3.6;
    const std::pair<double, std::pair<Cell, Cell>> masses[2] = {{massMini, {b18, b19}}, {massMaxi, {c18, c19}}};
    for (const auto& [mass, cells] : masses) {
        const double radius = quotient(2 * (mass / 1000), cz * kSeaLevelDensity * surface);
        put(s, cells.first, radius, 1);
        put(s, cells.second, (2 * PiValue() * radius * angle) / 360, 1);
    }
    const double lift = (cz * kSeaLevelDensity * surface * speed * speed) / 2;
    put(s, b20, lift / 9.81, 1);

    if (s.on(Option1[0]))
        CalculAllongementV222(wb);
    else
        CalculAllongementV223(wb);
}

}  // namespace tarvokin

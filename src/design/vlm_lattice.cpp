// CalcVLM: the lifting-line lattice of the wing, one row of 40 horseshoes on
// the wing brought to four straight sections. The roundings are part of the
// results: the figures the program has always shown depend on them.
#include <algorithm>
#include <cmath>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "design/vlm.h"
#include "core/numbers.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr double kPow10[16] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

constexpr double kStripWidth = 0.05;

// Linear law between two breaks at |y|, the value of the inner one when the
// section has no length.
double between(double y0, double v0, double y1, double v1, double y) {
    const double span = y1 - y0;
    return span > 0 ? v0 + (v1 - v0) * (y - y0) / span : v0;
}

// Section holding |y|: a value on a break belongs to the inner section.
int sectionOf(const std::array<double, 5>& station, double absY) {
    for (int j = 0; j < 3; ++j)
        if (absY <= station[static_cast<size_t>(j) + 1]) return j;
    return 3;
}

// The point at fraction f of panel k (0-based), stations from the root.
VlmBreak pointOfPanel(const std::array<VlmPanel, 5>& p, int k, double f) {
    double start = 0;
    for (int m = 0; m < k; ++m) start += p[static_cast<size_t>(m)].length;
    const VlmPanel& q = p[static_cast<size_t>(k)];
    const double sweep0 = k > 0 ? p[static_cast<size_t>(k) - 1].sweep : 0;
    const double twist0 = k > 0 ? p[static_cast<size_t>(k) - 1].twist : 0;
    return {start + f * q.length, q.root + (q.tip - q.root) * f, sweep0 + (q.sweep - sweep0) * f,
            twist0 + (q.twist - twist0) * f};
}

VlmBreak meanOf(const VlmBreak& a, const VlmBreak& b) {
    return {(a.station + b.station) / 2, (a.chord + b.chord) / 2, (a.sweep + b.sweep) / 2, (a.twist + b.twist) / 2};
}

// LU decomposition in place (Crout, implicit row scaling, partial pivoting).
bool decompose(std::vector<double>& a, int n, std::vector<int>& index) {
    auto at = [&a, n](int i, int j) -> double& { return a[static_cast<size_t>(i * n + j)]; };
    std::vector<double> scale(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        double big = 0;
        for (int j = 0; j < n; ++j) {
            if (!std::isfinite(at(i, j))) return false;
            big = std::max(big, std::fabs(at(i, j)));
        }
        if (big == 0) return false;
        scale[static_cast<size_t>(i)] = 1 / big;
    }
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < j; ++i) {
            double sum = at(i, j);
            for (int k = 0; k < i; ++k) sum -= at(i, k) * at(k, j);
            at(i, j) = sum;
        }
        double big = -1;
        int imax = j;
        for (int i = j; i < n; ++i) {
            double sum = at(i, j);
            for (int k = 0; k < j; ++k) sum -= at(i, k) * at(k, j);
            at(i, j) = sum;
            const double figure = scale[static_cast<size_t>(i)] * std::fabs(sum);
            if (figure > big) {
                big = figure;
                imax = i;
            }
        }
        if (imax != j) {
            for (int k = 0; k < n; ++k) std::swap(at(imax, k), at(j, k));
            scale[static_cast<size_t>(imax)] = scale[static_cast<size_t>(j)];
        }
        index[static_cast<size_t>(j)] = imax;
        if (at(j, j) == 0 || !std::isfinite(at(j, j))) return false;
        const double inv = 1 / at(j, j);
        for (int i = j + 1; i < n; ++i) at(i, j) *= inv;
    }
    return true;
}

// Solves LU x = b in place for one right-hand side.
void substitute(const std::vector<double>& lu, int n, const std::vector<int>& index, double* b) {
    auto at = [&lu, n](int i, int j) { return lu[static_cast<size_t>(i * n + j)]; };
    int first = -1;
    for (int i = 0; i < n; ++i) {
        const int ip = index[static_cast<size_t>(i)];
        double sum = b[ip];
        b[ip] = b[i];
        if (first >= 0) {
            for (int j = first; j < i; ++j) sum -= at(i, j) * b[j];
        } else if (sum != 0) {
            first = i;
        }
        b[i] = sum;
    }
    for (int i = n - 1; i >= 0; --i) {
        double sum = b[i];
        for (int j = i + 1; j < n; ++j) sum -= at(i, j) * b[j];
        b[i] = sum / at(i, i);
    }
}

// What a run that cannot be made leaves: "-" and no tables.
void clearResults(Workbench& wb) {
    wb.vlm.VlmCl.clear();
    wb.vlm.VlmGamma.clear();
    wb.vlm.VlmEllipse.clear();
    wb.sheet.set(F_VLM::P25, "-");
    wb.sheet.set(F_VLM::S25, "-");
}

}  // namespace

double RoundTo(double x, int decimals) {
    if (decimals <= 10) return roundHalfAway(x, decimals);
    if (!std::isfinite(x) || decimals > 15) return x;
    const double p = kPow10[decimals];
    const double a = std::fabs(x) * p;
    if (a >= 9.0e15) return x;  // no room left for that many decimals
    const double r = std::floor(a + 0.5) / p;
    return x < 0 ? -r : r;
}

bool ReduceToSections(const std::array<VlmPanel, 5>& p, int n, VlmSections& out, double* halfSpanMm) {
    VlmSections s{};
    s[0] = {0, p[0].root, 0, 0};
    switch (n) {
        case 1:
            for (int b = 1; b <= 4; ++b) s[static_cast<size_t>(b)] = pointOfPanel(p, 0, b / 4.0);
            break;
        case 2:
            s[1] = pointOfPanel(p, 0, 1.0 / 3.0);
            s[2] = pointOfPanel(p, 0, 2.0 / 3.0);
            s[3] = pointOfPanel(p, 0, 1);
            s[4] = pointOfPanel(p, 1, 1);
            break;
        case 3:
            s[1] = pointOfPanel(p, 0, 0.5);
            s[2] = pointOfPanel(p, 0, 1);
            s[3] = pointOfPanel(p, 1, 1);
            s[4] = pointOfPanel(p, 2, 1);
            break;
        case 4:
            for (int b = 1; b <= 4; ++b) s[static_cast<size_t>(b)] = pointOfPanel(p, b - 1, 1);
            break;
        case 5:
            // Five panels on four sections: the first two become one, ending
            // between their two tips.
            s[1] = meanOf(pointOfPanel(p, 0, 1), pointOfPanel(p, 1, 1));
            s[2] = pointOfPanel(p, 2, 1);
            s[3] = pointOfPanel(p, 3, 1);
            s[4] = pointOfPanel(p, 4, 1);
            break;
        default:
            return false;
    }
    const double half = s[4].station;
    if (!(half > 0) || !std::isfinite(half)) return false;
    for (VlmBreak& b : s) {
        b.station /= half;
        b.chord /= half;
        b.sweep = RoundTo(b.sweep / half, 9);
    }
    out = s;
    if (halfSpanMm) *halfSpanMm = half;
    return true;
}

std::array<double, kVlmStrips + 1> StripEdges() {
    std::array<double, kVlmStrips + 1> e{};
    double y = -1;
    for (double& v : e) {
        v = y;
        y = RoundTo(y + kStripWidth, 7);
    }
    return e;
}

std::array<double, kVlmStrips> ControlStations() {
    std::array<double, kVlmStrips> c{};
    double y = -1 + kStripWidth / 2;
    for (double& v : c) {
        v = y;
        y = RoundTo(y + kStripWidth, 7);
    }
    return c;
}

int ChordLaw::section(double absY) const { return sectionOf(station, absY); }

double ChordLaw::at(double absY) const {
    const size_t j = static_cast<size_t>(section(absY));
    return a[j] + b[j] * absY;
}

ChordLaw MakeChordLaw(const VlmSections& s) {
    ChordLaw law;
    for (size_t j = 0; j < 5; ++j) law.station[j] = s[j].station;
    for (size_t j = 0; j < 4; ++j) {
        const double span = s[j + 1].station - s[j].station;
        double b = span > 0 ? (s[j + 1].chord - s[j].chord) / span : 0;
        if (j < 3) b = RoundTo(b, 3);  // the tip section keeps its slope whole
        law.b[j] = b;
        law.a[j] = s[j].chord - b * s[j].station;
    }
    return law;
}

double SweepAt(const VlmSections& s, double absY) {
    std::array<double, 5> st{};
    for (size_t j = 0; j < 5; ++j) st[j] = s[j].station;
    const size_t j = static_cast<size_t>(sectionOf(st, absY));
    return between(s[j].station, s[j].sweep, s[j + 1].station, s[j + 1].sweep, absY);
}

double InfluenceCoefficient(double x, double y, double x1, double y1, double x2, double y2) {
    const double dx = x2 - x1, dy = y2 - y1;
    const double a = x - x1, b = y - y1, c = x - x2, d = y - y2;
    const double r1 = std::sqrt(a * a + b * b), r2 = std::sqrt(c * c + d * d);
    // A control point on the bound vortex's line or on a trailing leg gets
    // nothing from that part: the stations never lie there on a real wing,
    // only a degenerate one (zero chord, zero strip) can put them there.
    const double cross = a * d - c * b;
    double t1 = 0, t2 = 0, t3 = 0;
    if (cross != 0 && r1 > 0 && r2 > 0) t1 = (1 / cross) * ((dx * a + dy * b) / r1 - (dx * c + dy * d) / r2);
    if (b != 0 && r1 > 0) t2 = (-1 / b) * (1 + a / r1);
    if (d != 0 && r2 > 0) t3 = (1 / d) * (1 + c / r2);
    const double sum = RoundTo(RoundTo(t1, 4) + RoundTo(t2, 4) + RoundTo(t3, 15), 15);
    return RoundTo(sum * kOneOverFourPi, 15);
}

bool InvertMatrix(const std::vector<double>& a, int n, std::vector<double>& inverse) {
    if (n <= 0 || a.size() != static_cast<size_t>(n) * static_cast<size_t>(n)) return false;
    std::vector<double> lu = a;
    std::vector<int> index(static_cast<size_t>(n));
    if (!decompose(lu, n, index)) return false;
    std::vector<double> out(a.size());
    std::vector<double> column(static_cast<size_t>(n));
    for (int j = 0; j < n; ++j) {
        std::fill(column.begin(), column.end(), 0.0);
        column[static_cast<size_t>(j)] = 1;
        substitute(lu, n, index, column.data());
        for (int i = 0; i < n; ++i)
            out[static_cast<size_t>(i * n + j)] = RoundTo(column[static_cast<size_t>(i)], 15);
    }
    inverse = std::move(out);
    return true;
}

bool CalcVLM(Workbench& wb) {
    Sheet& s = wb.sheet;
    std::array<VlmPanel, 5> panels{};
    for (size_t k = 0; k < 5; ++k) {
        panels[k] = {s.val(grid::kRoot[k]), s.val(grid::kTip[k]), s.val(grid::kLength[k]), s.val(grid::kSweep[k]),
                     s.val(grid::kTwist[k])};
    }
    VlmSections sec{};
    double half = 0;  // mm
    if (!ReduceToSections(panels, CountFilledPanels(s), sec, &half)) {
        clearResults(wb);
        return false;
    }
    const auto edges = StripEdges();
    const auto stations = ControlStations();
    const ChordLaw law = MakeChordLaw(sec);

    // Chordwise positions run positive forward from the root leading edge,
    // the bound vortex at three quarters of the chord and the control point
    // at one quarter. The influence formula takes its trailing legs towards
    // +x, so the control point sits half a chord behind its vortex in the
    // formula's frame: the three-quarter-chord rule, with the sweep mirrored.
    std::array<double, kVlmStrips + 1> xe{};
    std::array<double, kVlmStrips + 1> edgeChord{};
    for (size_t k = 0; k < edges.size(); ++k) {
        const double absY = std::fabs(edges[k]);
        edgeChord[k] = law.at(absY);
        xe[k] = RoundTo(-0.75 * edgeChord[k] - SweepAt(sec, absY), 4);
    }
    std::array<double, kVlmStrips> xc{}, chord{};
    for (size_t i = 0; i < stations.size(); ++i) {
        chord[i] = RoundTo((edgeChord[i] + edgeChord[i + 1]) / 2, 15);
        xc[i] = RoundTo(-0.25 * chord[i] - SweepAt(sec, std::fabs(stations[i])), 15);
    }

    constexpr int n = kVlmStrips;
    std::vector<double> a(static_cast<size_t>(n * n));
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            a[static_cast<size_t>(i * n + j)] =
                InfluenceCoefficient(xc[static_cast<size_t>(i)], stations[static_cast<size_t>(i)],
                                     xe[static_cast<size_t>(j)], edges[static_cast<size_t>(j)],
                                     xe[static_cast<size_t>(j) + 1], edges[static_cast<size_t>(j) + 1]);
        }
    }
    std::vector<double> inv;
    if (!InvertMatrix(a, n, inv)) {
        if (wb.beep) wb.beep();
        return false;
    }

    // Incidence: the root's angle above zero lift, each break adding its
    // twist, linear in between.
    const double root = RoundTo((s.val(F_VLM::N25) - s.val(F_GEO_SF::j12)) / kVlmDegreesPerRadian, 6);
    std::array<double, 5> breakAlpha{};
    for (size_t b = 0; b < 5; ++b) breakAlpha[b] = root + RoundTo(sec[b].twist / kVlmDegreesPerRadian, 7);
    std::array<double, kVlmStrips> alpha{};
    for (size_t i = 0; i < stations.size(); ++i) {
        const double absY = std::fabs(stations[i]);
        const size_t j = static_cast<size_t>(law.section(absY));
        alpha[i] = RoundTo(between(sec[j].station, breakAlpha[j], sec[j + 1].station, breakAlpha[j + 1], absY), 8);
    }

    std::array<double, kVlmStrips> gamma{}, cl{};
    double sumGamma = 0, sumClChord = 0, sumChord = 0, maxCl = -1e300;
    for (int i = 0; i < n; ++i) {
        double g = 0;
        for (int j = 0; j < n; ++j) g += inv[static_cast<size_t>(i * n + j)] * -alpha[static_cast<size_t>(j)];
        const size_t u = static_cast<size_t>(i);
        gamma[u] = RoundTo(g, 4);
        cl[u] = chord[u] != 0 ? 2 * gamma[u] / chord[u] : 0;
        sumGamma += gamma[u];
        sumClChord += cl[u] * chord[u];
        sumChord += chord[u];
        maxCl = std::max(maxCl, cl[u]);
    }

    VlmState& v = wb.vlm;
    v.halfSpanMm = half;
    v.VlmCl.assign(n, {});
    v.VlmGamma.assign(n, {});
    v.VlmEllipse.assign(n, {});
    for (size_t i = 0; i < stations.size(); ++i) {
        const double y = stations[i];
        const double ellipse = RoundTo(std::sqrt(std::max(0.0, 1 - y * y)) * (kEllipseFactor / 2) * sumGamma, 4);
        const double ymm = y * half;
        v.VlmCl[i] = {ymm, cl[i]};
        v.VlmGamma[i] = {ymm, gamma[i]};
        v.VlmEllipse[i] = {ymm, ellipse};
    }
    const double cz = sumChord != 0 ? sumClChord / sumChord : NAN;
    s.set(F_VLM::P25, fixedOrDash(cz, 7));
    // The ratio of mean to peak loading stands for the Oswald factor here.
    s.set(F_VLM::S25, cz > 0 && maxCl > 0 ? fixedOrDash(cz / maxCl, 2) : "-");
    return true;
}

}  // namespace tarvokin

// Thickness forms of the NACA families: the four-digit and modified
// four-digit equations, and the 6 and 6A tables.
#include <cmath>
#include <algorithm>
#include <iterator>
#include <map>
#include <mutex>
#include <string>

#include "airfoils/naca6_tables.h"
#include "airfoils/naca_generator.h"
#include "core/numbers.h"

namespace tarvokin {

double NacaFourThickness(double x, double t) {
    // The form with 1.4845 (leading-edge radius 1.1019 t²), i.e. the usual
    // 0.2969 form divided by 0.2: t is the thickness ratio, not half of it.
    const double s = std::sqrt(x);
    return t * (1.4845 * s - 0.63 * x - 1.758 * x * x + 1.4215 * x * x * x - 0.5075 * x * x * x * x);
}

double NacaModifiedThickness(double x, double t, double I, double m) {
    const double d1 = (2.24 - 5.42 * m + 12.3 * m * m) / (10 * (1 - 0.878 * m));
    const double d2 = (0.294 - 2 * (1 - m) * d1) / ((1 - m) * (1 - m));
    const double d3 = (-0.196 + (1 - m) * d1) / ((1 - m) * (1 - m) * (1 - m));
    const double a0 = 0.296904 * I / 6;
    // Radius of curvature at m, from the curvature of the rear part there
    // (2 d2 + 6 d3 (1 - m)): with it both parts meet with the same
    // curvature and the largest thickness stays at m. Written without the
    // (1 - m) factor of d1 the front part overshoots (a 16-series section
    // would be thickest near 30 % instead of 50 %).
    const double rho1 = 0.2 * (1 - m) * (1 - m) / (0.588 - 2 * d1 * (1 - m));
    const double a1 = 0.3 / m - 15 * a0 / (8 * std::sqrt(m)) - m / (10 * rho1);
    const double a2 = -0.3 / (m * m) + 5 * a0 / (4 * std::pow(m, 1.5)) + 1 / (5 * rho1);
    const double a3 = 0.1 / (m * m * m) - 0.375 * a0 / std::pow(m, 2.5) - 1 / (10 * rho1 * m);
    if (x < m) return 5 * t * (a0 * std::sqrt(x) + a1 * x + a2 * x * x + a3 * x * x * x);
    const double u = 1 - x;
    return 5 * t * (0.002 + d1 * u + d2 * u * u + d3 * u * u * u);
}

namespace {

// Numbers of a table text: cut at each ",", "#" behind whole numbers cut
// off, each rounded to 7 decimals.
std::vector<double> parseTable(const char* text) {
    std::vector<double> out;
    std::string s(text);
    size_t start = 0;
    while (start <= s.size()) {
        size_t comma = s.find(',', start);
        if (comma == std::string::npos) comma = s.size();
        std::string item = s.substr(start, comma - start);
        if (auto hash = item.find('#'); hash != std::string::npos) item.erase(hash);
        double v = 0;
        if (tryNumber(item, v)) out.push_back(roundHalfAway(v, 7));
        start = comma + 1;
    }
    return out;
}

struct Naca6Tables {
    std::vector<double> stations;  // chord fraction
    // series -> thickness (per cent) -> half thickness at each station (chord fraction)
    std::map<std::string, std::map<int, std::vector<double>>> forms;
};

const Naca6Tables& tables() {
    static const Naca6Tables t = [] {
        Naca6Tables r;
        for (double x : parseTable(naca6Stations())) r.stations.push_back(x / 100);
        for (const Naca6TableText& row : naca6TableTexts()) {
            std::vector<double> y = parseTable(row.ordinates);
            for (double& v : y) v /= 100;
            if (y.size() == r.stations.size()) r.forms[row.series][row.thickness] = std::move(y);
        }
        return r;
    }();
    return t;
}

// Natural cubic spline through (s_i, y_i): the second derivatives.
std::vector<double> splineSecond(const std::vector<double>& s, const std::vector<double>& y) {
    const size_t n = s.size();
    std::vector<double> m(n, 0.0), u(n, 0.0);
    for (size_t i = 1; i + 1 < n; ++i) {
        const double sig = (s[i] - s[i - 1]) / (s[i + 1] - s[i - 1]);
        const double p = sig * m[i - 1] + 2;
        m[i] = (sig - 1) / p;
        const double d = (y[i + 1] - y[i]) / (s[i + 1] - s[i]) - (y[i] - y[i - 1]) / (s[i] - s[i - 1]);
        u[i] = (6 * d / (s[i + 1] - s[i - 1]) - sig * u[i - 1]) / p;
    }
    m[n - 1] = 0;
    for (size_t k = n - 1; k-- > 0;) m[k] = m[k] * m[k + 1] + u[k];
    return m;
}

double splineAt(const std::vector<double>& s, const std::vector<double>& y, const std::vector<double>& m, double v) {
    size_t lo = 0, hi = s.size() - 1;
    while (hi - lo > 1) {
        const size_t mid = (lo + hi) / 2;
        (s[mid] > v ? hi : lo) = mid;
    }
    const double h = s[hi] - s[lo];
    const double a = (s[hi] - v) / h, b = (v - s[lo]) / h;
    return a * y[lo] + b * y[hi] + ((a * a * a - a) * m[lo] + (b * b * b - b) * m[hi]) * h * h / 6;
}

}  // namespace

bool Naca6Thickness(const std::string& series, double thicknessPercent, const std::vector<double>& x,
                    std::vector<double>& halfThickness, std::string& error) {
    const Naca6Tables& t = tables();
    auto it = t.forms.find(series);
    if (it == t.forms.end()) {
        error = "Pas de table d'épaisseur pour la série " + series;
        return false;
    }
    const auto& forms = it->second;
    const int low = forms.begin()->first, high = forms.rbegin()->first;
    if (!(thicknessPercent >= low && thicknessPercent <= high)) {
        error = "Épaisseur " + plain(thicknessPercent) + " % hors des tables de la série " + series + " (" +
                std::to_string(low) + " à " + std::to_string(high) + " %)";
        return false;
    }
    // Between two tabulated thicknesses of a series the ordinates are taken
    // linearly in the thickness, station by station: the basic forms of a
    // series are nearly proportional to their thickness.
    auto above = forms.lower_bound(static_cast<int>(std::ceil(thicknessPercent)));
    std::vector<double> y = above->second;
    if (above->first != thicknessPercent) {
        auto below = std::prev(above);
        const double w = (thicknessPercent - below->first) / (above->first - below->first);
        for (size_t i = 0; i < y.size(); ++i) y[i] = below->second[i] + w * (above->second[i] - below->second[i]);
    }
    // Between stations: a natural cubic spline in sqrt(x), in which the
    // rounded nose (y growing as sqrt x) is a smooth curve.
    std::vector<double> s(t.stations.size());
    for (size_t i = 0; i < s.size(); ++i) s[i] = std::sqrt(t.stations[i]);
    const std::vector<double> m = splineSecond(s, y);
    halfThickness.resize(x.size());
    for (size_t i = 0; i < x.size(); ++i) {
        const double xi = std::clamp(x[i], 0.0, 1.0);
        halfThickness[i] = std::max(0.0, splineAt(s, y, m, std::sqrt(xi)));
    }
    return true;
}

}  // namespace tarvokin

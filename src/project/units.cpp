#include "project/units.h"

#include <cmath>
#include <cstdio>

namespace tarvokin {

namespace {
constexpr double kInch = 0.0254, kFoot = 0.3048, kOunce = 0.028349523125, kPound = 0.45359237;
}

const std::vector<Quantity>& Quantities() {
    static const std::vector<Quantity> q = {
        {"Longueur", {{"mm", 0.001}, {"cm", 0.01}, {"m", 1}, {"in", kInch}, {"ft", kFoot}}},
        {"Surface", {{"dm²", 0.01}, {"m²", 1}, {"in²", kInch * kInch}, {"ft²", kFoot * kFoot}}},
        {"Masse", {{"g", 0.001}, {"kg", 1}, {"oz", kOunce}, {"lb", kPound}}},
        {"Vitesse", {{"km/h", 1 / 3.6}, {"m/s", 1}, {"mph", 1609.344 / 3600}, {"kn", 1852.0 / 3600}}},
        // Loadings in kg/m²: 1 g/dm² is 0.1 kg/m².
        {"Charge alaire", {{"g/dm²", 0.1}, {"kg/m²", 1}, {"oz/ft²", kOunce / (kFoot * kFoot)}}},
        // Mechanical horsepower (550 ft.lbf/s) and the metric "cheval".
        {"Puissance", {{"W", 1}, {"kW", 1000}, {"hp", 745.69987158227022}, {"ch", 735.49875}}},
    };
    return q;
}

bool ConvertUnits(int quantity, int from, int to, double value, double& out) {
    const auto& q = Quantities();
    if (quantity < 0 || quantity >= static_cast<int>(q.size()) || !std::isfinite(value)) return false;
    const auto& u = q[static_cast<size_t>(quantity)].units;
    const int n = static_cast<int>(u.size());
    if (from < 0 || from >= n || to < 0 || to >= n) return false;
    out = value * u[static_cast<size_t>(from)].toSi / u[static_cast<size_t>(to)].toSi;
    return std::isfinite(out);
}

std::string ConversionText(double v) {
    char buf[64];
    if (v != 0 && (std::fabs(v) >= 1e9 || std::fabs(v) < 1e-4)) std::snprintf(buf, sizeof buf, "%.6g", v);
    else {
        const int whole = v == 0 ? 1 : static_cast<int>(std::floor(std::log10(std::fabs(v)))) + 1;
        std::snprintf(buf, sizeof buf, "%.*f", std::max(0, 6 - whole), v);
        std::string s = buf;
        if (s.find('.') != std::string::npos) {
            while (s.back() == '0') s.pop_back();
            if (s.back() == '.') s.pop_back();
        }
        if (s == "-0") s = "0";
        return s;
    }
    return buf;
}

}  // namespace tarvokin

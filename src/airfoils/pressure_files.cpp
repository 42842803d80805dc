#include "airfoils/pressure_files.h"

#include <cmath>
#include <cstdlib>
#include <sstream>

#include "core/numbers.h"
#include "core/text_case.h"

namespace tarvokin {

const std::array<PressureQuantity, 10> kPressureQuantities = {{
    {"Hk", "H"},
    {"Top Dt", "DT"},
    {"Bot Dt", "DB"},
    {"Ue/V", "UE"},
    {"Cf", "CF"},
    {"Cd", "CD"},
    {"A/Ao", "N"},
    {"Ct", "CT"},
    {"Log10 Ret", "RTL"},
    {"Ret", "RT"},
}};

namespace {

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> out;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        std::string_view l = text.substr(start, end - start);
        if (!l.empty() && l.back() == '\r') l.remove_suffix(1);
        out.push_back(l);
        start = end + 1;
    }
    return out;
}

std::vector<std::string> fields(std::string_view line) {
    std::vector<std::string> out;
    std::istringstream in{std::string(line)};
    std::string f;
    while (in >> f) out.push_back(f);
    return out;
}

bool isNaNText(const std::string& f) {
    return f.find("NaN") != std::string::npos || f.find("nan") != std::string::npos;
}

// A field as a number; false for text, inf or nan, which never reach a chart.
bool number(const std::string& f, double& v) { return tryNumber(f, v) && std::isfinite(v); }

}  // namespace

PressureDistribution readPressureDistribution(std::string_view text, double Re) {
    PressureDistribution d;
    const std::vector<std::string_view> ls = lines(text);
    if (ls.empty()) return d;
    // DUMP names its first column s (arc length); CPWR starts with x.
    const std::vector<std::string> head = fields(ls[0]);
    d.viscous = head.size() > 2 && head[0] == "#" && head[1] == "s";
    std::vector<std::array<double, 12>> rows;
    for (size_t i = 1; i < ls.size(); ++i) {
        const std::string_view l = ls[i];
        const size_t lead = l.find_first_not_of(" \t");
        if (lead == std::string_view::npos || l[lead] == '#') continue;
        if (l.find("***") != std::string_view::npos) continue;
        const std::vector<std::string> f = fields(l);
        bool nan = false;
        for (const std::string& s : f) nan = nan || isNaNText(s);
        if (nan) break;
        if (d.viscous) {
            if (f.size() < 12) continue;  // a wake row
            std::array<double, 12> r{};
            bool ok = true;
            for (size_t k = 0; k < 12 && ok; ++k) ok = number(f[k], r[k]);
            if (ok) rows.push_back(r);
        } else {
            if (f.size() < 2) continue;
            double x = 0, cp = 0;
            if (!number(f[0], x) || !number(f[1], cp)) continue;
            d.cp.push_back({x, cp});
            d.speed.push_back({x, std::sqrt(std::max(0.0, 1.0 - cp))});
        }
    }
    if (d.viscous) {
        // The top surface runs from the trailing edge to the nose (the smallest x).
        size_t nose = 0;
        for (size_t k = 0; k < rows.size(); ++k)
            if (rows[k][1] < rows[nose][1]) nose = k;
        auto& H = d.quantities["H"];
        auto& DT = d.quantities["DT"];
        auto& DB = d.quantities["DB"];
        auto& UE = d.quantities["UE"];
        auto& CF = d.quantities["CF"];
        std::vector<ChartPoint> RT, RTL;
        for (size_t k = 0; k < rows.size(); ++k) {
            const auto& r = rows[k];
            const double x = r[1], ue = r[3];
            d.cp.push_back({x, 1.0 - ue * ue});
            d.speed.push_back({x, std::fabs(ue)});
            H.push_back({x, r[7]});
            (k <= nose ? DT : DB).push_back({x, r[4]});
            UE.push_back({x, ue});
            CF.push_back({x, r[6]});
            const double ret = Re * std::fabs(ue) * r[5];
            if (std::isfinite(ret) && Re > 0) {
                RT.push_back({x, ret});
                if (ret > 0) RTL.push_back({x, std::log10(ret)});
            }
        }
        if (!RT.empty()) d.quantities["RT"] = std::move(RT);
        if (!RTL.empty()) d.quantities["RTL"] = std::move(RTL);
    } else if (!d.speed.empty()) {
        d.quantities["UE"] = d.speed;
    }
    for (size_t k = 0; k < d.cp.size(); ++k) {
        const double cp = d.cp[k].y;
        if (k == 0 || cp > d.cpMax) d.cpMax = cp;
        if (k == 0 || cp < d.cpMin) d.cpMin = cp;
    }
    return d;
}

PressurePoint readPressurePolar(std::string_view text) {
    PressurePoint p;
    bool header = true;
    for (std::string_view l : lines(text)) {
        if (header) {
            const size_t at = l.find("Re =");
            if (at != std::string_view::npos) {
                std::string_view rest = l.substr(at + 4);
                const size_t e = rest.find('e');
                double mantissa = 0;
                if (tryNumber(trim(rest.substr(0, e)), mantissa) && std::isfinite(mantissa)) {
                    p.hasRe = true;
                    p.Re = mantissa * 1e6;
                }
            }
            if (l.find("------") != std::string_view::npos) header = false;
            continue;
        }
        if (l.find("***") != std::string_view::npos) continue;
        const std::vector<std::string> f = fields(l);
        if (f.size() < 5) continue;
        bool nan = false;
        for (const std::string& s : f) nan = nan || isNaNText(s);
        if (nan) break;
        double v[5];
        bool ok = true;
        for (int k = 0; k < 5 && ok; ++k) ok = number(f[static_cast<size_t>(k)], v[k]);
        if (!ok) continue;
        p.hasRow = true;
        p.alpha = v[0];
        p.cl = v[1];
        p.cd = v[2];
        p.cdp = v[3];
        p.cm = v[4];
    }
    return p;
}

}  // namespace tarvokin

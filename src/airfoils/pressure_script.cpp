#include "airfoils/pressure_script.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"

namespace tarvokin {

std::string cpmiValue(double cpMin) {
    if (!std::isfinite(cpMin)) return "0";
    const double v = -std::trunc(cpMin);
    if (v == 1.0) return "-2";
    return plain(v == 0.0 ? 0.0 : v);
}

std::vector<std::string> sequencePoints(double first, double last, double step) {
    std::vector<std::string> out;
    if (!std::isfinite(first) || !std::isfinite(last) || !std::isfinite(step)) return out;
    step = std::fabs(step);
    if (step == 0.0) {
        out.push_back(plain(first));
        return out;
    }
    const double signedStep = last >= first ? step : -step;
    const double span = std::fabs(last - first) / step;
    const int n = static_cast<int>(std::floor(span + 1e-9)) + 1;
    // Decimals enough for the start and the step (0.1 gives 1, 0.25 gives
    // 2): repeated additions would otherwise show their binary residue.
    auto decimalsOf = [](double v) {
        int d = 0;
        while (d < 6 && std::fabs(v * std::pow(10.0, d) - std::round(v * std::pow(10.0, d))) > 1e-9) ++d;
        return d;
    };
    const int decimals = std::max(decimalsOf(first), decimalsOf(step));
    for (int k = 0; k < n && k < kMaxSequencePoints; ++k) {
        std::string t = fixed(first + k * signedStep, decimals);
        if (t.find('.') != std::string::npos) {
            while (t.back() == '0') t.pop_back();
            if (t.back() == '.') t.pop_back();
        }
        if (t == "-0") t = "0";
        out.push_back(t);
    }
    return out;
}

std::string pressureKeyText(const PressureRequest& r) {
    std::string t;
    auto line = [&t](const std::string& s) { t += s + "\n"; };
    const std::string point = (r.byCl ? "cl " : "alfa ") + r.point;
    line("plop");
    line("W 0.01");
    line("");
    line("Load " + r.outline);
    line("gdes");
    line("name aaa");
    line("");
    line("Pane");
    line("");
    line("oper");
    line("RE " + r.Re);
    line("Type");
    line(std::to_string(r.reType));
    line("iter");
    line(std::to_string(r.iterations));
    line(point);
    if (r.viscous) {
        line("RE " + r.viscousRe);
        line("visc");
        line(point);
        line("Cpmn");
        line("Cpmi " + cpmiValue(r.cpMin));
        line("Cpx");
    }
    line("PACC");
    line(r.polarFile);
    line("");
    for (const std::string& v : r.sequence) line((r.byCl ? "cl " : "alfa ") + v);
    line((r.viscous ? "dump " : "cpwr ") + r.cpFile);
    line("");
    line("Quit");
    return t;
}

}  // namespace tarvokin

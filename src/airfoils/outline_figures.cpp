// Thickness and camber of the current outline, from its two surfaces.
#include <cmath>

#include "airfoils/outline.h"
#include "core/numbers.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

std::string figure(double v) { return std::isfinite(v) ? fixed(v, 2) : "-"; }

}  // namespace

std::string Get_Thickness(Workbench& wb, std::string& position) {
    const OutlinePoints& o = wb.outlines.Outline;
    OutlinePoints opp;
    position = "-";
    if (o.empty() || !Split_Surfaces(wb, opp)) return "-";
    double best = 0.0, at = 0.0;
    for (size_t i = 0; i < o.size(); ++i) {
        const double t = std::fabs(o[i].y - opp[i].y);
        if (t > best) {  // the first of equal values wins
            best = t;
            at = o[i].x;
        }
    }
    position = figure(100.0 * at);
    return figure(100.0 * best);
}

std::string Get_Camber(Workbench& wb, std::string& position) {
    const OutlinePoints& o = wb.outlines.Outline;
    OutlinePoints& line = wb.outlines.CamberLine;
    OutlinePoints opp;
    line.clear();
    position = "-";
    if (o.empty() || !Split_Surfaces(wb, opp)) return "-";
    // The camber is the highest point of the mean line above the chord; a
    // mean line that is nowhere above it gives 0 at 0.
    double best = 0.0, at = 0.0;
    for (size_t i = 1; i + 1 < o.size(); ++i) {
        const double m = (o[i].y + opp[i].y) / 2.0;
        if (m > best) {
            best = m;
            at = o[i].x;
        }
    }
    const size_t nose = Find_Nose(o);
    for (size_t i = 0; i <= nose; ++i) line.push_back({o[i].x, o[i].y + (opp[i].y - o[i].y) / 2.0});
    position = figure(100.0 * at);
    return figure(100.0 * best);
}

}  // namespace tarvokin

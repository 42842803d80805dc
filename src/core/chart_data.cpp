#include "core/chart_data.h"

#include <algorithm>
#include <cmath>

namespace tarvokin {

void ChartData::dropNonFinite() {
    for (auto& s : series)
        std::erase_if(s.points, [](const ChartPoint& p) { return !std::isfinite(p.x) || !std::isfinite(p.y); });
    std::erase_if(series, [](const ChartSeries& s) { return s.points.empty(); });
    std::erase_if(markers, [](const ChartMarker& m) { return !std::isfinite(m.x) || !std::isfinite(m.y); });
}

std::vector<ChartPoint> Smooth_Curve(const std::vector<ChartPoint>& in) {
    if (in.size() < 2) return in;
    std::vector<ChartPoint> out(2 * in.size() - 1);
    for (size_t i = 0; i < in.size(); ++i) out[2 * i] = in[i];
    for (size_t i = 1; i < out.size(); i += 2)
        out[i] = {(out[i - 1].x + out[i + 1].x) / 2, (out[i - 1].y + out[i + 1].y) / 2};
    // Each inner original point is pulled towards its two midpoints; midpoints
    // are not touched, so the order of the updates does not matter.
    for (size_t i = 2; i + 1 < out.size(); i += 2) {
        out[i].x = out[i].x * (1 - 0.5) + (0.5 / 2) * (out[i - 1].x + out[i + 1].x);
        out[i].y = out[i].y * (1 - 0.5) + (0.5 / 2) * (out[i - 1].y + out[i + 1].y);
    }
    return out;
}

}  // namespace tarvokin

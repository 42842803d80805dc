// Changing the camber or the thickness of the current outline. Both work on
// the pair (own surface, opposite surface) at each x, so the figure that is
// not edited stays where it was at every station.
#include <cmath>

#include "airfoils/outline.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

// The ratio of the new figure to the old one, or false when there is none.
bool ratioOf(double newValue, double oldValue, double& ratio) {
    if (oldValue == 0.0) return false;
    ratio = newValue / oldValue;
    return std::isfinite(ratio);
}

// The edited outline closes onto its first point, but a trailing edge that
// was left open keeps its own lower corner.
void closeKeepingLastY(OutlinePoints& o, double formerLastY) {
    o.back() = o.front();
    if (o.back().y != formerLastY) o.back().y = formerLastY;
}

bool allFinite(const OutlinePoints& o) {
    for (const OutlinePoint& p : o) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return false;
    }
    return true;
}

}  // namespace

bool Edit_Camber(Workbench& wb, double newCamber, double oldCamber) {
    OutlinePoints& o = wb.outlines.Outline;
    double ratio = 0.0;
    if (o.size() < 3 || !ratioOf(newCamber, oldCamber, ratio)) return false;
    const OutlinePoints before = o;
    const double formerLastY = o.back().y;
    if (o.back().y != o.front().y) o.back().y = o.front().y;

    OutlinePoints opp;
    if (!Split_Surfaces(wb, opp)) {
        o = before;
        return false;
    }
    // Shifting a point and its opposite by the same amount moves the mean
    // line and leaves the thickness at that x alone.
    for (size_t i = 0; i < o.size(); ++i) {
        const double m = (o[i].y + opp[i].y) / 2.0;
        o[i].y -= m - ratio * m;
    }
    closeKeepingLastY(o, formerLastY);
    if (!allFinite(o)) {
        o = before;
        return false;
    }
    return true;
}

bool Edit_Thickness(Workbench& wb, double newThickness, double oldThickness) {
    OutlinePoints& o = wb.outlines.Outline;
    double ratio = 0.0;
    if (o.size() < 3 || !ratioOf(newThickness, oldThickness, ratio) || ratio < 0.0) return false;
    OutlinePoints opp;
    if (!Split_Surfaces(wb, opp)) return false;
    const double formerLastY = o.back().y;
    const size_t nose = Find_Nose(o);

    // Each upper station carries the lower surface at the same x: the two are
    // spread about their mean by the ratio.
    std::vector<double> up(nose + 1), low(nose + 1);
    for (size_t i = 0; i <= nose; ++i) {
        const double m = (o[i].y + opp[i].y) / 2.0;
        const double t = o[i].y - opp[i].y;
        up[i] = m + ratio * t / 2.0;
        low[i] = m - ratio * t / 2.0;
    }
    // Near the nose the interpolated opposite can lie above the point itself;
    // spreading would make the surfaces cross there. Such a station is put
    // back on the line through its neighbours instead.
    for (size_t i = 1; i < nose; ++i) {
        if (up[i] < low[i]) {
            up[i] = Interp_Y(o[i - 1].x, up[i - 1], o[i + 1].x, up[i + 1], o[i].x);
            low[i] = Interp_Y(o[i - 1].x, low[i - 1], o[i + 1].x, low[i + 1], o[i].x);
        }
    }

    OutlinePoints rebuilt;
    rebuilt.reserve(2 * nose + 1);
    for (size_t i = 0; i <= nose; ++i) rebuilt.push_back({o[i].x, up[i]});
    for (size_t i = nose; i-- > 1;) rebuilt.push_back({o[i].x, low[i]});
    rebuilt.push_back(rebuilt.front());
    closeKeepingLastY(rebuilt, formerLastY);
    if (rebuilt.size() < 3 || !allFinite(rebuilt)) return false;
    o = std::move(rebuilt);
    return true;
}

}  // namespace tarvokin

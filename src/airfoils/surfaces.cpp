// Upper and lower surface of an outline, point by point.
#include <cmath>
#include <string>

#include "airfoils/outline.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "core/file_replace.h"

namespace tarvokin {

size_t Find_Nose(const OutlinePoints& outline) {
    size_t i = 1;
    while (i < outline.size() && outline[i].x < outline[i - 1].x) ++i;
    return outline.empty() ? 0 : i - 1;
}

// Two cursors walk from the trailing edge to the nose, one on each surface.
// The one whose next point has the larger x moves first, so the opposite
// segment of the point it reaches always spans that x: no search, and every
// point gets the other surface's height at exactly its own x.
bool Split_Surfaces(const OutlinePoints& outline, OutlinePoints& opposite) {
    opposite.assign(outline.size(), OutlinePoint{});
    if (outline.empty()) return true;
    const size_t last = outline.size() - 1;
    opposite[0] = outline[0];
    opposite[last] = outline[last];
    size_t a = 0, b = last;
    while (a + 1 < b) {
        size_t cur, s1, s2;
        if (outline[a + 1].x < outline[b - 1].x) {
            cur = --b;
            s1 = a;
            s2 = a + 1;
        } else {
            cur = ++a;
            s1 = b;
            s2 = b - 1;
        }
        const OutlinePoint &p1 = outline[s1], &p2 = outline[s2];
        if (p2.x == p1.x) return false;  // a vertical segment has no height at one x
        const double x = outline[cur].x;
        const double y = p1.y + (x - p1.x) / (p2.x - p1.x) * (p2.y - p1.y);
        if (!std::isfinite(y)) return false;  // out of range on an outline in no order
        opposite[cur] = {x, y};
    }
    return true;
}

bool Split_Surfaces(Workbench& wb, OutlinePoints& opposite) {
    const OutlinePoints& outline = wb.outlines.Outline;
    if (!Split_Surfaces(outline, opposite)) return false;
    // Through the file replacement, so that the same outline again leaves the
    // files as they were.
    auto dump = [](const std::filesystem::path& file, const OutlinePoints& points) {
        std::string text;
        for (const OutlinePoint& p : points) text += plain(p.x) + ';' + plain(p.y) + '\n';
        replaceFile(file, text);
    };
    dump(wb.home() / "upper.txt", outline);
    dump(wb.home() / "lower.txt", opposite);
    return true;
}

double Interp_Y(double x1, double y1, double x2, double y2, double x) {
    if (x2 == x1) return (y1 + y2) / 2.0;
    return y1 + (x - x1) / (x2 - x1) * (y2 - y1);
}

}  // namespace tarvokin

#include "views/global_chart.h"

#include <algorithm>
#include <cmath>

#include "core/cells.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "views/aircraft_layout.h"

namespace tarvokin {

namespace {

constexpr Rgb kNeutral{200, 0, 0};
constexpr Rgb kCg{0, 120, 0};

// The figure a field starts with: the neutral points are shown with their
// unit and their share of the mean chord behind the number.
bool figure(const Sheet& s, Cell c, double& v) {
    const std::string& t = s.text(c);
    if (t.empty() || t == "-") return false;
    v = leadingNumber(t);
    return std::isfinite(v) && (v != 0 || t[0] == '0');
}

}  // namespace

Plan GlobalGeometryChart(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    Plan plan = DrawPlanView(wb);
    plan.title = kGlobalChartTitle;
    const AircraftLayout a = LayoutAircraft(s);
    const PlanBounds box = plan.bounds();
    if (box.empty) return plan;
    // Marks run across the whole drawing so that they read against the wing
    // and the stabiliser alike; the text sits beyond the upper edge.
    const double reach = std::max(box.height(), 1.0) * 0.04;
    const double top = box.yMax + reach, bottom = box.yMin - reach;
    const double th = std::max(3.0, std::max(box.width(), box.height()) / 60);
    int row = 0;
    auto mark = [&](const char* kind, const std::string& caption, double station, Rgb colour, bool dashed) {
        plan.segments.push_back({PlanLayer::Mark, kind, {station, bottom}, {station, top}, colour, dashed});
        plan.labels.push_back({PlanLayer::Label, kind, {station, top + th * (0.5 + 1.6 * row++)}, caption,
                               TextAnchor::BottomCentre, th, colour});
    };
    double v = 0;
    // The wing's neutral point is given behind its root leading edge; the
    // CG limits too (static margin applied by the trim).
    if (!a.wing.empty() && figure(s, F_GEO_SF::j99, v)) mark("Foyer Aile", "Foyer Aile", a.wingStation + v, kNeutral, true);
    if (!a.wing.empty() && figure(s, F_3D::j9, v)) mark("Foyer Global", "Foyer Global", a.wingStation + v, kNeutral, false);
    double front = 0, back = 0;
    if (!a.wing.empty() && figure(s, F_GEO_SF_REGLAGES::C30, front) && figure(s, F_GEO_SF_REGLAGES::C31, back)) {
        mark("CG", "CG avant", a.wingStation + std::min(front, back), kCg, false);
        mark("CG", "CG arrière", a.wingStation + std::max(front, back), kCg, false);
    }
    return plan;
}

}  // namespace tarvokin

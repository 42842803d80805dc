#include "views/plan.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "design/geometry.h"
#include "design/summary.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "views/aircraft_layout.h"
#include "views/mesh_outline.h"

namespace tarvokin {

namespace {

constexpr Rgb kInk{0, 0, 0};
constexpr Rgb kConstructionInk{110, 110, 110};
constexpr Rgb kNeutralInk{200, 0, 0};
constexpr Rgb kCgInk{0, 0, 200};
constexpr Rgb kWingFill{205, 222, 255};
constexpr Rgb kStabFill{205, 240, 205};
constexpr Rgb kFinFill{255, 232, 205};
constexpr Rgb kFuselageFill{228, 228, 228};

// A figure from its field, when the field holds one.
bool fieldNumber(const Sheet& s, Cell c, double& v) { return tryNumber(s.text(c), v) && std::isfinite(v); }

double fieldOr(const Sheet& s, Cell c, double fallback) {
    double v = 0;
    return fieldNumber(s, c, v) ? v : fallback;
}

// The field with two decimals, or its text as it stands ("-") when it holds no number.
std::string twoDecimals(const Sheet& s, Cell c) {
    double v = 0;
    return fieldNumber(s, c, v) ? fixed(v, 2) : s.text(c);
}

PlanPoint rotateAbout(PlanPoint origin, double x, double y, double degrees) {
    // Positive incidence raises the leading edge: the chord turns clockwise
    // about its leading edge when the nose points left.
    const double a = degrees * std::numbers::pi / 180.0;
    return {origin.x + x * std::cos(a) + y * std::sin(a), origin.y - x * std::sin(a) + y * std::cos(a)};
}

// A unit-chord section scaled to `chord`, its leading edge at `le`.
std::vector<PlanPoint> sectionAt(const OutlinePoints& section, PlanPoint le, double chord, double incidence) {
    std::vector<PlanPoint> pts;
    pts.reserve(section.size());
    for (const OutlinePoint& q : section) pts.push_back(rotateAbout(le, chord * q.x, chord * q.y, incidence));
    return pts;
}

std::vector<PlanPoint> circle(PlanPoint c, double r) {
    std::vector<PlanPoint> pts;
    for (int i = 0; i < 16; ++i) {
        const double a = 2 * std::numbers::pi * i / 16;
        pts.push_back({c.x + r * std::cos(a), c.y + r * std::sin(a)});
    }
    return pts;
}

// Text size and spacing for a drawing of this extent: readable on the
// window's picture and on a plan printed at true scale.
double textHeightFor(double extent) { return std::max(3.0, extent / 60); }

// ---- drawing the parts from their layout ---------------------------------------

struct Projection {
    PlanView view;
    PlanPoint operator()(const MeshPoint& p) const {
        switch (view) {
            case PlanView::Dessus: return {p.x, p.z};
            case PlanView::Face: return {-p.z, p.y};
            default: return {p.x, p.y};
        }
    }
};

MeshPoint placed(MeshPoint p, double station, bool mirrored) {
    p.x += station;
    if (mirrored) p.z = -p.z;
    return p;
}

// The planform of a panel as it projects: one edge each for the root chord,
// the leading edge, the tip chord and the trailing edge.
void drawPanel(Plan& plan, const PanelShape& shape, double station, bool mirrored, const Projection& proj,
               const char* kind, Rgb fill) {
    PlanShape sh;
    sh.kind = kind;
    sh.fill = fill;
    sh.colour = kInk;
    for (auto [x, u] : {std::pair{0.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}, {1.0, 0.0}}) {
        sh.points.push_back(proj(placed(PanelPoint(shape, x, 0, u), station, mirrored)));
    }
    plan.shapes.push_back(std::move(sh));
}

// A section of the panel at the fraction u of its span, as it projects.
void drawSection(Plan& plan, const PanelShape& shape, const OutlinePoints& section, double u, double station,
                 bool mirrored, const Projection& proj, const char* kind, Rgb fill) {
    PlanShape sh;
    sh.kind = kind;
    sh.fill = fill;
    sh.colour = kInk;
    for (const OutlinePoint& q : section) sh.points.push_back(proj(placed(PanelPoint(shape, q.x, q.y, u), station, mirrored)));
    plan.shapes.push_back(std::move(sh));
}

void drawFuselageSide(Plan& plan, const std::vector<FuselageFrame>& frames) {
    if (frames.empty()) return;
    PlanShape sh;
    sh.kind = "Fuselage";
    sh.fill = kFuselageFill;
    sh.colour = kInk;
    for (const FuselageFrame& f : frames) sh.points.push_back({f.station, f.yCentre + f.height / 2});
    for (auto f = frames.rbegin(); f != frames.rend(); ++f) sh.points.push_back({f->station, f->yCentre - f->height / 2});
    plan.shapes.push_back(std::move(sh));
    for (const FuselageFrame& f : frames) {
        plan.segments.push_back({PlanLayer::Construction, "Couple", {f.station, f.yCentre - f.height / 2},
                                 {f.station, f.yCentre + f.height / 2}, kConstructionInk, false});
    }
}

void drawFuselageTop(Plan& plan, const std::vector<FuselageFrame>& frames) {
    if (frames.empty()) return;
    PlanShape sh;
    sh.kind = "Fuselage";
    sh.fill = kFuselageFill;
    sh.colour = kInk;
    for (const FuselageFrame& f : frames) sh.points.push_back({f.station, f.width / 2});
    for (auto f = frames.rbegin(); f != frames.rend(); ++f) sh.points.push_back({f->station, -f->width / 2});
    plan.shapes.push_back(std::move(sh));
    for (const FuselageFrame& f : frames) {
        plan.segments.push_back({PlanLayer::Construction, "Couple", {f.station, -f.width / 2}, {f.station, f.width / 2},
                                 kConstructionInk, false});
    }
}

void drawFuselageFront(Plan& plan, const std::vector<FuselageFrame>& frames, const OutlinePoints& section) {
    const FuselageFrame* big = nullptr;
    for (const FuselageFrame& f : frames) {
        if (!big || f.width * f.height > big->width * big->height) big = &f;
    }
    if (!big) return;
    PlanShape sh;
    sh.kind = "Fuselage";
    sh.fill = kFuselageFill;
    sh.colour = kInk;
    for (const OutlinePoint& q : section) sh.points.push_back({big->width * (q.x - 0.5), big->yCentre + big->height * q.y});
    plan.shapes.push_back(std::move(sh));
}

// Wing, stabiliser and fin in the view, both halves, panel by panel.
void drawAircraft(Plan& plan, const Workbench& wb, const AircraftLayout& a, PlanView view) {
    const Sheet& s = wb.sheet;
    const Projection proj{view};
    if (view == PlanView::Profil) drawFuselageSide(plan, a.frames);
    if (view == PlanView::Dessus) drawFuselageTop(plan, a.frames);
    if (view == PlanView::Face) drawFuselageFront(plan, a.frames, FuselageSection(s));

    for (bool mirrored : {false, true}) {
        for (const WingPanelLayout& p : a.stab) drawPanel(plan, p.shape, a.stabStation, mirrored, proj, "Stab", kStabFill);
        for (const WingPanelLayout& p : a.wing) drawPanel(plan, p.shape, a.wingStation, mirrored, proj, "Aile", kWingFill);
    }
    if (a.fin) {
        const OutlinePoints finSection = FinSection(s);
        for (bool mirrored : {false, true}) {
            if (mirrored && a.finSpacing == 0) break;
            if (view == PlanView::Dessus) {
                drawSection(plan, *a.fin, finSection, 0, a.finStation, mirrored, proj, "Dérive", kFinFill);
            } else {
                drawPanel(plan, *a.fin, a.finStation, mirrored, proj, "Dérive", kFinFill);
            }
        }
    }
    if (view == PlanView::Profil) {
        // Seen from the side the surfaces are edge on: their root sections show.
        if (!a.wing.empty()) {
            drawSection(plan, a.wing.front().shape, WingSection(wb), 0, a.wingStation, false, proj, "Profil Aile",
                        kWingFill);
        }
        if (!a.stab.empty()) {
            drawSection(plan, a.stab.front().shape, StabSection(s), 0, a.stabStation, false, proj, "Profil Stab",
                        kStabFill);
        }
    }
}

double extentOf(const AircraftLayout& a, const Plan& plan) {
    const PlanBounds b = plan.bounds();
    double e = std::max(a.length, 1.0);
    if (!b.empty) e = std::max({e, b.width(), b.height()});
    return e;
}

// ---- the mean aerodynamic chord of each panel, drawn on the left half ------------

void drawMacConstruction(Plan& plan, const AircraftLayout& a) {
    const Projection top{PlanView::Dessus};
    for (const WingPanelLayout& p : a.wing) {
        if (p.winglet) continue;
        const PlanPoint le0 = top(placed(PanelPoint(p.shape, 0, 0, 0), a.wingStation, false));
        const PlanPoint le1 = top(placed(PanelPoint(p.shape, 0, 0, 1), a.wingStation, false));
        const double cr = p.shape.rootChord, ct = p.shape.tipChord;
        auto add = [&](PlanPoint from, PlanPoint to, bool dashed) {
            plan.segments.push_back({PlanLayer::Construction, "Construction CAM", from, to, kConstructionInk, dashed});
        };
        // The tip chord laid behind the root's trailing edge, the root chord
        // ahead of the tip's leading edge; the line joining their ends cuts
        // the line of half chords at the mean chord.
        add({le0.x + cr, le0.y}, {le0.x + cr + ct, le0.y}, false);
        add({le1.x - cr, le1.y}, {le1.x, le1.y}, false);
        add({le0.x + cr + ct, le0.y}, {le1.x - cr, le1.y}, false);
        add({le0.x + cr / 2, le0.y}, {le1.x + ct / 2, le1.y}, true);
        const double t = (cr + 2 * ct) / (3 * (cr + ct));
        const PlanPoint le{le0.x + t * (le1.x - le0.x), le0.y + t * (le1.y - le0.y)};
        const double mac = cr + (ct - cr) * t;
        plan.segments.push_back({PlanLayer::Mark, "CAM", le, {le.x + mac, le.y}, kNeutralInk, false});
    }
}

}  // namespace

// ---- plan basics -------------------------------------------------------------------

PlanBounds Plan::bounds() const {
    PlanBounds b;
    auto take = [&b](PlanPoint p) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
        if (b.empty) {
            b = {p.x, p.y, p.x, p.y, false};
            return;
        }
        b.xMin = std::min(b.xMin, p.x);
        b.xMax = std::max(b.xMax, p.x);
        b.yMin = std::min(b.yMin, p.y);
        b.yMax = std::max(b.yMax, p.y);
    };
    for (const PlanShape& s : shapes)
        for (PlanPoint p : s.points) take(p);
    for (const PlanPolyline& l : polylines)
        for (PlanPoint p : l.points) take(p);
    for (const PlanSegment& g : segments) {
        take(g.a);
        take(g.b);
    }
    for (const PlanLabel& l : labels) take(l.at);
    return b;
}

std::vector<PlanTextLine> LayoutLabel(const PlanLabel& label) {
    std::vector<std::string> lines;
    const std::string_view sep = kLabelLineEnd;
    size_t start = 0;
    while (true) {
        const size_t at = label.text.find(sep, start);
        lines.push_back(label.text.substr(start, at == std::string::npos ? std::string::npos : at - start));
        if (at == std::string::npos) break;
        start = at + sep.size();
    }
    const int a = static_cast<int>(label.anchor);
    const int column = a % 3, row = a / 3;  // row 0 top, 1 middle, 2 bottom
    const double h = label.height, pitch = kPlanLinePitch * h;
    const double n = static_cast<double>(lines.size());
    double first = label.at.y - h / 2;
    if (row == 1) first = label.at.y + (n - 1) * pitch / 2;
    if (row == 2) first = label.at.y + h / 2 + (n - 1) * pitch;
    std::vector<PlanTextLine> out;
    for (size_t i = 0; i < lines.size(); ++i) {
        out.push_back({lines[i], {label.at.x, first - static_cast<double>(i) * pitch}, static_cast<TextAlign>(column)});
    }
    return out;
}

double PlanScale(const Plan& plan, double areaWidth, double areaHeight) {
    const PlanBounds b = plan.bounds();
    const double extent = std::max(b.width(), b.height());
    const double side = std::min(areaWidth, areaHeight);
    if (b.empty || !(extent > 0) || !(side > 0)) return 1;
    return side * 0.9 / extent;
}

const char* PlanViewCaption(PlanView v) {
    switch (v) {
        case PlanView::Profil: return "Vue Profil";
        case PlanView::Dessus: return "Vue Dessus";
        case PlanView::Face: return "Vue Face";
        case PlanView::Vue3D: return "Vue 3D";
    }
    return "";
}

std::string CurveText(double number) {
    if (!std::isfinite(number)) return "-";
    return plain(roundHalfAway(number, 2));
}

// ---- centring plan -----------------------------------------------------------------

Plan DrawCentringPlan(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    Plan plan;
    const AircraftLayout a = LayoutAircraft(s);
    // The plan follows the stations the trim was computed with: the wing
    // where slider 0 puts it, the stabiliser at slider 5 behind it.
    const double wingStation = fieldOr(s, F_3D::Slider1[0], 0);
    const double stabStation = wingStation + fieldOr(s, F_3D::Slider1[5], 0);

    drawFuselageSide(plan, a.frames);

    // Mean chords at their heights and incidences: the leading edge lies a
    // quarter chord ahead of the neutral point.
    double wingFoyer = 0, mac = 0;
    // Drawn from the figures in the fields, when the wing and the
    // stabiliser have panels to show; a field that holds no figure leaves
    // its part out.
    const bool wing = !a.wing.empty() && fieldNumber(s, F_GEO_SF::j9, wingFoyer) && fieldNumber(s, F_3D::j5, mac);
    const double wingY = -fieldOr(s, F_GEO_FUS::Text5, 0);
    if (wing) {
        PlanShape sh;
        sh.kind = "Shape_Aile";
        sh.fill = kWingFill;
        sh.colour = kInk;
        sh.points = sectionAt(WingSection(wb), {wingStation + wingFoyer - mac / 4, wingY}, mac,
                              fieldOr(s, F_GEO_SF_REGLAGES::F31, 0));
        plan.shapes.push_back(std::move(sh));
    }
    double stabFoyer = 0, stabMac = 0;
    const bool stab = !s.on(F_GEO_SF_REGLAGES::Ch_Aile) && !a.stab.empty() &&
                      fieldNumber(s, F_GEO_STAB::J20, stabFoyer) && fieldNumber(s, F_GEO_STAB::j16, stabMac);
    const double stabY = fieldOr(s, F_GEO_STAB::Text4, 0);
    if (stab) {
        PlanShape sh;
        sh.kind = "Sh_Stab";
        sh.fill = kStabFill;
        sh.colour = kInk;
        sh.points = sectionAt(StabSection(s), {stabStation + stabFoyer - stabMac / 4, stabY}, stabMac,
                              fieldOr(s, F_GEO_SF_REGLAGES::F30, 0));
        plan.shapes.push_back(std::move(sh));
    }

    const double extent = extentOf(a, plan);
    const double th = textHeightFor(extent);
    const double lineGap = 1.6 * th;
    const double refEnd = std::max({a.length, stabStation + stabMac, wingStation + mac, 1.0});
    plan.segments.push_back({PlanLayer::Construction, "Ligne de référence fuselage", {0, 0}, {refEnd, 0},
                             kConstructionInk, true});

    PlanBounds b = plan.bounds();
    const double top = b.yMax + th, bottom = b.yMin - th;

    // Neutral points and the CG: a mark on the reference line, a leader to
    // the caption and its figure. The wing's points stand close together:
    // their texts go above the drawing, the front one to the left of its
    // leader, the rear one to the right, the middle one a row higher; the
    // stabiliser's and the fuselage's go below.
    struct Callout {
        double x;
        const char* caption;
        const char* figureKind;
        std::string figure;
        Rgb colour;
        bool cg;
    };
    std::vector<Callout> above, below;
    if (wing) {
        above.push_back({wingStation + wingFoyer, "Foyer Aile", "j99", fixed(wingFoyer, 2) + " mm (=25 % de la CAM)",
                         kNeutralInk, false});
    }
    double neutral = 0;
    if (fieldNumber(s, F_GEO_SF_REGLAGES::C31, neutral)) {
        above.push_back({wingStation + neutral, "Foyer Global", "j20a", fixed(neutral, 2) + " mm", kNeutralInk, false});
    }
    // The CG where the static margin puts it behind the wing's leading edge.
    double cg = 0;
    if (fieldNumber(s, F_GEO_SF_REGLAGES::C30, cg)) {
        above.push_back({wingStation + cg, "CG", "b30",
                         twoDecimals(s, F_GEO_SF_REGLAGES::C30) + " mm (= " + twoDecimals(s, F_GEO_SF_REGLAGES::B30) +
                             " % cam)" + kLabelLineEnd + "Cz aile = " + twoDecimals(s, F_GEO_SF_REGLAGES::D30),
                         kCgInk, true});
    }
    if (stab) {
        below.push_back({stabStation + stabFoyer, "Foyer Stab", "J20", s.text(F_GEO_STAB::J20) + " mm", kNeutralInk,
                         false});
    }
    double fuselagePercent = 0;
    if (!a.frames.empty() && fieldNumber(s, F_GEO_FUS::j26, fuselagePercent)) {
        below.push_back({a.length * fuselagePercent / 100, "Foyer Fuselage", "j26a", s.text(F_3D::j26a), kNeutralInk,
                         false});
    }
    std::sort(above.begin(), above.end(), [](const Callout& l, const Callout& r) { return l.x < r.x; });

    const double rowStep = 3.4 * lineGap;
    auto callout = [&](const Callout& c, int row, int side) {
        const double r = th * 0.6;
        if (c.cg) {
            PlanShape mark;
            mark.layer = PlanLayer::Mark;
            mark.kind = "CG";
            mark.points = circle({c.x, 0}, r);
            mark.fill = c.colour;
            mark.colour = c.colour;
            plan.shapes.push_back(std::move(mark));
        } else {
            plan.segments.push_back({PlanLayer::Mark, c.caption, {c.x, -th}, {c.x, th}, c.colour, false});
        }
        const bool up = row > 0;
        const double y = up ? top + (row - 1) * rowStep : bottom - (-row - 1) * rowStep;
        plan.segments.push_back({PlanLayer::Construction, c.caption, {c.x, up ? r : -r}, {c.x, y}, c.colour, true});
        // side -1: text to the left of the leader, 0: centred on it, 1: to its right.
        const double x = c.x + side * th / 3;
        const int column = 1 - side;  // text on the left stands with its right end at the point
        PlanLabel caption{PlanLayer::Label, c.cg ? "CG" : "Label4", {x, y}, c.caption, TextAnchor::BottomLeft, th,
                          c.colour};
        PlanLabel figure{PlanLayer::Label, c.figureKind, {x, y}, c.figure, TextAnchor::BottomLeft, th, c.colour};
        const double figureLines = static_cast<double>(LayoutLabel(figure).size());
        if (up) {
            figure.anchor = static_cast<TextAnchor>(6 + column);
            caption.anchor = figure.anchor;
            caption.at.y = y + figureLines * lineGap;
        } else {
            caption.anchor = static_cast<TextAnchor>(column);
            figure.anchor = caption.anchor;
            figure.at.y = y - lineGap;
        }
        plan.labels.push_back(caption);
        plan.labels.push_back(figure);
    };
    for (size_t i = 0; i < above.size(); ++i) {
        if (above.size() == 1) {
            callout(above[i], 1, 0);
        } else if (i == 0) {
            callout(above[i], 1, -1);
        } else if (i + 1 == above.size()) {
            callout(above[i], 1, 1);
        } else {
            callout(above[i], 2, 0);
        }
    }
    for (size_t i = 0; i < below.size(); ++i) callout(below[i], -1 - static_cast<int>(i), 0);

    // The settings, a block under the drawing.
    b = plan.bounds();
    double y = b.yMin - th;
    auto line = [&](const char* kind, const std::string& text) {
        plan.labels.push_back({PlanLayer::Label, kind, {b.xMin, y}, text, TextAnchor::TopLeft, th, kInk});
        y -= lineGap;
    };
    line("Label4", "Marge statique");
    line("C29", s.text(F_GEO_SF_REGLAGES::C29) + " %");
    line("F31", "Calage aile = " + twoDecimals(s, F_GEO_SF_REGLAGES::F31) + " °");
    if (stab) line("F30", "Callage stab = " + twoDecimals(s, F_GEO_SF_REGLAGES::F30) + " °");
    line("F32", "Vé longitudinal = " + twoDecimals(s, F_GEO_SF_REGLAGES::F32) + " °");
    plan.labels.push_back({PlanLayer::Label, "Ligne de référence fuselage", {refEnd + th / 2, 0},
                           "Ligne de référence fuselage", TextAnchor::MiddleLeft, th, kConstructionInk});
    return plan;
}

// ---- the views -------------------------------------------------------------------

Plan DrawPlanView(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    Plan plan;
    plan.title = PlanViewCaption(PlanView::Dessus);
    const AircraftLayout a = LayoutAircraft(s);
    drawAircraft(plan, wb, a, PlanView::Dessus);
    drawMacConstruction(plan, a);

    const double th = textHeightFor(extentOf(a, plan));
    // The wing's mean chord, at its station on the left half.
    double wingFoyer = 0, mac = 0;
    if (!a.wing.empty() && fieldNumber(s, F_GEO_SF::j9, wingFoyer) &&
        fieldNumber(s, F_3D::j5, mac)) {
        double station = 0;
        try {
            station = MeanChordStation(s);
        } catch (const RunError&) {
            station = 0;
        }
        const PlanPoint le{a.wingStation + wingFoyer - mac / 4, -station};
        plan.segments.push_back({PlanLayer::Mark, "CAM", le, {le.x + mac, le.y}, kNeutralInk, false});
        plan.labels.push_back({PlanLayer::Label, "j5", {le.x + mac / 2, le.y - th / 3}, s.text(F_3D::j5) + " mm",
                               TextAnchor::TopCentre, th, kNeutralInk});
    }

    // Frame spacings on a dimension line beside the fuselage, every other
    // figure a line lower so that short spacings stay readable.
    if (a.frames.size() > 1) {
        double half = 0;
        for (const FuselageFrame& f : a.frames) half = std::max(half, f.width / 2);
        const double y = half + 2 * th;
        for (size_t i = 0; i + 1 < a.frames.size(); ++i) {
            const double x0 = a.frames[i].station, x1 = a.frames[i + 1].station;
            plan.segments.push_back({PlanLayer::Construction, "Cote", {x0, y}, {x1, y}, kConstructionInk, false});
            plan.segments.push_back(
                {PlanLayer::Construction, "Cote", {x0, y - th / 2}, {x0, y + th / 2}, kConstructionInk, false});
            const double ly = y + th / 2 + (i % 2) * 1.6 * th;
            plan.labels.push_back({PlanLayer::Label, "Cote", {(x0 + x1) / 2, ly}, CurveText(x1 - x0) + " m/m",
                                   TextAnchor::BottomCentre, th * 0.8, kConstructionInk});
        }
        const double xl = a.frames.back().station;
        plan.segments.push_back(
            {PlanLayer::Construction, "Cote", {xl, y - th / 2}, {xl, y + th / 2}, kConstructionInk, false});
    }
    return plan;
}

std::optional<Plan> DrawViews(const Workbench& wb, PlanView view) {
    if (view == PlanView::Vue3D) return std::nullopt;
    if (view == PlanView::Dessus) return DrawPlanView(wb);
    Plan plan;
    plan.title = PlanViewCaption(view);
    drawAircraft(plan, wb, LayoutAircraft(wb.sheet), view);
    return plan;
}

}  // namespace tarvokin

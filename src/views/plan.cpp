#include "views/plan.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>

#include "core/translations.h"
#include "design/geometry.h"
#include "design/summary.h"
#include "core/numbers.h"
#include "core/text_case.h"
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

PlanBounds LabelBox(const PlanLabel& label) {
    // The lines as LayoutLabel sets them, counted without making them: the
    // layout of the centring plan asks for many boxes.
    const std::string_view text = label.text, sep = kLabelLineEnd;
    size_t lines = 0, widest = 0;
    for (size_t start = 0;;) {
        const size_t at = text.find(sep, start);
        widest = std::max(widest, charCount(text.substr(start, at == std::string_view::npos ? text.npos : at - start)));
        ++lines;
        if (at == std::string_view::npos) break;
        start = at + sep.size();
    }
    const int a = static_cast<int>(label.anchor);
    const int column = a % 3, row = a / 3;
    const double h = label.height, pitch = kPlanLinePitch * h, n = static_cast<double>(lines);
    double first = label.at.y - h / 2;
    if (row == 1) first = label.at.y + (n - 1) * pitch / 2;
    if (row == 2) first = label.at.y + h / 2 + (n - 1) * pitch;
    const double w = h * (kPlanCharWidth * static_cast<double>(widest) + 0.5);
    double left = label.at.x;
    if (column == 1) left -= w / 2;
    if (column == 2) left -= w;
    return {left, first - (n - 1) * pitch - pitch / 2, left + w, first + pitch / 2, false};
}

bool Overlap(const PlanBounds& a, const PlanBounds& b) {
    if (a.empty || b.empty) return false;
    // Lines set one under the other touch: a hair's breadth is no overlap.
    const double e = 1e-9 * std::max({1.0, std::abs(a.xMax), std::abs(a.yMax), std::abs(b.xMax), std::abs(b.yMax)});
    return a.xMin < b.xMax - e && b.xMin < a.xMax - e && a.yMin < b.yMax - e && b.yMin < a.yMax - e;
}

PlanBounds Plan::boundsWithText() const {
    PlanBounds b = bounds();
    for (const PlanLabel& l : labels) {
        const PlanBounds t = LabelBox(l);
        if (t.empty || !std::isfinite(t.xMin) || !std::isfinite(t.yMin) || !std::isfinite(t.xMax) ||
            !std::isfinite(t.yMax)) {
            continue;
        }
        if (b.empty) {
            b = t;
            continue;
        }
        b = {std::min(b.xMin, t.xMin), std::min(b.yMin, t.yMin), std::max(b.xMax, t.xMax), std::max(b.yMax, t.yMax),
             false};
    }
    return b;
}

double PlanScale(const Plan& plan, double areaWidth, double areaHeight) {
    const PlanBounds b = plan.boundsWithText();
    if (b.empty || !(areaWidth > 0) || !(areaHeight > 0)) return 1;
    // A drawing that is a line (the width or the height nil) fits by its length.
    double scale = 0;
    if (b.width() > 0) scale = areaWidth / b.width();
    if (b.height() > 0) scale = scale > 0 ? std::min(scale, areaHeight / b.height()) : areaHeight / b.height();
    return scale > 0 ? scale * 0.9 : 1;
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

namespace {

// A neutral point or the CG: a mark on the reference line, a leader to the
// caption and its figure.
struct Callout {
    double x;
    const char* caption;
    const char* figureKind;
    std::string figure;
    Rgb colour;
    bool cg;
};

// What the centring plan shows, before its texts are set.
struct CentringParts {
    Plan drawing;  // fuselage, mean chords, reference line
    std::vector<Callout> above, below;
    std::vector<std::pair<const char*, std::string>> settings;
    const char* referenceName = "Ligne de référence fuselage";
    double refEnd = 1;
    double extent = 1;
};

// The centring plan's words in English, Spanish and Italian, by their French.
constexpr Translation kPlanWords[] = {
    {"Foyer Aile", {"Wing NP", "Foco ala", "Fuoco ala"}},
    {"Foyer Global", {"Overall NP", "Foco global", "Fuoco globale"}},
    {"Foyer Stab", {"Tail NP", "Foco estab.", "Fuoco stab."}},
    {"Foyer Fuselage", {"Fuselage NP", "Foco fuselaje", "Fuoco fusol."}},
    {" mm (=25 % de la CAM)", {" mm (=25 % of the MAC)", " mm (=25 % de la CAM)", " mm (=25 % della CMA)"}},
    {" % cam)", {" % MAC)", " % CAM)", " % CMA)"}},
    {"Cz aile = ", {"Wing Cz = ", "Cz ala = ", "Cz ala = "}},
    {"Marge statique", {"Static margin", "Margen estático", "Margine statico"}},
    {"Calage aile = ", {"Wing incidence = ", "Calaje ala = ", "Calett. ala = "}},
    {"Callage stab = ", {"Tail incidence = ", "Calaje estab. = ", "Calett. stab. = "}},
    {"Vé longitudinal = ", {"Long. dihedral = ", "Diedro long. = ", "Diedro long. = "}},
    {"Ligne de référence fuselage", {"Fuselage datum line", "Línea de referencia fuselaje", "Riferimento fusoliera"}},
};

// A word of the plan in the run's language; French as the plan was written.
const char* planWord(const Workbench& wb, const char* french) {
    return InLanguage(kPlanWords, french, wb.settings.languageCode);
}

CentringParts centringParts(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    const auto w = [&wb](const char* french) { return planWord(wb, french); };
    CentringParts parts;
    Plan& plan = parts.drawing;
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

    parts.extent = extentOf(a, plan);
    parts.refEnd = std::max({a.length, stabStation + stabMac, wingStation + mac, 1.0});
    parts.referenceName = w("Ligne de référence fuselage");
    plan.segments.push_back({PlanLayer::Construction, parts.referenceName, {0, 0}, {parts.refEnd, 0},
                             kConstructionInk, true});

    // The wing's points and the CG go above the drawing, the stabiliser's and
    // the fuselage's below.
    if (wing) {
        parts.above.push_back({wingStation + wingFoyer, w("Foyer Aile"), "j99",
                               fixed(wingFoyer, 2) + w(" mm (=25 % de la CAM)"), kNeutralInk, false});
    }
    double neutral = 0;
    if (fieldNumber(s, F_GEO_SF_REGLAGES::C31, neutral)) {
        parts.above.push_back(
            {wingStation + neutral, w("Foyer Global"), "j20a", fixed(neutral, 2) + " mm", kNeutralInk, false});
    }
    // The CG where the static margin puts it behind the wing's leading edge.
    double cg = 0;
    if (fieldNumber(s, F_GEO_SF_REGLAGES::C30, cg)) {
        parts.above.push_back({wingStation + cg, "CG", "b30",
                               twoDecimals(s, F_GEO_SF_REGLAGES::C30) + " mm (= " +
                                   twoDecimals(s, F_GEO_SF_REGLAGES::B30) + w(" % cam)") + kLabelLineEnd +
                                   w("Cz aile = ") + twoDecimals(s, F_GEO_SF_REGLAGES::D30),
                               kCgInk, true});
    }
    if (stab) {
        parts.below.push_back({stabStation + stabFoyer, w("Foyer Stab"), "J20", s.text(F_GEO_STAB::J20) + " mm",
                               kNeutralInk, false});
    }
    double fuselagePercent = 0;
    if (!a.frames.empty() && fieldNumber(s, F_GEO_FUS::j26, fuselagePercent)) {
        parts.below.push_back({a.length * fuselagePercent / 100, w("Foyer Fuselage"), "j26a", s.text(F_3D::j26a),
                               kNeutralInk, false});
    }
    const auto byStation = [](const Callout& l, const Callout& r) { return l.x < r.x; };
    std::stable_sort(parts.above.begin(), parts.above.end(), byStation);
    std::stable_sort(parts.below.begin(), parts.below.end(), byStation);

    parts.settings = {{"Label4", w("Marge statique")},
                      {"C29", s.text(F_GEO_SF_REGLAGES::C29) + " %"},
                      {"F31", w("Calage aile = ") + twoDecimals(s, F_GEO_SF_REGLAGES::F31) + " °"}};
    if (stab) parts.settings.push_back({"F30", w("Callage stab = ") + twoDecimals(s, F_GEO_SF_REGLAGES::F30) + " °"});
    parts.settings.push_back({"F32", w("Vé longitudinal = ") + twoDecimals(s, F_GEO_SF_REGLAGES::F32) + " °"});
    return parts;
}

PlanBounds unite(PlanBounds a, const PlanBounds& b) {
    if (b.empty) return a;
    if (a.empty) return b;
    return {std::min(a.xMin, b.xMin), std::min(a.yMin, b.yMin), std::max(a.xMax, b.xMax), std::max(a.yMax, b.yMax),
            false};
}

// A block's labels move together with its row: its box at another row is the
// box at one row moved by the difference.
PlanBounds raised(PlanBounds b, double dy) {
    b.yMin += dy;
    b.yMax += dy;
    return b;
}

PlanBounds boxOf(const std::vector<PlanLabel>& labels) {
    PlanBounds b;
    for (const PlanLabel& l : labels) b = unite(b, LabelBox(l));
    return b;
}

// The labels of the centring plan set at text height `th`, one block after
// the other, each in the free place that suits it best.
class CentringLayout {
public:
    CentringLayout(const CentringParts& parts, double th, const PlanArea* area)
        : parts_(parts), th_(th), area_(area), plan_(parts.drawing) {
        // The drawing with the marks on the reference line, which stand a
        // text height either side of it.
        drawing_ = plan_.bounds();
        drawing_.yMin = std::min(drawing_.yMin, -th) - th / 2;
        drawing_.yMax = std::max(drawing_.yMax, th) + th / 2;
        whole_ = drawing_;
        for (bool up : {true, false}) {
            const std::vector<Callout>& group = up ? parts.above : parts.below;
            const size_t n = group.size();
            for (size_t i = 0; i < n; ++i) {
                // The wing's points stand close together: the front one's
                // text to the left of its leader, the rear one's to the right.
                const int side = !up || n == 1 ? 0 : i == 0 ? -1 : i + 1 == n ? 1 : 0;
                std::vector<double> later;
                for (size_t k = i + 1; k < n; ++k) later.push_back(group[k].x);
                callout(group[i], up, side, later);
            }
        }
        referenceName();
        settings();
    }

    Plan take() { return std::move(plan_); }

private:
    const CentringParts& parts_;
    const double th_;
    const PlanArea* area_;
    Plan plan_;
    PlanBounds drawing_, whole_;
    std::vector<PlanBounds> texts_;    // the labels set so far
    std::vector<PlanBounds> leaders_;  // the leader lines drawn so far

    double lineGap() const { return kPlanLinePitch * th_; }

    bool freeOfTexts(const PlanBounds& b) const {
        for (const PlanBounds& t : texts_)
            if (Overlap(b, t)) return false;
        return true;
    }
    bool free(const PlanBounds& b) const {
        if (Overlap(b, drawing_) || !freeOfTexts(b)) return false;
        for (const PlanBounds& l : leaders_)
            if (Overlap(b, l)) return false;
        return true;
    }

    // How well the whole would read with `b` added: the scale it would be
    // drawn at in the area, or without one, the less room the better.
    double merit(const PlanBounds& b) const {
        const PlanBounds u = unite(whole_, b);
        if (area_) return std::min(area_->width / std::max(u.width(), 1e-9), area_->height / std::max(u.height(), 1e-9));
        return -u.width() * u.height();
    }

    // The heights, going away from the drawing (up or down), where a block
    // standing at `from` or just clear of a text already set could go.
    // A block's foot (up) or head (down) at y leaves its text's box 0.3 text
    // height beyond y: half a text height keeps a gap.
    std::vector<double> rows(double from, bool up) const {
        std::vector<double> ys{from};
        for (const PlanBounds& t : texts_) {
            const double y = up ? t.yMax + th_ / 2 : t.yMin - th_ / 2;
            if (up ? y > from : y < from) ys.push_back(y);
        }
        std::sort(ys.begin(), ys.end(), [up](double a, double b) { return up ? a < b : a > b; });
        return ys;
    }

    void put(const std::vector<PlanLabel>& block) {
        for (const PlanLabel& l : block) plan_.labels.push_back(l);
        const PlanBounds b = boxOf(block);
        texts_.push_back(b);
        whole_ = unite(whole_, b);
    }

    // A caption and its figure in a block beside their leader (side -1: to
    // its left, 0: centred on it, 1: to its right), the block's foot at `y`
    // above the drawing or its head at `y` below it.
    std::vector<PlanLabel> calloutBlock(const Callout& c, bool up, int side, double y) const {
        const double x = c.x + side * th_ / 3;
        const int column = 1 - side;  // text on the left stands with its right end at the point
        PlanLabel caption{PlanLayer::Label, c.cg ? "CG" : "Label4", {x, y}, c.caption, TextAnchor::BottomLeft, th_,
                          c.colour};
        PlanLabel figure{PlanLayer::Label, c.figureKind, {x, y}, c.figure, TextAnchor::BottomLeft, th_, c.colour};
        if (up) {
            figure.anchor = static_cast<TextAnchor>(6 + column);
            caption.anchor = figure.anchor;
            caption.at.y = y + static_cast<double>(LayoutLabel(figure).size()) * lineGap();
        } else {
            caption.anchor = static_cast<TextAnchor>(column);
            figure.anchor = caption.anchor;
            figure.at.y = y - lineGap();
        }
        return {caption, figure};
    }

    // `later`: the stations of the marks whose leaders are still to rise on
    // this side; a text that stood across one would be crossed by it.
    void callout(const Callout& c, bool up, int preferred, const std::vector<double>& later) {
        const double r = th_ * 0.6;
        if (c.cg) {
            PlanShape mark;
            mark.layer = PlanLayer::Mark;
            mark.kind = "CG";
            mark.points = circle({c.x, 0}, r);
            mark.fill = c.colour;
            mark.colour = c.colour;
            plan_.shapes.push_back(std::move(mark));
        } else {
            plan_.segments.push_back({PlanLayer::Mark, c.caption, {c.x, -th_}, {c.x, th_}, c.colour, false});
        }
        const double start = up ? drawing_.yMax + th_ / 2 : drawing_.yMin - th_ / 2;
        struct Choice {
            int side;
            double y;
            bool clean;  // the leader crosses no text
        };
        // A leader under a centred text stops at the edge of its box.
        const auto leaderEnd = [&](int side, double y) { return side == 0 ? y + (up ? -0.3 : 0.3) * th_ : y; };
        const auto across = [&](const PlanBounds& box) {
            for (double x : later)
                if (box.xMin < x && x < box.xMax) return true;
            return false;
        };
        std::optional<Choice> best;
        double bestMerit = 0;
        const int sides[3] = {preferred, preferred == 0 ? 1 : 0, preferred == 0 ? -1 : -preferred};
        // Clear of the leaders to come if that can be; the row above every
        // text always is free of the rest.
        for (bool keepClear : {true, false}) {
            for (int side : sides) {
                // On each side the nearest free row, one whose leader
                // crosses no text first; of the sides, the one that keeps
                // the whole most readable.
                std::optional<Choice> near;
                const PlanBounds atStart = boxOf(calloutBlock(c, up, side, start));
                for (double y : rows(start, up)) {
                    const PlanBounds box = raised(atStart, y - start);
                    if (!free(box) || (keepClear && across(box))) continue;
                    const double end = leaderEnd(side, y);
                    const bool clean = freeOfTexts({c.x, std::min(0.0, end), c.x, std::max(0.0, end), false});
                    if (!near || (clean && !near->clean)) near = Choice{side, y, clean};
                    if (clean) break;
                }
                if (!near) continue;
                const double m = merit(raised(atStart, near->y - start));
                if (!best || (near->clean && !best->clean) ||
                    (near->clean == best->clean && m > bestMerit * (1 + 1e-9))) {
                    best = near;
                    bestMerit = m;
                }
            }
            if (best) break;
        }
        const Choice ch = *best;
        const double end = leaderEnd(ch.side, ch.y);
        plan_.segments.push_back({PlanLayer::Construction, c.caption, {c.x, up ? r : -r}, {c.x, end}, c.colour, true});
        put(calloutBlock(c, up, ch.side, ch.y));
        leaders_.push_back({c.x - th_ / 10, std::min(0.0, end), c.x + th_ / 10, std::max(0.0, end), false});
    }

    // The first free place along a column of candidate heights.
    template <typename Make>
    std::optional<std::vector<PlanLabel>> firstFree(double from, bool up, Make make) const {
        const PlanBounds atFrom = boxOf(make(from));
        for (double y : rows(from, up)) {
            if (free(raised(atFrom, y - from))) return make(y);
        }
        return std::nullopt;
    }

    // Of the candidate blocks, the one that keeps the whole most readable.
    void putBest(const std::vector<std::optional<std::vector<PlanLabel>>>& candidates) {
        const std::vector<PlanLabel>* best = nullptr;
        double bestMerit = 0;
        for (const auto& c : candidates) {
            if (!c) continue;
            const double m = merit(boxOf(*c));
            if (!best || m > bestMerit + 1e-12) {
                best = &*c;
                bestMerit = m;
            }
        }
        if (best) put(*best);
    }

    // The reference line's name: after the line's end, or above or below the
    // drawing's rear end.
    void referenceName() {
        const char* name = parts_.referenceName;
        auto at = [&](PlanPoint p, TextAnchor anchor) {
            return std::vector<PlanLabel>{{PlanLayer::Label, name, p, name, anchor, th_, kConstructionInk}};
        };
        std::vector<std::optional<std::vector<PlanLabel>>> candidates;
        if (auto beside = at({parts_.refEnd + th_ / 2, 0}, TextAnchor::MiddleLeft); free(boxOf(beside))) {
            candidates.push_back(beside);
        }
        const double right = drawing_.xMax;
        candidates.push_back(firstFree(drawing_.yMax + th_ / 2, true,
                                       [&](double y) { return at({right, y}, TextAnchor::BottomRight); }));
        candidates.push_back(firstFree(drawing_.yMin - th_ / 2, false,
                                       [&](double y) { return at({right, y}, TextAnchor::TopRight); }));
        putBest(candidates);
    }

    // The settings, one under the other, in a corner of the drawing or in a
    // column after it.
    void settings() {
        // The block's head at p.y, or its foot when it stands above the drawing.
        auto block = [&](PlanPoint p, bool fromTop, bool alignLeft) {
            std::vector<PlanLabel> out;
            const double n = static_cast<double>(parts_.settings.size());
            double y = fromTop ? p.y : p.y + (n - 1) * lineGap() + th_;
            const TextAnchor anchor = alignLeft ? TextAnchor::TopLeft : TextAnchor::TopRight;
            for (const auto& [kind, text] : parts_.settings) {
                out.push_back({PlanLayer::Label, kind, {p.x, y}, text, anchor, th_, kInk});
                y -= lineGap();
            }
            return out;
        };
        const double left = drawing_.xMin, right = drawing_.xMax;
        std::vector<std::optional<std::vector<PlanLabel>>> candidates;
        for (bool alignLeft : {true, false}) {
            const double x = alignLeft ? left : right;
            candidates.push_back(firstFree(drawing_.yMin - th_ / 2, false,
                                           [&](double y) { return block({x, y}, true, alignLeft); }));
            candidates.push_back(firstFree(drawing_.yMax + th_ / 2, true,
                                           [&](double y) { return block({x, y}, false, alignLeft); }));
        }
        // A column after everything else, level with the top of the drawing.
        candidates.push_back(firstFree(drawing_.yMax, false,
                                       [&](double y) { return block({whole_.xMax + th_, y}, true, true); }));
        putBest(candidates);
    }
};

}  // namespace

Plan DrawCentringPlan(const Workbench& wb) {
    const CentringParts parts = centringParts(wb);
    return CentringLayout(parts, textHeightFor(parts.extent), nullptr).take();
}

Plan DrawCentringPlan(const Workbench& wb, const PlanArea& area) {
    const CentringParts parts = centringParts(wb);
    if (!(area.width > 0) || !(area.height > 0) || !(area.textHeight > 0)) {
        return CentringLayout(parts, textHeightFor(parts.extent), nullptr).take();
    }
    // The text keeps its height on the area whatever the scale: the larger
    // the scale, the less room the drawing leaves the labels. Look for the
    // largest scale at which the plan, its labels set for that scale, still
    // fits the area. The labels take other places as the room changes, so
    // that fitting is not monotonic in the scale: step down from the
    // drawing's own scale, then narrow the last step.
    const double top = PlanScale(parts.drawing, area.width, area.height);
    auto fitted = [&](double textHeight) -> std::optional<Plan> {
        auto laidOut = [&](double scale) { return CentringLayout(parts, textHeight / scale, &area).take(); };
        auto fits = [&](double scale, const Plan& p) {
            return PlanScale(p, area.width, area.height) >= scale * (1 - 1e-9);
        };
        constexpr double kStep = 0.92;
        for (double scale = top; scale > top / 256; scale *= kStep) {
            Plan p = laidOut(scale);
            if (!fits(scale, p)) continue;
            double lo = scale, hi = scale / kStep;
            for (int i = 0; i < 6 && scale < top; ++i) {
                const double mid = std::sqrt(lo * hi);
                Plan q = laidOut(mid);
                if (fits(mid, q)) {
                    lo = mid;
                    p = std::move(q);
                } else {
                    hi = mid;
                }
            }
            return p;
        }
        return std::nullopt;
    };
    if (std::optional<Plan> p = fitted(area.textHeight)) return std::move(*p);
    // An area too small for the text asked for: the smallest text that reads.
    if (area.textHeight > kPlanSmallestText) {
        if (std::optional<Plan> p = fitted(kPlanSmallestText)) return std::move(*p);
    }
    return CentringLayout(parts, kPlanSmallestText / (top / 256), &area).take();
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

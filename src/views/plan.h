// The 2D plans of the design window as plain geometry in millimetres: the
// centring plan, the plan seen from above and the three flat views. The
// calculations fill a Plan from the fields; the window paints it, the export
// writes it as SVG or DXF at true scale, the tests read it.
//
// Plan axes: x to the right, y up. The side views run from the nose at x = 0
// backwards, y the height above the fuselage's reference line; the view from
// above has the pilot's right wing up; the view from the front has the
// pilot's right wing on the left, as one facing the model sees it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/chart_data.h"

namespace tarvokin {

class Workbench;

// Drawing order, where things overlap: outlines first, labels last.
enum class PlanLayer : uint8_t { Outline, Construction, Mark, Label };
inline constexpr int kPlanLayerCount = 4;

struct PlanPoint {
    double x = 0, y = 0;
    bool operator==(const PlanPoint&) const = default;
};

// Each item says what it is (`kind`: the part or the control of the window it
// stands for, "Aile", "Sh_Stab", "Label4"...) and on which layer it is drawn.
struct PlanSegment {
    PlanLayer layer = PlanLayer::Outline;
    std::string kind;
    PlanPoint a, b;
    Rgb colour;
    bool dashed = false;
};

struct PlanPolyline {
    PlanLayer layer = PlanLayer::Outline;
    std::string kind;
    std::vector<PlanPoint> points;
    bool closed = false;
    Rgb colour;
    bool dashed = false;
};

// A closed outline filled with `fill` and drawn round with `colour`.
struct PlanShape {
    PlanLayer layer = PlanLayer::Outline;
    std::string kind;
    std::vector<PlanPoint> points;
    Rgb fill;
    Rgb colour;
};

// Which point of the text's box stands at `at`.
enum class TextAnchor : uint8_t {
    TopLeft, TopCentre, TopRight,
    MiddleLeft, Centre, MiddleRight,
    BottomLeft, BottomCentre, BottomRight,
};

// A text; it may hold line ends (kLabelLineEnd), one line under the other.
// `height` is the height of a line's capitals in mm at true scale.
struct PlanLabel {
    PlanLayer layer = PlanLayer::Label;
    std::string kind;
    PlanPoint at;
    std::string text;
    TextAnchor anchor = TextAnchor::BottomLeft;
    double height = 5;
    Rgb colour;
};

struct PlanBounds {
    double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
    bool empty = true;
    double width() const { return xMax - xMin; }
    double height() const { return yMax - yMin; }
};

struct Plan {
    std::string title;
    std::vector<PlanShape> shapes;
    std::vector<PlanPolyline> polylines;
    std::vector<PlanSegment> segments;
    std::vector<PlanLabel> labels;

    // Box of every point of the drawing, labels' anchor points included.
    PlanBounds bounds() const;
    // Box of the drawing and of its labels' text (LabelBox).
    PlanBounds boundsWithText() const;
    bool emptyDrawing() const { return shapes.empty() && polylines.empty() && segments.empty() && labels.empty(); }
};

// One line of a label as it is set: its text, the point at the middle of the
// line's capitals on the anchor's side (left, centre or right), and that side.
enum class TextAlign : uint8_t { Left, Centre, Right };
struct PlanTextLine {
    std::string text;
    PlanPoint middle;
    TextAlign align = TextAlign::Left;
};
// Lines follow one another 1.6 text heights apart.
inline constexpr double kPlanLinePitch = 1.6;
std::vector<PlanTextLine> LayoutLabel(const PlanLabel& label);

// The box a label's text covers: each line kPlanLinePitch text heights high,
// centred on its middle, and kPlanCharWidth text heights a character wide
// plus half a height. A sans-serif font set at 1.4 text heights a pixel size,
// as the windows and the exported files set it, stays inside.
inline constexpr double kPlanCharWidth = 0.85;
PlanBounds LabelBox(const PlanLabel& label);

// Whether two boxes share more than an edge.
bool Overlap(const PlanBounds& a, const PlanBounds& b);

// Pixels a millimetre for a picture area of the given size: the drawing with
// its labels' text (boundsWithText) as large as both the area's width and its
// height allow, with a margin of a twentieth on each side; 1 for an empty
// drawing or area.
double PlanScale(const Plan& plan, double areaWidth, double areaHeight);

// A picture area in pixels and the height of a line's capitals on it: 7.2
// pixels set a 10-pixel font, kPlanSmallestText the 9-pixel font under which
// the windows set no text.
inline constexpr double kPlanSmallestText = 6.5;
struct PlanArea {
    double width = 0, height = 0;
    double textHeight = 7.2;
};

// The three flat views and the 3D view, as the buttons PB_2D show them.
enum class PlanView : uint8_t { Profil, Dessus, Face, Vue3D };
// "Vue Profil", "Vue Dessus", "Vue Face", "Vue 3D".
const char* PlanViewCaption(PlanView v);

// The side plan of the centring: the wing's and the stabiliser's mean chords
// at their incidences, the fuselage and its reference line, the neutral points
// of the wing, stabiliser, fuselage and whole model, the CG mark at the wing
// station of F_3D.Slider1 and their figures. No stabiliser (no area, or a
// flying wing) draws neither its chord nor its neutral point.
//
// Each caption stands where it overlaps neither another nor the drawing nor a
// leader line: the neutral points and the CG in the lowest free row above or
// below the drawing, the settings and the reference line's name where they
// make the whole smallest. Without an area the text suits a plan printed at
// true scale; with one it has the area's text height once the plan is
// scaled to the area (PlanScale), the drawing as large as the room the
// labels leave allows.
Plan DrawCentringPlan(const Workbench& wb);
Plan DrawCentringPlan(const Workbench& wb, const PlanArea& area);

// The whole aircraft seen from above: wing and stabiliser panels as they
// project with their dihedrals, the fuselage outline with the spacing of its
// frames, the fin, and the construction of the mean aerodynamic chord on the
// left half wing.
Plan DrawPlanView(const Workbench& wb);

// The plan of a view button: the side view, the view from above (the plan
// view) or the front view, drawn panel by panel through the sweeps and
// dihedrals; nothing for "Vue 3D", which goes back to the 3D view.
std::optional<Plan> DrawViews(const Workbench& wb, PlanView view);

// A number as the labels show it: rounded to two decimals, no trailing zeros.
std::string CurveText(double number);

}  // namespace tarvokin

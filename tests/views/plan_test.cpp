// The 2D plans: figures and their formats on the centring plan, the mean
// chord construction and frame spacings of the plan view, the flat views,
// and the SVG and DXF files read back at true scale.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <optional>
#include <regex>
#include <sstream>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "design/recalc.h"
#include "design/summary.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "views/plan.h"
#include "views/plan_export.h"
#include "support/installed_workbench.h"

namespace tarvokin {
namespace {

using test::TempDir;

struct Demo {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Sheet& s = wb.sheet;
    Demo() {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
        wb.projectFilePath = (dir.path() / "MODELES" / "DEMO.MDL").string();
        LoadProject(wb);
    }
    void noStab() {
        for (const grid::Row* r : {&grid::kStabRoot, &grid::kStabTip, &grid::kStabLength})
            for (Cell c : *r) s.set(c, "0");
        RecalcAll(wb);
    }
};

const PlanLabel* label(const Plan& p, const std::string& kind) {
    for (const PlanLabel& l : p.labels)
        if (l.kind == kind) return &l;
    return nullptr;
}
const PlanShape* shape(const Plan& p, const std::string& kind) {
    for (const PlanShape& s : p.shapes)
        if (s.kind == kind) return &s;
    return nullptr;
}
bool hasText(const Plan& p, const std::string& text) {
    for (const PlanLabel& l : p.labels)
        if (l.text.find(text) != std::string::npos) return true;
    return false;
}
double minX(const std::vector<PlanPoint>& pts) {
    double m = pts.front().x;
    for (const PlanPoint& q : pts) m = std::min(m, q.x);
    return m;
}

TEST(CentringPlan, TheCgLabelHasTwoDecimalsEachAndALineEndInTheMiddle) {
    Demo d;
    Plan p = DrawCentringPlan(d.wb);
    const PlanLabel* cg = label(p, "b30");
    ASSERT_NE(cg, nullptr);
    const std::string n = R"(-?\d+\.\d\d)";
    EXPECT_TRUE(std::regex_match(cg->text, std::regex(n + " mm \\(= " + n + " % cam\\)" + kLabelLineEnd + "Cz aile = " + n)))
        << cg->text;
    // The percentage field holds one decimal; the label shows two.
    EXPECT_NE(cg->text.find(fixed(d.s.num(F_GEO_SF_REGLAGES::B30), 2) + " % cam)"), std::string::npos);
    EXPECT_EQ(LayoutLabel(*cg).size(), 2u);
    const PlanLabel* quarter = label(p, "j99");
    ASSERT_NE(quarter, nullptr);
    EXPECT_EQ(quarter->text, d.s.text(F_GEO_SF::j9) + " mm (=25 % de la CAM)");
    for (const char* caption : {"Foyer Aile", "Foyer Stab", "Foyer Fuselage", "Foyer Global", "Marge statique",
                                "Ligne de référence fuselage"})
        EXPECT_TRUE(hasText(p, caption)) << caption;
    EXPECT_TRUE(hasText(p, "Callage stab = "));
    // In English the same labels in the modeller's words, the figures alike.
    d.wb.settings.languageCode = "1";
    const Plan english = DrawCentringPlan(d.wb);
    EXPECT_EQ(label(english, "j99")->text, d.s.text(F_GEO_SF::j9) + " mm (=25 % of the MAC)");
    for (const char* caption : {"Wing NP", "Static margin", "Fuselage datum line", "Wing incidence = "})
        EXPECT_TRUE(hasText(english, caption)) << caption;
    EXPECT_FALSE(hasText(english, "Foyer"));
    d.wb.settings.languageCode = "0";
    for (const PlanLabel& l : p.labels) EXPECT_EQ(l.layer, PlanLayer::Label);

    // The CG mark and the wing follow the wing station of slider 0; the fuselage stays.
    const double cgX = shape(p, "CG")->points[0].x, wingX = minX(shape(p, "Shape_Aile")->points);
    d.s.set(F_3D::Slider1[0], plain(d.s.num(F_3D::Slider1[0]) + 20));
    p = DrawCentringPlan(d.wb);
    EXPECT_NEAR(shape(p, "CG")->points[0].x - cgX, 20, 1e-9);
    EXPECT_NEAR(minX(shape(p, "Shape_Aile")->points) - wingX, 20, 1e-9);
    EXPECT_EQ(minX(shape(p, "Fuselage")->points), 0);
}

// The centring plan as the design window shows it at its first size on a
// 1280 x 800 screen (a picture area of 312 x 202 pixels) and on a 1920 x 1080
// one (813 x 257), and printed at true scale: no text over another, over the
// drawing or across a line; on the screen the text at the height asked for,
// everything inside the area and the drawing no dot.
TEST(CentringPlan, NoTextOverlapsAnotherOrTheDrawingAtTheWindowsFirstSizes) {
    Demo d;
    struct Case {
        std::optional<PlanArea> area;
        const char* name;
    };
    // In every language: the English and Italian words are the longest.
    for (const char* language : {"0", "1", "2", "3"})
    for (const Case& c : {Case{PlanArea{312, 202}, "1280 x 800"}, Case{PlanArea{813, 257}, "1920 x 1080"},
                          Case{std::nullopt, "true scale"}}) {
        SCOPED_TRACE(std::string(c.name) + ", language " + language);
        d.wb.settings.languageCode = language;
        const Plan p = c.area ? DrawCentringPlan(d.wb, *c.area) : DrawCentringPlan(d.wb);
        std::vector<PlanBounds> texts;
        for (const PlanLabel& l : p.labels) texts.push_back(LabelBox(l));
        ASSERT_GE(texts.size(), 15u);
        for (size_t i = 0; i < texts.size(); ++i)
            for (size_t j = i + 1; j < texts.size(); ++j)
                EXPECT_FALSE(Overlap(texts[i], texts[j])) << p.labels[i].text << " | " << p.labels[j].text;
        auto boxOf = [](const std::vector<PlanPoint>& pts) {
            PlanBounds b{pts[0].x, pts[0].y, pts[0].x, pts[0].y, false};
            for (const PlanPoint& q : pts) b = {std::min(b.xMin, q.x), std::min(b.yMin, q.y), std::max(b.xMax, q.x), std::max(b.yMax, q.y), false};
            return b;
        };
        for (size_t i = 0; i < texts.size(); ++i) {
            for (const PlanShape& s : p.shapes) EXPECT_FALSE(Overlap(texts[i], boxOf(s.points))) << p.labels[i].text << " | " << s.kind;
            for (const PlanSegment& g : p.segments) EXPECT_FALSE(Overlap(texts[i], boxOf({g.a, g.b}))) << p.labels[i].text << " | " << g.kind;
        }
        if (!c.area) continue;
        const double scale = PlanScale(p, c.area->width, c.area->height);
        for (const PlanLabel& l : p.labels) EXPECT_NEAR(l.height * scale, c.area->textHeight, 0.05 * c.area->textHeight) << l.text;
        const PlanBounds all = p.boundsWithText();
        EXPECT_LE(all.width() * scale, c.area->width);
        EXPECT_LE(all.height() * scale, c.area->height);
        EXPECT_GT(boxOf(shape(p, "Fuselage")->points).width() * scale, c.area->width / 3);
    }
}

TEST(CentringPlan, NoStabilizerDrawsNeitherItsChordNorItsNeutralPoint) {
    Demo d;
    RecalcAll(d.wb);
    ASSERT_NE(shape(DrawCentringPlan(d.wb), "Sh_Stab"), nullptr);
    d.noStab();
    Plan p = DrawCentringPlan(d.wb);
    EXPECT_EQ(shape(p, "Sh_Stab"), nullptr);
    EXPECT_FALSE(hasText(p, "Foyer Stab"));
    EXPECT_FALSE(hasText(p, "Callage stab"));
    EXPECT_NE(shape(p, "Shape_Aile"), nullptr);
    EXPECT_TRUE(hasText(p, "Foyer Global"));
    for (const PlanSegment& g : p.segments) EXPECT_NE(g.kind, "Foyer Stab");
    // Neither in the views.
    for (PlanView v : {PlanView::Profil, PlanView::Dessus, PlanView::Face}) EXPECT_EQ(shape(*DrawViews(d.wb, v), "Stab"), nullptr);
    // A field left unreadable draws the rest, as the fields allow.
    d.s.set(F_GEO_SF::b5, "-");
    d.s.set(F_GEO_STAB::b16, "-");
    EXPECT_NO_THROW(p = DrawCentringPlan(d.wb));
    EXPECT_NO_THROW(p = DrawPlanView(d.wb));
    EXPECT_NE(shape(p, "Aile"), nullptr);  // panel 2 still stands
}

TEST(PlanView, MeanChordConstructionAndFrameSpacings) {
    Demo d;
    const Plan p = DrawPlanView(d.wb);
    std::vector<PlanSegment> macs;
    for (const PlanSegment& g : p.segments)
        if (g.kind == "CAM") macs.push_back(g);
    ASSERT_EQ(macs.size(), 3u);  // one for each panel, one for the wing
    // Panel 1 (230 to 205 mm over 650 mm at 3 degrees): its mean chord, at
    // its station on the left half, from the leading edge swept by it.
    const double cr = 230, ct = 205, t = (cr + 2 * ct) / (3 * (cr + ct));
    EXPECT_NEAR(macs[0].b.x - macs[0].a.x, PanelMac(d.s, 1), 1e-9);
    EXPECT_NEAR(macs[0].a.y, -650 * std::cos(3 * std::numbers::pi / 180) * t, 1e-9);
    EXPECT_NEAR(macs[0].a.x, 330 + PanelSweepShift(d.s, 1), 1e-9);
    EXPECT_NEAR(macs[2].b.x - macs[2].a.x, d.s.num(F_3D::j5), 1e-9);

    std::vector<std::string> spacings;
    for (const PlanLabel& l : p.labels)
        if (l.kind == "Cote") spacings.push_back(l.text);
    EXPECT_EQ(spacings, (std::vector<std::string>{"60 m/m", "120 m/m", "150 m/m", "230 m/m", "230 m/m", "230 m/m",
                                                   "230 m/m"}));
    EXPECT_EQ(CurveText(12.345), "12.35");
    EXPECT_EQ(CurveText(-0.5), "-0.5");
}

TEST(FlatViews, EachButtonItsProjectionAndTheThreeDButtonNone) {
    Demo d;
    EXPECT_FALSE(DrawViews(d.wb, PlanView::Vue3D));
    EXPECT_STREQ(PlanViewCaption(PlanView::Face), "Vue Face");
    const Plan face = *DrawViews(d.wb, PlanView::Face);
    // Seen from the front the tips rise by both dihedrals from a wing that
    // hangs 10 mm low, and the washout of 1.5 degrees lifts the tip's
    // trailing edge above its leading edge.
    double top = -1e9;
    for (const PlanShape& s : face.shapes)
        if (s.kind == "Aile")
            for (const PlanPoint& q : s.points) top = std::max(top, q.y);
    const double deg = std::numbers::pi / 180;
    EXPECT_NEAR(top, -10 + 650 * std::sin(3 * deg) + 450 * std::sin(6 * deg) + 140 * std::sin(1.5 * deg) * std::cos(6 * deg),
                1e-6);
    const Plan side = *DrawViews(d.wb, PlanView::Profil);
    ASSERT_NE(shape(side, "Dérive"), nullptr);
    EXPECT_NEAR(minX(shape(side, "Dérive")->points), d.s.num(F_GEO_STAB::Text14), 1e-9);
    EXPECT_EQ(DrawViews(d.wb, PlanView::Dessus)->shapes.size(), DrawPlanView(d.wb).shapes.size());
}

// Group code / value pairs of a DXF file.
std::vector<std::pair<int, std::string>> dxfPairs(const std::string& bytes) {
    std::vector<std::pair<int, std::string>> out;
    std::istringstream in(bytes);
    std::string code, value;
    while (std::getline(in, code) && std::getline(in, value)) {
        if (!value.empty() && value.back() == '\r') value.pop_back();
        out.emplace_back(std::stoi(code), value);
    }
    return out;
}

int count(const std::string& text, const std::string& what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

TEST(PlanExport, SvgAndDxfReadBackAtTrueScale) {
    Plan p;
    p.shapes.push_back({PlanLayer::Outline, "Aile", {{0, 0}, {1000, 0}, {1000, 500}, {0, 500}}, {200, 200, 255}, {}});
    p.polylines.push_back({PlanLayer::Construction, "Cote", {{0, -50}, {500, -50}, {500, -80}}, false, {}, true});
    p.segments.push_back({PlanLayer::Mark, "CAM", {0, 600}, {1000, 600}, {255, 0, 0}, false});
    p.segments.push_back({PlanLayer::Construction, "Couple", {10, 0}, {10, 500}, {}, false});
    p.labels.push_back({PlanLayer::Label, "F32", {100, 250}, std::string("Vé longitudinal = 1.25 °") + kLabelLineEnd + "x",
                        TextAnchor::TopLeft, 8, {}});

    const std::vector<PlanTextLine> lines = LayoutLabel(p.labels[0]);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].middle.y, 250 - 4);
    EXPECT_EQ(lines[1].middle.y, 250 - 4 - kPlanLinePitch * 8);

    const std::string svg = PlanToSvg(p);
    EXPECT_EQ(count(svg, "<polygon "), 1);
    EXPECT_EQ(count(svg, "<polyline "), 1);
    EXPECT_EQ(count(svg, "<line "), 2);
    EXPECT_EQ(count(svg, "<tspan "), 2);
    EXPECT_NE(svg.find("stroke-dasharray"), std::string::npos);
    EXPECT_NE(svg.find("Vé longitudinal"), std::string::npos);
    // One user unit a millimetre: the box's size in mm is the view box's size.
    std::smatch m;
    ASSERT_TRUE(std::regex_search(svg, m, std::regex(R"re(width="([0-9.]+)mm" height="([0-9.]+)mm" viewBox="(\S+) (\S+) (\S+) (\S+)")re")));
    EXPECT_EQ(m[1], m[5]);
    EXPECT_EQ(m[2], m[6]);
    EXPECT_GT(std::stod(m[1]), 1000);
    EXPECT_NE(svg.find(R"(<line x1="0.000" y1="-600.000" x2="1000.000" y2="-600.000")"), std::string::npos);

    const std::string dxf = PlanToDxf(p);
    const auto pairs = dxfPairs(dxf);
    std::map<std::string, int> entities;
    bool inEntities = false;
    for (size_t i = 0; i + 1 < pairs.size(); ++i) {
        if (pairs[i] == std::pair<int, std::string>{2, "ENTITIES"}) inEntities = true;
        if (inEntities && pairs[i].first == 0) ++entities[pairs[i].second];
    }
    EXPECT_EQ(entities["LINE"], 2);
    EXPECT_EQ(entities["POLYLINE"], 2);
    EXPECT_EQ(entities["VERTEX"], 7);
    EXPECT_EQ(entities["SEQEND"], 2);
    EXPECT_EQ(entities["TEXT"], 2);
    EXPECT_EQ(pairs.back(), (std::pair<int, std::string>{0, "EOF"}));
    EXPECT_NE(dxf.find("AC1009"), std::string::npos);
    EXPECT_NE(dxf.find("V\xE9 longitudinal = 1.25 \xB0"), std::string::npos);  // Latin-1 on disk
    // Layers in drawing order; the mean chord line runs 1000 mm on its own.
    auto line = std::find(pairs.begin(), pairs.end(), std::pair<int, std::string>{0, "LINE"});
    ASSERT_NE(line, pairs.end());
    EXPECT_EQ(line[1], (std::pair<int, std::string>{8, "CONSTRUCTION"}));
    line = std::find(line + 1, pairs.end(), std::pair<int, std::string>{0, "LINE"});
    ASSERT_NE(line, pairs.end());
    EXPECT_EQ(line[1], (std::pair<int, std::string>{8, "REPERES"}));
    EXPECT_EQ(line[3], (std::pair<int, std::string>{10, "0.000"}));
    EXPECT_EQ(line[6], (std::pair<int, std::string>{11, "1000.000"}));

    TempDir dir;
    ASSERT_TRUE(SavePlanSvg(p, dir / "plan.svg"));
    EXPECT_EQ(test::readBytes(dir / "plan.svg"), svg);
    ASSERT_TRUE(SavePlanDxf(p, dir / "plan.dxf"));
    EXPECT_EQ(test::readBytes(dir / "plan.dxf"), dxf);
    EXPECT_FALSE(SavePlanDxf(p, dir / "missing" / "plan.dxf"));
    EXPECT_EQ(test::readBytes(dir / "plan.dxf"), dxf);
}

TEST(PlanExport, TheDemoPlansKeepEveryLabelLine) {
    Demo d;
    for (const Plan& p : {DrawCentringPlan(d.wb), DrawPlanView(d.wb)}) {
        int lines = 0;
        for (const PlanLabel& l : p.labels) lines += static_cast<int>(LayoutLabel(l).size());
        const std::string svg = PlanToSvg(p), dxf = PlanToDxf(p);
        EXPECT_EQ(count(svg, "<tspan "), lines);
        EXPECT_EQ(count(dxf, "\r\nTEXT\r\n"), lines);
        EXPECT_EQ(count(dxf, "\r\nLINE\r\n"), static_cast<int>(p.segments.size()));
    }
}

}  // namespace
}  // namespace tarvokin

// Section outlines and lofted skins: resampling keeps the edges, skins face
// outwards and close where they should, panels follow their sweep, dihedral
// and twist with the signs of the design fields.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <utility>

#include "views/mesh_outline.h"
#include "views/mesh_skin.h"

namespace tarvokin {
namespace {

MeshPoint sub(MeshPoint a, MeshPoint b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
MeshPoint cross(MeshPoint a, MeshPoint b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double dot(MeshPoint a, MeshPoint b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

// On a convex solid every face's normal points away from an inner point.
void ExpectFacingAwayFrom(const SkinMesh& m, MeshPoint inside) {
    int checked = 0;
    for (const MeshTriangle& t : m.faces) {
        const MeshPoint a = m.vertices[t.a], b = m.vertices[t.b], c = m.vertices[t.c];
        const MeshPoint n = cross(sub(b, a), sub(c, a));
        if (dot(n, n) < 1e-12) continue;  // a sliver where a row collapses
        const MeshPoint centroid{(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3, (a.z + b.z + c.z) / 3};
        EXPECT_GT(dot(n, sub(centroid, inside)), 0) << "face " << t.a << " " << t.b << " " << t.c;
        ++checked;
    }
    EXPECT_GT(checked, 0);
}

// Directed edges of the faces: each once at most; returns those whose
// reverse is missing (the border of an open skin).
int BorderEdges(const SkinMesh& m) {
    std::map<std::pair<int, int>, int> edges;
    for (const MeshTriangle& t : m.faces) {
        for (auto e : {std::pair{t.a, t.b}, {t.b, t.c}, {t.c, t.a}}) ++edges[e];
    }
    int border = 0;
    for (const auto& [e, n] : edges) {
        EXPECT_EQ(n, 1) << "edge " << e.first << "-" << e.second << " used twice the same way";
        if (!edges.count({e.second, e.first})) ++border;
    }
    return border;
}

TEST(ResampleOutline, KeepsTheEndsAndTheLeadingEdgeAndGivesTheCount) {
    const OutlinePoints fine = NacaSection(0.04, 0.4, 0.12, 121);
    const OutlinePoints r = ResampleOutline(fine, kSectionPoints);
    ASSERT_EQ(r.size(), static_cast<size_t>(kSectionPoints));
    EXPECT_EQ(r.front(), fine.front());
    EXPECT_EQ(r.back(), fine.back());
    OutlinePoint nose = fine.front();
    for (const OutlinePoint& p : fine)
        if (p.x < nose.x) nose = p;
    EXPECT_EQ(r[kSectionPoints / 2], nose);
    // The upper side stays above the lower one at the same place along the chord.
    for (int i = 1; i < kSectionPoints / 2; ++i) {
        EXPECT_LT(r[i].x, r[i - 1].x);
        EXPECT_GT(r[i].y, r[kSectionPoints - 1 - i].y);
    }
    // Repeats do not count; too little to draw gives nothing.
    OutlinePoints doubled;
    for (const OutlinePoint& p : fine) doubled.insert(doubled.end(), {p, p});
    EXPECT_EQ(ResampleOutline(doubled, kSectionPoints).size(), static_cast<size_t>(kSectionPoints));
    EXPECT_TRUE(ResampleOutline({{1, 0}, {1, 0}}, kSectionPoints).empty());
    EXPECT_TRUE(ResampleOutline({{1, 0}, {0, 0}, {1, 0}}, 2).empty());
}

TEST(PanelPoint, SweepDihedralAndTwistHaveTheSignsOfTheFields) {
    PanelShape p;
    p.rootChord = 200;
    p.tipChord = 100;
    p.length = 500;
    p.sweep = 60;
    p.root = {10, 5, -20};
    const MeshPoint tipLe = PanelPoint(p, 0, 0, 1);
    EXPECT_NEAR(tipLe.x, 70, 1e-9);
    EXPECT_NEAR(tipLe.z, -520, 1e-9);  // the built panel is the left one
    EXPECT_NEAR(PanelPoint(p, 1, 0, 1).x - tipLe.x, 100, 1e-9);
    p.dihedral = 90;  // a winglet stands straight up from its root
    EXPECT_NEAR(PanelPoint(p, 0, 0, 1).y, 505, 1e-9);
    EXPECT_NEAR(PanelPoint(p, 0, 0, 1).z, -20, 1e-9);
    p.dihedral = 30;
    EXPECT_NEAR(PanelPoint(p, 0, 0, 1).y, 5 + 500 * 0.5, 1e-9);
    // Washout (negative twist) puts the tip's leading edge below its trailing edge.
    p.dihedral = 0;
    p.tipTwist = -3;
    EXPECT_LT(PanelPoint(p, 0, 0, 1).y, PanelPoint(p, 1, 0, 1).y);
    EXPECT_NEAR(PanelPoint(p, 1, 0, 1).y - 5, 100 * std::sin(3 * 3.14159265358979 / 180), 1e-9);
    EXPECT_NEAR(PanelPoint(p, 1, 0, 0).y, 5, 1e-9);  // the root is not twisted
}

TEST(PanelSkin, IsAnOpenTubeFacingOutwardsWhicheverWayTheOutlineRuns) {
    PanelShape p;
    p.rootChord = p.tipChord = 200;
    p.length = 400;
    const OutlinePoints section = NacaSection(0, 0, 0.12);
    const SkinMesh skin = BuildPanelSkin(section, section, p);
    ASSERT_EQ(skin.vertices.size(), 2 * section.size());
    EXPECT_EQ(skin.faces.size(), 2 * (section.size() - 1));
    ExpectFacingAwayFrom(skin, {60, 0, -200});
    // The two open ends and the seam at the trailing edge are its only border.
    EXPECT_EQ(BorderEdges(skin), 2 * static_cast<int>(section.size() - 1) + 2);

    const OutlinePoints reversed(section.rbegin(), section.rend());
    ExpectFacingAwayFrom(BuildPanelSkin(reversed, reversed, p), {60, 0, -200});
    // The mirror copy is the right panel and still faces out.
    const SkinMesh right = Mirrored(skin);
    EXPECT_EQ(right.vertices[5].z, -skin.vertices[5].z);
    ExpectFacingAwayFrom(right, {60, 0, 200});
    EXPECT_TRUE(BuildPanelSkin(section, NacaSection(0, 0, 0.12, 21), p).vertices.empty());
}

TEST(BodySkin, ClosedEndsMakeAWatertightSkinFacingOutwards) {
    // An ellipse in the unit square, as the fuselage sections are: the end
    // caps collapse each row onto its mid line, which needs a section
    // symmetric about it.
    OutlinePoints unit;
    for (int i = 0; i <= 30; ++i) {
        const double a = 2 * 3.14159265358979 * i / 30;
        unit.push_back({0.5 + 0.5 * std::cos(a), 0.5 * std::sin(a)});
    }
    const std::vector<BodyStation> stations = {{0, 40, 50, 3}, {300, 40, 50, 3}};
    const SkinMesh body = BuildBodySkin(unit, stations, true, true);
    EXPECT_EQ(body.vertices.size(), 4 * unit.size());
    ExpectFacingAwayFrom(body, {0, 3, 150});
    BorderEdges(body);
    // Closed and facing out, the skin encloses the prism's volume: section
    // area times width, height and length.
    double volume = 0, area = 0;
    for (const MeshTriangle& t : body.faces) {
        volume += dot(body.vertices[t.a], cross(body.vertices[t.b], body.vertices[t.c])) / 6;
    }
    for (size_t i = 0; i + 1 < unit.size(); ++i) area += (unit[i].x * unit[i + 1].y - unit[i + 1].x * unit[i].y) / 2;
    EXPECT_NEAR(volume, std::fabs(area) * 40 * 50 * 300, 1e-6 * volume);
    for (const MeshPoint& v : body.vertices) {
        EXPECT_LE(std::fabs(v.x), 20 + 1e-9);
        EXPECT_GE(v.z, 0);
        EXPECT_LE(v.z, 300);
    }
    // An open body has its two rows only.
    EXPECT_EQ(BuildBodySkin(unit, stations, false, false).vertices.size(), 2 * unit.size());
}

}  // namespace
}  // namespace tarvokin

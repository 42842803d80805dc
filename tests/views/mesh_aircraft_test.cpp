// The aircraft in the 3D scene: its layout from the fields, the parts built
// from the demo model and from designs at the limits, the mirror copies, the
// placing on the fuselage, the view's orbit, colours and part switches.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "design/grid_cells.h"
#include "design/recalc.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "views/aircraft_layout.h"
#include "views/aircraft_mesh.h"
#include "views/mesh_outline.h"
#include "views/recording_surface.h"
#include "support/installed_workbench.h"

namespace tarvokin {
namespace {

using test::TempDir;

struct Demo {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Sheet& s = wb.sheet;
    Engine& e = wb.view3d.engine;
    AircraftParts& parts = wb.view3d.parts;
    Demo() {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
        wb.projectFilePath = (dir.path() / "MODELES" / "DEMO.MDL").string();
        LoadProject(wb);
    }
    void row(const grid::Row& r, std::initializer_list<double> values) {
        size_t k = 0;
        for (double v : values) s.set(r[k++], plain(v));
        for (; k < 5; ++k) s.set(r[k], "0");
    }
    // Five swept, dihedralled, twisted panels, the fourth a vertical winglet;
    // a five-panel V-tail and twin fins.
    void fivePanels() {
        row(grid::kRoot, {260, 240, 210, 160, 100});
        row(grid::kTip, {240, 210, 160, 100, 60});
        row(grid::kLength, {300, 300, 300, 120, 200});
        row(grid::kSweep, {40, 110, 200, 230, 300});
        row(grid::kTwist, {0, -1, -2, -3, -4});
        row(grid::kDihedral, {2, 4, 6, 90, 8});
        s.set(F_3D::Ch_Winglets, "1");
        s.set(F_3D::Text8, "3");  // panel 4
        row(grid::kStabRoot, {150, 130, 110, 90, 70});
        row(grid::kStabTip, {130, 110, 90, 70, 40});
        row(grid::kStabLength, {60, 60, 60, 60, 60});
        row(grid::kStabSweep, {10, 20, 30, 40, 50});
        s.setListIndex(F_GEO_STAB::b21, 7);  // 90 degrees open: each half 45 degrees up
        s.set(F_GEO_STAB::Check2, "1");
        s.set(F_GEO_STAB::Text13, "160");
    }
};

Vector3 vertex(const Engine& e, int mesh, int i) { return e.ObjectVertices[e.Meshes[mesh].FirstVertex + i]; }

void ExpectFacesInside(const Engine& e, int mesh) {
    ASSERT_TRUE(IsMesh(e, mesh));
    const MeshRecord& r = e.Meshes[mesh];
    EXPECT_GT(r.FaceCount, 0);
    for (int f = r.FirstFace; f < r.FirstFace + r.FaceCount; ++f) {
        for (int v : {e.Faces[f].A, e.Faces[f].B, e.Faces[f].C}) {
            EXPECT_GE(v, r.FirstVertex);
            EXPECT_LT(v, r.FirstVertex + r.VertexCount);
        }
    }
    for (int i = 0; i < r.VertexCount; ++i) {
        const Vector3 p = vertex(e, mesh, i);
        EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z));
    }
}

TEST(AircraftLayout, PanelsChainAlongSweepsAndDihedralsAndASkippedPanelMovesNothing) {
    Demo d;
    d.fivePanels();
    AircraftLayout a = LayoutAircraft(d.s);
    ASSERT_EQ(a.wing.size(), 5u);
    for (size_t k = 1; k < 5; ++k) {
        const MeshPoint inner = PanelPoint(a.wing[k - 1].shape, 0, 0, 1), root = PanelPoint(a.wing[k].shape, 0, 0, 0);
        EXPECT_NEAR(root.x, inner.x, 1e-9);
        EXPECT_NEAR(root.y, inner.y, 1e-9);
        EXPECT_NEAR(root.z, inner.z, 1e-9);
        // Sweeps are leading-edge positions from the wing's root.
        EXPECT_NEAR(PanelPoint(a.wing[k].shape, 0, 0, 1).x, d.s.num(grid::kSweep[k]), 1e-9);
        EXPECT_EQ(a.wing[k].shape.rootTwist, a.wing[k - 1].shape.tipTwist);
    }
    EXPECT_TRUE(a.wing[3].winglet);
    EXPECT_NEAR(a.wing[4].shape.root.y - a.wing[3].shape.root.y, 120, 1e-9);  // a vertical winglet
    EXPECT_NEAR(a.stab[0].shape.dihedral, 45, 1e-12);

    const MeshPoint outerRoot = a.wing[2].shape.root;
    d.s.set(F_GEO_SF::c5, "0");  // panel 2 loses its chords, not its span
    d.s.set(F_GEO_SF::c6, "0");
    a = LayoutAircraft(d.s);
    ASSERT_EQ(a.wing.size(), 4u);
    EXPECT_EQ(a.wing[1].panel, 3);
    EXPECT_EQ(a.wing[1].shape.root, outerRoot);
}

TEST(AircraftLayout, FramesFromTheMarkersOrPlacedAsForANewModel) {
    Demo d;
    std::vector<FuselageFrame> f = FuselageFrames(d.s);
    ASSERT_EQ(f.size(), 8u);
    EXPECT_EQ(f[3].station, 330);
    EXPECT_EQ(f[3].height, 63);
    EXPECT_EQ(f[3].yCentre, 1.5);
    EXPECT_EQ(f[3].width, 50);

    for (int n = 0; n < 8; ++n) {
        for (Cell c : {F_GEO_FUS::Couple_Y1[n], F_GEO_FUS::Couple_Y2[n], F_GEO_FUS::CoupleV_Y1[n],
                       F_GEO_FUS::CoupleV_Y2[n]})
            d.s.set(c, "0");
    }
    // Length 1250, nose 330, root chord 230: frames at a sixth and half the
    // nose, the nose distance, the root's trailing edge, three even steps, the tail.
    f = FuselageFrames(d.s);
    ASSERT_EQ(f.size(), 8u);
    const double stations[8] = {55, 165, 330, 560, 732.5, 905, 1077.5, 1250};
    for (size_t i = 0; i < 8; ++i) EXPECT_NEAR(f[i].station, stations[i], 1e-9);
    EXPECT_EQ(f[2].width, 50);
    EXPECT_EQ(f[3].height, 65);
    EXPECT_LT(f[0].width, f[1].width);
    EXPECT_LT(f[7].height, f[6].height);
    d.s.set(F_GEO_FUS::b24, "0");
    EXPECT_TRUE(FuselageFrames(d.s).empty());
}

TEST(AircraftLayout, PartsArePlacedWhenTheTickedBoxesCountToOne) {
    Demo d;
    auto count = [&](bool right, bool stab, bool fuselage) {
        d.s.set(F_3D::Check1[1], right ? "1" : "0");
        d.s.set(F_3D::Check1[2], stab ? "1" : "0");
        d.s.set(F_3D::Check1[3], fuselage ? "1" : "0");
        return PartPlacingCount(d.s);
    };
    EXPECT_EQ(count(true, true, true), 1);
    EXPECT_EQ(count(true, false, false), 1);
    EXPECT_EQ(count(false, true, true), 1);
    EXPECT_EQ(count(true, false, true), 2);
    EXPECT_EQ(count(false, false, false), 0);
}

TEST(AircraftMesh, TheDemoGetsEveryPartMirroredAndPlacedOnItsFuselage) {
    Demo d;
    BuildAircraft(d.wb);
    const AircraftParts& p = d.parts;
    for (size_t k = 0; k < 5; ++k) {
        EXPECT_EQ(p.MeshWingLeft[k] != 0, k < 2) << k;
        EXPECT_EQ(p.MeshWingRight[k] != 0, k < 2) << k;
        EXPECT_EQ(p.MeshStabLeft[k] != 0, k < 1) << k;
        EXPECT_EQ(p.MeshStabRight[k] != 0, k < 1) << k;
    }
    for (int m : p.MeshFuselage) ExpectFacesInside(d.e, m);
    for (int m : {p.MeshWingLeft[0], p.MeshWingRight[1], p.MeshStabRight[0], p.MeshFin, p.MeshFinCopy})
        ExpectFacesInside(d.e, m);
    EXPECT_EQ(d.e.Meshes[p.MeshAxisLabels[1]].Text, "z");
    EXPECT_EQ(d.e.MeshCount, 4 + 2 + 2 + 7 + 6 + 1);
    EXPECT_EQ(d.e.errorCount, 0);

    // The right half is the left one mirrored across the plane of symmetry.
    for (int k : {0, 1}) {
        const int left = p.MeshWingLeft[static_cast<size_t>(k)], right = p.MeshWingRight[static_cast<size_t>(k)];
        ASSERT_EQ(d.e.Meshes[left].VertexCount, d.e.Meshes[right].VertexCount);
        for (int i = 0; i < d.e.Meshes[left].VertexCount; ++i) {
            const Vector3 l = vertex(d.e, left, i), r = vertex(d.e, right, i);
            EXPECT_EQ(r, (Vector3{l.x, l.y, -l.z}));
            EXPECT_LE(l.z, 1e-3f);
        }
    }
    // A quarter of a millimetre a unit, centred on the middle of the fuselage:
    // the wing's root leading edge 330 mm behind the nose, the tip of the
    // second panel out along both dihedrals.
    const Vector3 rootLe = vertex(d.e, p.MeshWingLeft[0], kSectionPoints / 2);
    EXPECT_NEAR(rootLe.x, (330 - 1250.0 / 2) / 4, 1e-3);
    EXPECT_NEAR(rootLe.y, -10.0 / 4, 1e-3);
    const double span = 650 * std::cos(3 * std::numbers::pi / 180) + 450 * std::cos(6 * std::numbers::pi / 180);
    EXPECT_NEAR(MeshBoundsMin(d.e, p.MeshWingLeft[1]).z, -span / 4, 0.5);
    EXPECT_NEAR(vertex(d.e, p.MeshStabLeft[0], kSectionPoints / 2).x, (330 + 750 - 1250.0 / 2) / 4, 1e-3);

    // A second build replaces the scene rather than adding to it.
    BuildAircraft(d.wb);
    EXPECT_EQ(d.e.MeshCount, 4 + 2 + 2 + 7 + 6 + 1);
}

TEST(AircraftMesh, FivePanelsEachSideWithTailAndFuselageFitTheTables) {
    Demo d;
    d.fivePanels();
    RecalcAll(d.wb);
    BuildAircraft(d.wb);
    const AircraftParts& p = d.parts;
    for (size_t k = 0; k < 5; ++k) {
        for (int m : {p.MeshWingLeft[k], p.MeshWingRight[k], p.MeshStabLeft[k], p.MeshStabRight[k]})
            ExpectFacesInside(d.e, m);
    }
    for (int m : p.MeshFuselage) EXPECT_NE(m, 0);
    EXPECT_EQ(d.e.errorCount, 0);
    // The winglet stands up from the tip of panel 3 and the fins stand apart.
    const Vector3 wingletMax = MeshBoundsMax(d.e, p.MeshWingLeft[3]), wingletMin = MeshBoundsMin(d.e, p.MeshWingLeft[3]);
    EXPECT_GE(wingletMax.y - wingletMin.y, 120 / 4.0f - 1e-3f);
    EXPECT_LT(wingletMax.z - wingletMin.z, 25 / 4.0f);
    EXPECT_NEAR(MeshBoundsMin(d.e, p.MeshFinCopy).z - MeshBoundsMin(d.e, p.MeshFin).z, 160 / 4.0f, 1e-3);
    // V-tail halves rise as far as they reach out.
    const Vector3 tailMax = MeshBoundsMax(d.e, p.MeshStabRight[4]);
    EXPECT_NEAR(tailMax.y - d.s.num(F_GEO_STAB::Text4) / 4, tailMax.z, 40 / 4.0f);
}

TEST(AircraftMesh, MissingPartsAreLeftOutAndTheRestCentredOnWhatRemains) {
    Demo d;
    d.row(grid::kStabRoot, {});
    d.row(grid::kStabTip, {});
    d.s.set(F_GEO_STAB::Text12, "0");
    d.s.set(F_GEO_FUS::b24, "0");
    BuildAircraft(d.wb);
    const AircraftParts& p = d.parts;
    for (int m : p.MeshStabLeft) EXPECT_EQ(m, 0);
    for (int m : p.MeshFuselage) EXPECT_EQ(m, 0);
    EXPECT_EQ(p.MeshFin, 0);
    EXPECT_EQ(p.MeshFinCopy, 0);
    ExpectFacesInside(d.e, p.MeshWingRight[1]);
    // Without a fuselage nor a stabiliser the length is that of the wing's root behind the nose.
    EXPECT_NEAR(vertex(d.e, p.MeshWingLeft[0], kSectionPoints / 2).x, (330 - (330 + 230) / 2.0) / 4, 1e-3);
}

TEST(AircraftView, OrbitColoursAndPartSwitches) {
    Demo d;
    AircraftView& v = d.wb.view3d;
    test::RecordingSurface surface;
    v.surface = &surface;
    LoadViewColours(d.wb);
    EXPECT_EQ(d.s.text(F_3D::T_Ailes), "3381759");
    EXPECT_EQ(d.s.text(F_3D::T_Filaire), "16777215");
    BuildAircraft(d.wb);
    EXPECT_EQ(d.e.Faces[d.e.Meshes[v.parts.MeshWingLeft[0]].FirstFace].Colour, ColourFromPacked(3381759));
    EXPECT_FALSE(surface.polygons.empty());
    EXPECT_EQ(surface.texts.size(), 3u);
    EXPECT_EQ(d.e.Cameras[v.CameraIndex].RenderMode, render_mode::Shaded);

    v.ViewAzimuth = 1.2f;
    v.ViewElevation = -0.4f;
    v.ViewDistance = 222;
    BuildAircraftKeepView(d.wb);
    EXPECT_EQ(v.ViewAzimuth, 1.2f);
    EXPECT_EQ(v.ViewDistance, 222);
    BuildAircraft(d.wb);
    EXPECT_EQ(v.ViewDistance, 370);

    // Fins and axes off: only they vanish, at the next frame, with no rebuild.
    const int meshes = d.e.MeshCount;
    d.s.set(F_3D::Check1[7], "0");
    d.s.set(F_3D::Check1[9], "0");
    d.s.set(F_3D::Option1[0], "1");
    surface.forget();
    RenderScene(d.e, surface, v.CameraIndex);
    EXPECT_FALSE(d.e.Meshes[v.parts.MeshFin].Visible);
    EXPECT_FALSE(d.e.Meshes[v.parts.MeshAxes[2]].Visible);
    EXPECT_TRUE(d.e.Meshes[v.parts.MeshWingRight[1]].Visible);
    EXPECT_TRUE(d.e.Meshes[v.parts.MeshStabLeft[0]].Visible);
    EXPECT_TRUE(surface.texts.empty());
    EXPECT_EQ(d.e.MeshCount, meshes);
    // The stabiliser also goes when the first design option is not the one chosen.
    d.s.set(F_3D::Option1[0], "0");
    ApplyPartVisibility(d.wb);
    EXPECT_FALSE(d.e.Meshes[v.parts.MeshStabRight[0]].Visible);

    // Opening a project rebuilds the scene and keeps the view turned as it was.
    v.ViewAzimuth = 0.7f;
    OpenProject(d.wb, d.wb.projectFilePath);
    EXPECT_EQ(v.ViewAzimuth, 0.7f);
    EXPECT_EQ(d.e.MeshCount, meshes);

    // "Vue Filaire" pressed draws wire frames at the next rebuild.
    d.s.set(F_3D::pb1[1], "1");
    BuildAircraft(d.wb);
    EXPECT_EQ(d.e.Cameras[v.CameraIndex].RenderMode, render_mode::Wireframe);
}

}  // namespace
}  // namespace tarvokin

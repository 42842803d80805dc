// The 3D view of the design window driven by the mouse and its buttons,
// without a window: orbit limits, zoom floor, pan, wake-up, picking, colours.
#include <gtest/gtest.h>

#include <numbers>

#include "core/profile_file.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "views/aircraft_mesh.h"
#include "views/design_view.h"
#include "views/recording_surface.h"
#include "support/installed_workbench.h"

namespace tarvokin {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

struct Demo {
    test::TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    test::RecordingSurface surface{800, 600};
    AircraftView& v = wb.view3d;
    Demo() {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
        wb.projectFilePath = (dir.path() / "MODELES" / "DEMO.MDL").string();
        LoadProject(wb);
        v.surface = &surface;
        BuildAircraft(wb);
        wb.setOpen(button::View3D, true);
        wb.sheet.set(F_3D::Text4, "1");
    }
    void drag(int x0, int y0, int x1, int y1, ViewMouse m) {
        ViewMousePress(wb, x0, y0, m);
        ViewMouseMove(wb, x1, y1, m);
    }
};

TEST(DesignView, OrbitWrapsTheAzimuthClampsTheElevationAndZoomStopsAtZero) {
    Demo d;
    const ViewMouse left{true, false, false};
    // 0.01 rad a pixel: 400 px to the left turns 4 rad, past pi, and wraps.
    d.drag(500, 300, 100, 300, left);
    EXPECT_NEAR(d.v.ViewAzimuth, 4.0f - 2 * kPi, 1e-4);
    EXPECT_GT(d.v.ViewAzimuth, -kPi);
    EXPECT_TRUE(d.v.NeedsRedraw);
    d.drag(100, 0, 100, 500, left);  // 5 rad up is held at 90 degrees
    EXPECT_FLOAT_EQ(d.v.ViewElevation, kPi / 2);
    d.drag(100, 500, 100, -400, left);
    EXPECT_FLOAT_EQ(d.v.ViewElevation, -kPi / 2);

    const ViewMouse right{false, true, false};
    d.drag(0, 0, 0, 30, right);
    EXPECT_FLOAT_EQ(d.v.ViewDistance, 400);
    d.drag(0, 500, 0, 0, right);
    EXPECT_FLOAT_EQ(d.v.ViewDistance, 0);
}

TEST(DesignView, ShiftDragMovesTheCentreAndAZeroDivisorGoesBackToTheMiddle) {
    Demo d;
    const ViewMouse pan{true, false, true};
    d.drag(200, 150, 210, 160, pan);
    EXPECT_FLOAT_EQ(d.v.engine.CentreDivX, 4);  // 800 / 200
    EXPECT_FLOAT_EQ(d.v.engine.CentreDivY, 4);  // 600 / 150
    d.drag(0, 0, 5, 5, pan);
    EXPECT_FLOAT_EQ(d.v.engine.CentreDivX, 0);
    d.surface.forget();
    DrawViewFrame(d.wb);
    EXPECT_FALSE(d.surface.polygons.empty());  // still drawn, centred
}

TEST(DesignView, AStoppedViewTakesNoFramesUntilAClickAndFramesDrawTheAircraft) {
    Demo d;
    d.wb.sheet.set(F_3D::Text4, "0");
    EXPECT_FALSE(ViewTakesFrames(d.wb));
    ViewMousePress(d.wb, 10, 10, {true, false, false});
    EXPECT_EQ(d.wb.sheet.text(F_3D::Text4), "1");
    EXPECT_TRUE(ViewTakesFrames(d.wb));
    d.wb.setOpen(button::View3D, false);
    EXPECT_FALSE(ViewTakesFrames(d.wb));

    d.surface.forget();
    DrawViewFrame(d.wb);
    EXPECT_FALSE(d.v.NeedsRedraw);
    const size_t solid = d.surface.polygons.size();
    EXPECT_GT(solid, 100u);
    // "Vue Filaire" draws outlines only, "Vue Surface" blended triangles.
    PressRenderButton(d.wb, 1);
    EXPECT_EQ(d.wb.sheet.text(F_3D::pb1[1]), "1");
    d.surface.forget();
    DrawViewFrame(d.wb);
    ASSERT_FALSE(d.surface.polygons.empty());
    EXPECT_EQ(d.surface.polygons[0].pen.fillStyle, fillstyle::None);
    PressRenderButton(d.wb, 4);
    EXPECT_EQ(d.wb.sheet.text(F_3D::pb1[1]), "0");
    d.surface.forget();
    DrawViewFrame(d.wb);
    EXPECT_GT(d.surface.gradients.size(), 100u);
}

TEST(DesignView, HoverOutlinesThePickedFaceInTheInvertPenAndRemovesIt) {
    Demo d;
    DrawViewFrame(d.wb);
    // The middle of the picture is on the model.
    const int face = PickFace(d.wb, 400, 300);
    ASSERT_GT(face, 0);
    EXPECT_EQ(PickFace(d.wb, 1, 1), 0);
    d.surface.forget();
    ViewMouseMove(d.wb, 400, 300, {});
    ASSERT_EQ(d.surface.polygons.size(), 1u);
    EXPECT_EQ(d.surface.polygons[0].pen.drawMode, drawmode::Invert);
    EXPECT_EQ(d.v.HoverFace, face);
    ViewMouseMove(d.wb, 1, 1, {});  // off the model: the old outline is drawn again, so it goes
    EXPECT_EQ(d.surface.polygons.size(), 2u);
    EXPECT_EQ(d.v.HoverFace, 0);
    EXPECT_FALSE(d.v.NeedsRedraw);
}

TEST(DesignView, AColourSampleGoesToItsFileAndToThePartsFaces) {
    Demo d;
    SetViewColour(d.wb, F_3D::T_Ailes, 0x0000FF);  // red, low byte first
    EXPECT_EQ(ReadProfileString("Colors", "Ailes", "", d.wb.projectFilePath), "255");
    const MeshRecord& m = d.v.engine.Meshes[d.v.parts.MeshWingLeft[0]];
    const FaceRecord& f = d.v.engine.Faces[m.FirstFace];
    EXPECT_EQ(f.Colour.R, 255);
    EXPECT_EQ(f.Colour.B, 0);
    EXPECT_FLOAT_EQ(f.Reflectivity, 0.9f);
    SetViewColour(d.wb, F_3D::T_Backolor, 0x808080);
    EXPECT_EQ(ReadProfileString("Colors", "3D_Backolor", "", d.wb.settingsFilePath()), std::to_string(0x808080));
    EXPECT_EQ(ReadProfileString("Colors", "3D_Backolor", "none", d.wb.projectFilePath), "none");
}

}  // namespace
}  // namespace tarvokin

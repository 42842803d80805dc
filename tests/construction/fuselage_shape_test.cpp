// Shaping the fuselage by its markers through the entry path: the nearest
// marker, the drag that keeps the order, 999 for none, undo; the figures of
// bodies computed by hand; the shape factors; the body kinds in 3D.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "construction/fuselage_shape.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "support/installed_workbench.h"
#include "support/temp_dir.h"
#include "views/aircraft_mesh.h"

namespace tarvokin {
namespace {

using test::TempDir;
using namespace F_GEO_FUS;

struct Demo {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Sheet& s = wb.sheet;
    Demo() {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
        wb.projectFilePath = (dir.path() / "MODELES" / "DEMO.MDL").string();
        LoadProject(wb);
        ClearHistory(wb);
    }
    Action mouse(Act act, const char* picture, double x, double y, int button) {
        Action a;
        a.act = act;
        a.form = "F_GEO_FUS";
        a.control = picture;
        a.x = x;
        a.y = y;
        a.button = button;
        return a;
    }
    void drag(const char* picture, double x0, double y0, double x1, double y1, int button = 1) {
        Mouse(wb, mouse(Act::Press, picture, x0, y0, button));
        Mouse(wb, mouse(Act::Move, picture, (x0 + x1) / 2, (y0 + y1) / 2, button));
        Mouse(wb, mouse(Act::Move, picture, x1, y1, button));
        Mouse(wb, mouse(Act::Release, picture, x1, y1, 0));
    }
};

// Eight equal frames of a body of constant section, every 1000 / 7 mm.
void constantBody(Sheet& s, double width, double height) {
    s.set(b24, "1000");
    for (int n = 0; n < 8; ++n) {
        s.set(Couple_X1[n], plain(1000.0 * n / 7));
        s.set(Couple_Y1[n], plain(height / 2));
        s.set(Couple_Y2[n], plain(-height / 2));
        s.set(CoupleV_Y1[n], plain(width / 2));
        s.set(CoupleV_Y2[n], plain(-width / 2));
    }
}

TEST(FuselageMarkers, DragTakesTheNearestMarkerAndKeepsTheOrder) {
    Demo d;
    // Marker 3 stands at 330 mm, upper edge 33: pressed just above it.
    EXPECT_EQ(d.s.text(Couple_X1[3]), "330");
    Mouse(d.wb, d.mouse(Act::Press, "Picture1", 335, 36, 1));
    EXPECT_EQ(d.s.text(T_Marker), "3");
    EXPECT_EQ(d.s.text(T_MarkerEdge), "1");
    // Dragged past markers 4 and 5: it keeps its index, nothing is re-sorted.
    Mouse(d.wb, d.mouse(Act::Move, "Picture1", 900.456, 41.234, 1));
    EXPECT_EQ(d.s.text(L_Marker), "900.46 mm / 41.23 mm");
    Mouse(d.wb, d.mouse(Act::Release, "Picture1", 900.456, 41.234, 0));
    EXPECT_EQ(d.s.text(Couple_X1[3]), "900.46");
    EXPECT_EQ(d.s.text(Couple_Y1[3]), "41.23");
    EXPECT_EQ(d.s.text(Couple_Y2[3]), "-30");
    EXPECT_EQ(d.s.text(Couple_X1[4]), "560");
    EXPECT_EQ(d.s.text(Couple_X1[5]), "790");
    EXPECT_EQ(d.s.text(T_Marker), "999");
    EXPECT_EQ(d.s.text(L_Marker), "");

    // The whole drag is one step: undone at once.
    ASSERT_TRUE(Undo(d.wb));
    EXPECT_EQ(d.s.text(Couple_X1[3]), "330");
    EXPECT_EQ(d.s.text(Couple_Y1[3]), "33");

    // In the top view the lower edge is the right half width.
    d.drag("Picture2", 560, -17, 565, -30);
    EXPECT_EQ(d.s.text(CoupleV_Y2[4]), "-30");
    EXPECT_EQ(d.s.text(CoupleV_Y1[4]), "18");
    EXPECT_EQ(d.s.text(Couple_X1[4]), "565");
}

TEST(FuselageMarkers, NoMarkerHeldMeansNothingHappens) {
    Demo d;
    // A move with no button is a hover; a release with 999 held does nothing.
    Mouse(d.wb, d.mouse(Act::Move, "Picture1", 10, 10, 0));
    Mouse(d.wb, d.mouse(Act::Release, "Picture1", 10, 10, 0));
    EXPECT_FALSE(d.wb.history.canUndo());
    // No fuselage: no marker to take.
    d.s.set(b24, "");
    Mouse(d.wb, d.mouse(Act::Press, "Picture1", 300, 0, 1));
    EXPECT_EQ(d.s.text(T_Marker), "999");
    Mouse(d.wb, d.mouse(Act::Move, "Picture1", 400, 0, 1));
    EXPECT_EQ(d.s.text(Couple_X1[3]), "330");
    // A move in the other drawing does not move the side view's marker.
    d.s.set(b24, "1250");
    Mouse(d.wb, d.mouse(Act::Press, "Picture1", 330, 33, 1));
    Mouse(d.wb, d.mouse(Act::Move, "Picture2", 100, 10, 1));
    EXPECT_EQ(d.s.text(Couple_X1[3]), "330");
}

TEST(FuselageMarkers, AModelWithoutMarkersGetsThemAtTheFirstPress) {
    Demo d;
    for (int n = 0; n < 8; ++n)
        for (CellGroup g : {Couple_X1, Couple_Y1, Couple_Y2, CoupleV_Y1, CoupleV_Y2}) d.s.set(g[n], "0");
    const std::vector<FuselageFrame> rule = FuselageFrames(d.s);
    ASSERT_EQ(rule.size(), 8u);
    Mouse(d.wb, d.mouse(Act::Press, "Picture1", rule[4].station, 0, 1));
    EXPECT_EQ(d.s.text(T_Marker), "4");
    EXPECT_NEAR(d.s.num(Couple_X1[6]), rule[6].station, 0.005);
    EXPECT_NEAR(d.s.num(CoupleV_Y1[6]) - d.s.num(CoupleV_Y2[6]), rule[6].width, 0.0101);  // each half rounded to 0.01
}

TEST(FuselageFigures, BoxBodyAgainstTheHandComputation) {
    Demo d;
    constantBody(d.s, 60, 40);
    d.s.setListIndex(F_3D::Combo9, 2);  // "Caisse": rectangular frames
    d.s.set(Option1, "1");              // an open tube
    d.s.set(Option3, "0");
    UpdateFuselageFigures(d.wb);
    // Perimeter 2 (60 + 40) = 200 mm over 1000 mm: 0.2 m² = 20 dm²; plan 60 x 1000 = 6 dm².
    EXPECT_EQ(d.s.text(j24), "20.0");
    EXPECT_EQ(d.s.text(j25), "6.0");
    // A body of constant section lifts only at its nose.
    EXPECT_EQ(d.s.text(j26), "0.0");

    // "Complète" closes both ends with a flat frame each: 2 x 60 x 40 mm².
    d.s.set(Option1, "0");
    d.s.set(Option3, "1");
    const FuselageFigures f = ComputeFuselageFigures(d.s);
    EXPECT_NEAR(f.wetted, 200000 + 2 * 2400, 1e-6);
    // The nose closed alone adds one.
    d.s.set(Option3, "0");
    d.s.set(Option2, "1");
    EXPECT_NEAR(ComputeFuselageFigures(d.s).wetted, 200000 + 2400, 1e-6);
}

TEST(FuselageFigures, RoundFrustumAndTheNeutralPointAheadOfTheLargestFrame) {
    Demo d;
    d.s.setListIndex(F_3D::Combo9, 0);  // round
    d.s.set(Option1, "1");
    d.s.set(Option3, "0");
    d.s.set(b24, "800");
    // Diameter 20 at the nose to 100 at 300 mm, then held to the tail.
    const double st[8] = {0, 300, 400, 500, 600, 700, 750, 800};
    for (int n = 0; n < 8; ++n) {
        const double r = n == 0 ? 10 : 50;
        d.s.set(Couple_X1[n], plain(st[n]));
        d.s.set(Couple_Y1[n], plain(r));
        d.s.set(Couple_Y2[n], plain(-r));
        d.s.set(CoupleV_Y1[n], plain(r));
        d.s.set(CoupleV_Y2[n], plain(-r));
    }
    const FuselageFigures f = ComputeFuselageFigures(d.s);
    const double pi = std::numbers::pi;
    const double cone = pi * (10 + 50) * std::hypot(300, 40), tube = 2 * pi * 50 * 500;
    EXPECT_NEAR(f.wetted, cone + tube, 1e-6 * (cone + tube));
    EXPECT_NEAR(f.planArea, (20 + 100) / 2.0 * 300 + 100 * 500, 1e-9);
    // Ahead of the largest frame (300 mm) stands a volume, by the trapezium of
    // the two sections, of (pi 100 + pi 2500) / 2 x 300.
    const double ahead = (pi * 100 + pi * 2500) / 2 * 300;
    EXPECT_NEAR(f.neutralPoint, 300 - ahead / (pi * 2500), 1e-9);
    EXPECT_NEAR(f.neutralPercent, 100 * f.neutralPoint / 800, 1e-9);
}

TEST(FuselageFigures, TooFewFramesShowADashNeverANumberOutOfNothing) {
    Demo d;
    d.s.set(b24, "0");
    UpdateFuselageFigures(d.wb);
    EXPECT_EQ(d.s.text(j24), "-");
    EXPECT_EQ(d.s.text(j26), "-");
    d.s.set(b24, "abc");
    UpdateFuselageFigures(d.wb);
    EXPECT_EQ(d.s.text(j25), "-");
}

TEST(FuselageShape, FactorsScaleTheShownBodyAndADragWritesTheMarkerWithoutThem) {
    Demo d;
    const std::vector<FuselageFrame> before = FuselageFrames(d.s);
    Slide(d.wb, HScroll1, "150");
    SlideEnd(d.wb, HScroll1);
    Slide(d.wb, VScroll1, "200");
    SlideEnd(d.wb, VScroll1);
    const std::vector<FuselageFrame> after = FuselageFrames(d.s);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_DOUBLE_EQ(after[3].width, 1.5 * before[3].width);
    EXPECT_DOUBLE_EQ(after[3].yCentre + after[3].height / 2, 2 * 33);
    // The pointer at the shown upper edge 66 stores 33 + 10 / 2.
    Mouse(d.wb, d.mouse(Act::Press, "Picture1", 330, 66, 1));
    Mouse(d.wb, d.mouse(Act::Move, "Picture1", 330, 76, 1));
    Mouse(d.wb, d.mouse(Act::Release, "Picture1", 330, 76, 0));
    EXPECT_EQ(d.s.text(Couple_Y1[3]), "38");
    // Typed nonsense falls back to no factor; the values are held to 10..300 %.
    d.s.set(HScroll1, "abc");
    d.s.set(VScroll1, "0");
    EXPECT_EQ(ShapeFactors(d.s).width, 1);
    EXPECT_EQ(ShapeFactors(d.s).upper, 0.1);
}

TEST(FuselageShape, BodyKindsCloseTheSkinAndNoFuselageLeavesWingAndTail) {
    Demo d;
    auto fuselageFaces = [&d] {
        BuildAircraft(d.wb);
        int faces = 0, meshes = 0;
        for (int m : d.wb.view3d.parts.MeshFuselage)
            if (m) {
                faces += d.wb.view3d.engine.Meshes[m].FaceCount;
                ++meshes;
            }
        return std::pair{meshes, faces};
    };
    const auto complete = fuselageFaces();
    EXPECT_EQ(complete.first, 7);
    Tick(d.wb, Option1, true);
    EXPECT_EQ(d.s.text(Option3), "0");
    const auto tube = fuselageFaces();
    EXPECT_EQ(tube.first, 7);
    EXPECT_LT(tube.second, complete.second);

    // No length and the first option clear: wing and tail alone.
    Tick(d.wb, Option3, true);
    EXPECT_EQ(d.s.text(Option1), "0");
    d.s.set(b24, "");
    EXPECT_EQ(fuselageFaces().first, 0);
    EXPECT_NE(d.wb.view3d.parts.MeshWingLeft[0], 0);
    EXPECT_NE(d.wb.view3d.parts.MeshStabLeft[0], 0);
}

}  // namespace
}  // namespace tarvokin

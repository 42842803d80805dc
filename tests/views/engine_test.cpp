// Frames of the 3D engine drawn on a recording surface: transforms, culling,
// projection, order, pens and colours by render mode, primitives.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <tuple>

#include "recording_surface.h"

namespace tarvokin {
namespace {

using test::AddFacingTriangle;
using test::AddTriangle;
using test::RecordingSurface;

// A camera and a white light at the origin; the camera looks along +z.
struct Scene {
    std::unique_ptr<Engine> engine = std::make_unique<Engine>();
    Engine& e = *engine;
    RecordingSurface surface;
    int camera = AddCamera(e);
    int light = AddLight(e);

    void frame() { RenderScene(e, surface, camera); }
    CameraRecord& cam() { return e.Cameras[camera]; }
    int firstVertex(int mesh) const { return e.Meshes[mesh].FirstVertex; }
};

TEST(RenderScene, EmptySceneDrawsNothingAndAShorterListEndsClean) {
    Scene s;
    s.frame();
    EXPECT_EQ(s.e.DrawList[1], 0);
    EXPECT_TRUE(s.surface.polygons.empty() && s.surface.lines.empty() && s.surface.texts.empty());

    AddFacingTriangle(s.e, 100);
    AddFacingTriangle(s.e, 200);
    s.frame();
    EXPECT_EQ(DrawListLength(s.e), 2);
    RemoveMesh(s.e, 2);
    s.frame();
    EXPECT_EQ(DrawListLength(s.e), 1);
    EXPECT_EQ(s.e.DrawList[2], 0);
}

TEST(RenderScene, AChildBeforeItsParentInTheTableFollowsOneFrameLate) {
    Scene s;
    const int early = AddLabel(s.e, "a", {});
    const int parent = AddLabel(s.e, "p", {});
    const int late = AddLabel(s.e, "b", {});
    s.e.Meshes[early].Parent = static_cast<std::int16_t>(parent);
    s.e.Meshes[late].Parent = static_cast<std::int16_t>(parent);

    s.e.Meshes[parent].Position = {10, 0, 0};
    s.frame();
    EXPECT_EQ(s.e.WorldVertices[s.firstVertex(late)].x, 10);
    EXPECT_EQ(s.e.WorldVertices[s.firstVertex(early)].x, 0);

    s.e.Meshes[parent].Position = {20, 0, 0};
    s.e.Meshes[parent].Dirty = true;
    s.frame();
    EXPECT_EQ(s.e.WorldVertices[s.firstVertex(late)].x, 20);
    EXPECT_EQ(s.e.WorldVertices[s.firstVertex(early)].x, 10);
}

TEST(RenderScene, ATriangleTouchingTheSideGoesWholeInPerspectiveOnly) {
    Scene s;
    // tan 30 degrees x 100 = 57.7: one corner at 60 is outside.
    AddTriangle(s.e, {-10, -10, 100}, {-10, 10, 100}, {60, 0, 100});
    s.frame();
    EXPECT_EQ(DrawListLength(s.e), 0);
    s.cam().Orthographic = true;
    s.frame();
    EXPECT_EQ(DrawListLength(s.e), 1);
}

TEST(RenderScene, ProjectionCentreScaleDepthAndABadCamera) {
    Scene s;
    s.e.CentreDivX = 0;  // read as 2
    const int t = AddFacingTriangle(s.e, 100);
    const int far = AddLabel(s.e, "loin", {0, 0, 1600});
    s.frame();
    // s = max(1000 / 2, 700 / 2); x = 500 + 500 * -10 / (100 tan 30).
    const Vector3 a = s.e.ScreenVertices[s.firstVertex(t)];
    EXPECT_NEAR(a.x, 413.397f, 1e-3f);
    EXPECT_NEAR(a.y, 436.603f, 1e-3f);
    EXPECT_NEAR(a.z, 1600.0f / 1599 * (1 - 1.0f / 100), 1e-6f);
    EXPECT_NEAR(s.e.ScreenVertices[s.firstVertex(far)].z, 1.0f, 1e-6f);
    EXPECT_EQ(s.e.CentreDivX, 2);

    s.cam().Orthographic = true;
    s.cam().OrthoZoom = 2;
    s.frame();
    EXPECT_EQ(s.surface.polygons.back().points[2], (SurfacePoint{540, 350}));  // (20, 0) x 2 from the centre

    // Near = Far: a zero projection leaves the screen where it was.
    const Vector3 before = s.e.ScreenVertices[s.firstVertex(t)];
    s.cam().Near = s.cam().Far = 50;
    s.e.Meshes[t].Position = {5, 5, 0};
    s.e.Meshes[t].Dirty = true;
    s.frame();
    EXPECT_EQ(s.e.ScreenVertices[s.firstVertex(t)], before);
    EXPECT_EQ(s.e.lastErrorCode, engine_error::BadCamera);
}

TEST(RenderScene, FarFacesDrawFirstWithThePensOfEachMode) {
    Scene s;
    AddFacingTriangle(s.e, 100, {255, 0, 0});
    AddFacingTriangle(s.e, 300, {0, 0, 255});
    s.cam().RenderMode = render_mode::Solid;
    s.frame();
    ASSERT_EQ(s.surface.polygons.size(), 2u);
    EXPECT_EQ(s.surface.polygons[0].pen.fill, 0xFF0000u);  // blue, the far one
    EXPECT_EQ(s.surface.polygons[1].pen.fill, 0x0000FFu);
    EXPECT_EQ(s.surface.polygons[0].pen.fore, 0xFFFFFFu);

    // Mode, draw mode, draw style, fill style.
    for (const auto [mode, drawMode, drawStyle, fillStyle] :
         {std::array{0, drawmode::CopyPen, drawstyle::Solid, fillstyle::None},
          std::array{2, drawmode::CopyPen, drawstyle::None, fillstyle::Solid},
          std::array{3, drawmode::MergePen, drawstyle::None, fillstyle::Solid},
          std::array{4, drawmode::Invert, drawstyle::Solid, fillstyle::None}}) {
        s.surface.forget();
        s.cam().RenderMode = static_cast<std::int16_t>(mode);
        s.frame();
        ASSERT_EQ(s.surface.polygons.size(), 2u) << mode;
        const test::Pen& pen = s.surface.polygons[0].pen;
        EXPECT_EQ((std::array{pen.drawMode, pen.drawStyle, pen.fillStyle}), (std::array{drawMode, drawStyle, fillStyle}))
            << mode;
    }
}

TEST(RenderScene, LitTriangleIsFlatInMode2AndBlendedByCornerInMode5) {
    Scene s;
    AddFacingTriangle(s.e, 100, {200, 100, 50}, 0.5f);
    s.frame();
    // Lit straight on at the centroid: white, half-way from the face colour.
    ASSERT_EQ(s.surface.polygons.size(), 1u);
    EXPECT_EQ(ColourFromPacked(s.surface.polygons[0].pen.fill), (EngineColour{227, 177, 152}));

    s.surface.forget();
    s.cam().RenderMode = render_mode::Surface;
    s.frame();
    ASSERT_EQ(s.surface.gradients.size(), 1u);
    // Corner (-10, -10): cos = 100 / sqrt(10200), 255 x 0.990 = 252; corner (20, 0): 250.
    const auto& g = s.surface.gradients[0];
    EXPECT_EQ(g[0], (GradientVertex{413, 437, 226 << 8, 176 << 8, 151 << 8}));
    EXPECT_EQ(g[1].red, 226 << 8);
    EXPECT_EQ(g[2].red, 225 << 8);
    EXPECT_EQ(g[2].blue, 150 << 8);
}

TEST(RenderScene, Mode5SharedCornerTakesTheFrontFaceColour) {
    Scene s;
    s.cam().RenderMode = render_mode::Surface;
    s.cam().ShowBackFaces = true;
    const int m = AddMesh(s.e, 5, 2);
    const int v = s.firstVertex(m), f = s.e.Meshes[m].FirstFace;
    const Vector3 points[5] = {{-20, -20, 200}, {-20, 0, 200}, {0, -10, 150}, {20, 0, 100}, {20, -20, 100}};
    for (int i = 0; i < 5; ++i) s.e.ObjectVertices[v + i] = points[i];
    const auto idx = [&](int i) { return static_cast<std::int16_t>(v + i); };
    s.e.Faces[f] = {idx(0), idx(1), idx(2), {0, 0, 255}, 0};      // far, blue
    s.e.Faces[f + 1] = {idx(2), idx(3), idx(4), {255, 0, 0}, 0};  // near, red
    s.frame();
    ASSERT_EQ(s.surface.gradients.size(), 2u);
    const auto& farFace = s.surface.gradients[0];
    EXPECT_EQ(farFace[0].blue, 255 << 8);
    EXPECT_EQ(farFace[2].red, 255 << 8);  // the shared corner, coloured by the near face
    EXPECT_EQ(farFace[2].blue, 0);
}

TEST(RenderScene, PrimitivesAreDrawnByTheirVertexCount) {
    Scene s;
    s.e.SectionPoints = 3;
    const int line = AddLine(s.e, {-10, 0, 100}, {10, 0, 100});
    SetMeshColour(s.e, line, {255, 0, 0}, 0.5f);
    SetMeshColour(s.e, AddLabel(s.e, "x", {0, 10, 100}), {0, 255, 0}, 0.5f);
    AddLabel(s.e, "behind", {0, 0, -10});
    const int point = AddMesh(s.e, 1, 1);
    const int bezier = AddMesh(s.e, 4, 1);
    const int outline = AddMesh(s.e, 6, 1);
    s.e.ObjectVertices[s.firstVertex(point)] = {0, 0, 100};
    for (int i = 0; i < 4; ++i) s.e.ObjectVertices[s.firstVertex(bezier) + i] = {float(i), 1, 100};
    for (int i = 0; i < 6; ++i) s.e.ObjectVertices[s.firstVertex(outline) + i] = {float(i), 0, 100};

    s.frame();
    EXPECT_EQ(DrawListLength(s.e), 0);  // their faces name vertex 0: never a triangle
    ASSERT_EQ(s.surface.lines.size(), 4u);
    EXPECT_EQ(s.surface.lines[0].pen.fore, 0x0000FFu);
    EXPECT_EQ(s.surface.lines[0].points[0], (SurfacePoint{413, 350}));
    EXPECT_EQ(s.surface.lines[1].pen.fore, 0x008000u);  // the outline's three segments
    ASSERT_EQ(s.surface.texts.size(), 1u);
    EXPECT_EQ(s.surface.texts[0].colour, 0x00FF00u);
    ASSERT_EQ(s.surface.pixels.size() + s.surface.beziers.size(), 2u);
    EXPECT_EQ(s.surface.pixels[0].pen.drawMode, drawmode::CopyPen);

    // A text marks points instead of joining them, unless it names a ruler.
    for (const auto& [text, lines, texts] : {std::tuple{"abc", 1u, 4u}, std::tuple{"REGLE-2", 4u, 1u}}) {
        s.e.Meshes[outline].Text = text;
        s.surface.forget();
        s.frame();
        EXPECT_EQ(s.surface.lines.size(), lines) << text;
        EXPECT_EQ(s.surface.texts.size(), texts) << text;
    }
}

TEST(RenderScene, SortKeepsEachFaceWithItsKey) {
    auto owner = std::make_unique<Engine>();
    Engine& e = *owner;
    const int n = 3000;
    for (int i = 1; i <= n; ++i) {
        e.DrawList[i] = static_cast<std::int16_t>(i);
        e.SortKeys[i] = -static_cast<float>((i * 7919) % 53);  // many equal keys
    }
    SortDrawList(e, 1, n);
    for (int i = 1; i <= n; ++i) {
        EXPECT_EQ(e.SortKeys[i], -static_cast<float>((e.DrawList[i] * 7919) % 53));
        if (i > 1) {
            ASSERT_LE(e.SortKeys[i - 1], e.SortKeys[i]);
        }
    }
}

}  // namespace
}  // namespace tarvokin

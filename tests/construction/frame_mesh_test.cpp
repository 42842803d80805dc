// The frame as a 3D piece: a closed plate or a ring, the halves, and the
// sliders that rewrite its vertices in place.
#include <gtest/gtest.h>

#include <cmath>

#include "construction/frame_curve.h"
#include "construction/frame_mesh.h"
#include "views/engine.h"
#include "views/recording_surface.h"

namespace tarvokin {
namespace {

Vector3 extent(const Engine& e, int mesh) {
    const Vector3 hi = MeshBoundsMax(e, mesh), lo = MeshBoundsMin(e, mesh);
    return {hi.x - lo.x, hi.y - lo.y, hi.z - lo.z};
}

TEST(FramePiece, PlateAndRingFollowTheSliders) {
    FrameState f;
    InitFrameGenerator(f);
    BuildFrameMesh(f, FrameKind::Whole, 5, 100, 100);
    ASSERT_EQ(f.meshes.size(), 1u);
    const int m = f.meshes[0];
    const Vector3 full = extent(f.engine, m);
    EXPECT_NEAR(full.z, 5, 1e-4);
    // Width: twice the widest sample from the axis, in millimetres.
    double widest = 0;
    for (const FramePoint& p : f.CurveRight) widest = std::max(widest, p.x - f.AxeX);
    EXPECT_NEAR(full.x, 2 * widest * kFrameMillimetresPerPixel, 1e-3);
    const MeshRecord& r = f.engine.Meshes[m];
    EXPECT_GT(r.FaceCount, 0);

    // The sliders rewrite the vertices from the piece as built, not from the last pass.
    ResizeFrameMesh(f, 2, 50, 200);
    ResizeFrameMesh(f, 2, 50, 200);
    const Vector3 resized = extent(f.engine, m);
    EXPECT_NEAR(resized.x, 2 * full.x, 1e-3);
    EXPECT_NEAR(resized.y, full.y / 2, 1e-3);
    EXPECT_NEAR(resized.z, 2, 1e-4);

    // Doubling makes a ring: more faces than the plate, the same outer size.
    f.Doubling = true;
    f.Thickness = 20;
    ApplyDoubling(f);
    BuildFrameMesh(f, FrameKind::Whole, 5, 100, 100);
    ASSERT_EQ(f.engine.MeshCount, 1);
    EXPECT_NEAR(extent(f.engine, f.meshes[0]).x, full.x, 1e-3);
}

TEST(FramePiece, HalvesAreCutOnTheAxisAndAtMidHeight) {
    FrameState f;
    InitFrameGenerator(f);
    FramePoints right, left;
    EvaluateBSpline(f.ControlPoints, f.CurveOrder, 40, right);
    left = MirrorCurve(right, f.AxeX);
    const auto whole = FrameContour(f, right, left, FrameKind::Whole);
    for (const MeshPoint& p : FrameContour(f, right, left, FrameKind::Right)) EXPECT_GE(p.x, -1e-9);
    for (const MeshPoint& p : FrameContour(f, right, left, FrameKind::Left)) EXPECT_LE(p.x, 1e-9);
    double lo = 1e9, hi = -1e9;
    for (const MeshPoint& p : whole) {
        lo = std::min(lo, p.y);
        hi = std::max(hi, p.y);
    }
    const auto upper = FrameContour(f, right, left, FrameKind::Upper);
    const auto lower = FrameContour(f, right, left, FrameKind::Lower);
    ASSERT_GT(upper.size(), 3u);
    ASSERT_GT(lower.size(), 3u);
    for (const MeshPoint& p : upper) EXPECT_GE(p.y, (lo + hi) / 2 - 1e-9);
    for (const MeshPoint& p : lower) EXPECT_LE(p.y, (lo + hi) / 2 + 1e-9);
}

TEST(FramePiece, DrawsInEachViewWithItsOwnCamera) {
    FrameState f;
    InitFrameGenerator(f);
    BuildFrameMesh(f, FrameKind::Whole, 5, 100, 100);
    for (int view = 0; view < 5; ++view) {
        test::RecordingSurface surface;
        RenderFrame(f, surface, view);
        EXPECT_GT(DrawListLength(f.engine), 0) << view;
    }
}

}  // namespace
}  // namespace tarvokin

// The engine's tables and scene operations: runs, limits, removal, copies,
// in-place edits and the camera orbit.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "recording_surface.h"

namespace tarvokin {
namespace {

// The engine's tables are large; keep them off the test's stack.
std::unique_ptr<Engine> NewEngine() { return std::make_unique<Engine>(); }

TEST(EngineTables, FirstFitTakesTheHoleOfARemovedMesh) {
    auto e = NewEngine();
    ASSERT_EQ(AddMesh(*e, 100, 10), 1);
    ASSERT_EQ(AddMesh(*e, 50, 5), 2);
    ASSERT_EQ(AddMesh(*e, 100, 10), 3);
    e->ObjectVertices[101] = {9, 9, 9};
    RemoveMesh(*e, 2);
    ASSERT_EQ(e->MeshCount, 2);
    EXPECT_EQ(e->Meshes[2].FirstVertex, 151);  // the old third mesh moved down

    const int d = AddMesh(*e, 30, 3);
    EXPECT_EQ(d, 3);
    EXPECT_EQ(e->Meshes[d].FirstVertex, 101);
    EXPECT_EQ(e->Meshes[d].FirstFace, 11);
    EXPECT_EQ(e->ObjectVertices[101], Vector3{});  // the hole is handed out clean
    // 20 entries remain in the hole: too few for 30, enough for 20.
    EXPECT_EQ(e->Meshes[AddMesh(*e, 30, 3)].FirstVertex, 251);
    EXPECT_EQ(e->Meshes[AddMesh(*e, 20, 2)].FirstVertex, 131);
    // An empty run goes past the last one and takes nothing.
    const int empty = AddMesh(*e, 0, 0);
    EXPECT_EQ(e->Meshes[empty].FirstVertex, 281);
    EXPECT_EQ(e->Meshes[empty].VertexCount, 0);
}

TEST(EngineTables, AFullTableRefusesWithZeroAndChangesNothing) {
    auto e = NewEngine();
    EXPECT_EQ(AddMesh(*e, kEngineLimit + 1, 1), 0);
    EXPECT_EQ(e->lastErrorCode, engine_error::MeshMemory);
    ASSERT_EQ(AddMesh(*e, kEngineLimit, 1), 1);
    e->lastErrorCode = 0;
    EXPECT_EQ(AddMesh(*e, 1, 1), 0);  // the 10001st vertex
    EXPECT_EQ(e->MeshCount, 1);
    EXPECT_EQ(e->lastErrorCode, engine_error::MeshMemory);
    EXPECT_EQ(AddLine(*e, {}, {1, 1, 1}), 0);
    EXPECT_EQ(AddMesh(*e, 0, kEngineLimit), 0);  // faces count alike

    auto cams = NewEngine();
    for (int i = 1; i <= kEngineLimit; ++i) ASSERT_EQ(AddCamera(*cams), i);
    EXPECT_EQ(AddCamera(*cams), 0);
    EXPECT_EQ(cams->lastErrorCode, engine_error::CameraMemory);
    EXPECT_EQ(cams->CameraCount, kEngineLimit);
}

TEST(EngineTables, RemovingAMeshRenumbersTheParents) {
    auto e = NewEngine();
    for (int i = 0; i < 4; ++i) AddMesh(*e, 1, 1);
    e->Meshes[2].Parent = 1;
    e->Meshes[3].Parent = 2;
    e->Meshes[4].Parent = 3;
    RemoveMesh(*e, 2);
    EXPECT_EQ(e->MeshCount, 3);
    EXPECT_EQ(e->Meshes[2].Parent, 0);  // its parent was the removed mesh
    EXPECT_EQ(e->Meshes[3].Parent, 2);  // followed its parent down
    RemoveMesh(*e, 7);                  // no such mesh
    EXPECT_EQ(e->MeshCount, 3);

    AddCamera(*e);
    const int second = AddCamera(*e);
    e->Cameras[second].Near = 5;
    RemoveCamera(*e, 1);
    EXPECT_EQ(e->CameraCount, 1);
    EXPECT_EQ(e->Cameras[1].Near, 5);
}

TEST(EngineTables, ClearSceneKeepsOneRecordOfEachTable) {
    auto e = NewEngine();
    AddMesh(*e, 3, 1);
    AddMesh(*e, 5, 2);
    AddMesh(*e, 7, 3);
    AddCamera(*e);
    AddCamera(*e);
    e->Cameras[2].Far = 99;
    AddLight(*e);
    ClearScene(*e, 2);
    EXPECT_EQ(e->MeshCount, 1);
    EXPECT_EQ(e->Meshes[1].VertexCount, 5);
    EXPECT_EQ(e->CameraCount, 1);
    EXPECT_EQ(e->Cameras[1].Far, 99);
    EXPECT_EQ(e->LightCount, 0);  // there was no light 2
    ClearScene(*e);
    EXPECT_EQ(e->MeshCount + e->CameraCount + e->LightCount, 0);

    test::RecordingSurface surface;
    InitEngine(*e, surface);
    EXPECT_TRUE(surface.autoRedraw && surface.pixelScale);
    EXPECT_EQ(AddMesh(*e, 1, 1), 1);
}

TEST(SceneOperations, BoxCornersInOrderAndFacesPointingOut) {
    auto e = NewEngine();
    AddMesh(*e, 2, 0);  // so that the box's run does not start at 1
    const int box = AddBox(*e, {2, 3, 4});
    const MeshRecord& m = e->Meshes[box];
    ASSERT_EQ(m.VertexCount, 8);
    ASSERT_EQ(m.FaceCount, 12);
    EXPECT_EQ(e->ObjectVertices[m.FirstVertex + 2], (Vector3{2, 0, 4}));
    EXPECT_EQ(e->ObjectVertices[m.FirstVertex + 5], (Vector3{2, 3, 0}));
    const FaceRecord& first = e->Faces[m.FirstFace];
    EXPECT_EQ(first.A - m.FirstVertex, 0);
    EXPECT_EQ(first.B - m.FirstVertex, 4);
    EXPECT_EQ(first.C - m.FirstVertex, 5);
    const Vector3 centre{1, 1.5f, 2};
    for (int f = m.FirstFace; f < m.FirstFace + m.FaceCount; ++f) {
        const FaceRecord& face = e->Faces[f];
        const Vector3 a = e->ObjectVertices[face.A], b = e->ObjectVertices[face.B], c = e->ObjectVertices[face.C];
        const Vector3 middle = (a + b + c) * (1.0f / 3);
        EXPECT_GT(Dot(Cross(b - a, c - a), middle - centre), 0) << "face " << f - m.FirstFace;
    }
}

TEST(SceneOperations, CopiesFollowTheirOwnRuns) {
    auto e = NewEngine();
    const int line = AddLine(*e, {1, 2, 3}, {4, 5, 6});
    const int box = AddBox(*e, {1, 1, 1});
    e->Meshes[box].Text = "boite";
    const int copy = DuplicateMesh(*e, box);
    ASSERT_EQ(copy, 3);
    const MeshRecord& c = e->Meshes[copy];
    EXPECT_EQ(c.FirstVertex, 11);
    EXPECT_EQ(c.Text, "boite");
    for (int f = c.FirstFace; f < c.FirstFace + c.FaceCount; ++f) {
        EXPECT_GE(e->Faces[f].A, c.FirstVertex);
        EXPECT_LT(e->Faces[f].C, c.FirstVertex + 8);
    }
    EXPECT_EQ(e->Faces[e->Meshes[DuplicateMesh(*e, line)].FirstFace].A, 0);  // still no triangle

    // Relocation: the copy's index after the original left the table.
    const int moved = RelocateMesh(*e, box);
    EXPECT_EQ(moved, 4);
    EXPECT_EQ(e->MeshCount, 4);
    EXPECT_EQ(e->Meshes[moved].Text, "boite");
    EXPECT_EQ(e->Meshes[moved].FirstVertex, 21);
    EXPECT_EQ(e->Meshes[AddMesh(*e, 8, 0)].FirstVertex, 3);  // the original's run is free again
}

TEST(SceneOperations, CheckMeshFacesDropsFacesReachingPastTheMesh) {
    auto e = NewEngine();
    const int m = AddMesh(*e, 4, 4);
    const int other = AddBox(*e, {1, 1, 1});
    const int v = e->Meshes[m].FirstVertex, f0 = e->Meshes[m].FirstFace;
    const int16_t corners[4][3] = {{1, 2, 3}, {2, 3, 5}, {1, 3, 4}, {4, 5, 6}};
    for (int i = 0; i < 4; ++i) e->Faces[f0 + i] = {corners[i][0], corners[i][1], corners[i][2], {}, 0};
    ASSERT_EQ(v, 1);
    CheckMeshFaces(*e, m);
    ASSERT_EQ(e->Meshes[m].FaceCount, 2);
    EXPECT_EQ(e->Faces[f0].C, 3);
    EXPECT_EQ(e->Faces[f0 + 1].C, 4);
    DeleteFace(*e, e->Meshes[other].FirstFace + 11);
    EXPECT_EQ(e->Meshes[other].FaceCount, 11);
    EXPECT_EQ(e->Meshes[m].FaceCount, 2);
}

TEST(SceneOperations, InPlaceEditsOfTheObjectVertices) {
    auto e = NewEngine();
    const int box = AddBox(*e, {2, 4, 6});
    CentreMesh(*e, box);
    EXPECT_EQ(MeshBoundsMin(*e, box), (Vector3{-1, -2, -3}));
    EXPECT_EQ(MeshBoundsMax(*e, box), (Vector3{1, 2, 3}));
    ScaleMesh(*e, box, 2, 1, 0.5f);
    TransformMesh(*e, box, Translation({10, 0, 0}));
    EXPECT_EQ(MeshBoundsMax(*e, box), (Vector3{12, 2, 1.5f}));
    SetMeshColour(*e, box, {1, 2, 3}, 0.9f);
    EXPECT_EQ(e->Faces[e->Meshes[box].FirstFace + 11].Colour, (EngineColour{1, 2, 3}));
    EXPECT_EQ(MeshBoundsMax(*e, 0), Vector3{});
}

TEST(SceneOperations, OrbitingCameraSeesItsTargetStraightAhead) {
    auto e = NewEngine();
    const int cam = AddCamera(*e);
    EXPECT_NEAR(e->Cameras[cam].TanHalfFov, std::tan(30 * kDegreesToRadians), 1e-6f);
    const int label = AddLabel(*e, "cible", {20, -5, 7});
    OrbitCamera(*e, cam, {20, -5, 7}, 370, 0.8f, 0.4f);
    UpdateMeshTransforms(*e);
    UpdateViewVertices(*e, cam);
    const Vector3 seen = e->ViewVertices[e->Meshes[label].FirstVertex];
    EXPECT_NEAR(seen.x, 0, 1e-3f);
    EXPECT_NEAR(seen.y, 0, 1e-3f);
    EXPECT_NEAR(seen.z, 370, 1e-2f);
    EXPECT_FALSE(e->Cameras[cam].Dirty);
}

}  // namespace
}  // namespace tarvokin

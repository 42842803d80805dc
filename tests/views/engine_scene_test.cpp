// The engine's tables and scene operations: runs, limits, removal, copies,
// in-place edits and the camera orbit.
#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "views/engine.h"

namespace tarvokin {
namespace {

// The engine's tables are large; keep them off the test's stack.
std::unique_ptr<Engine> NewEngine() { return std::make_unique<Engine>(); }

TEST(EngineTables, FirstFitTakesTheHoleOfARemovedMesh) {
    auto e = NewEngine();
    AddMesh(*e, 100, 10);
    AddMesh(*e, 50, 5);
    AddMesh(*e, 100, 10);
    e->ObjectVertices[101] = {9, 9, 9};
    RemoveMesh(*e, 2);
    ASSERT_EQ(e->Meshes[2].FirstVertex, 151);  // the old third mesh moved down

    const int d = AddMesh(*e, 30, 3);
    EXPECT_EQ(d, 3);
    EXPECT_EQ(e->Meshes[d].FirstVertex, 101);
    EXPECT_EQ(e->Meshes[d].FirstFace, 11);
    EXPECT_EQ(e->ObjectVertices[101], Vector3{});  // handed out clean
    // 20 entries remain in the hole: too few for 30, enough for 20.
    EXPECT_EQ(e->Meshes[AddMesh(*e, 30, 3)].FirstVertex, 251);
    EXPECT_EQ(e->Meshes[AddMesh(*e, 20, 2)].FirstVertex, 131);
    EXPECT_EQ(e->Meshes[AddMesh(*e, 0, 0)].FirstVertex, 281);  // an empty run goes past the end
}

TEST(EngineTables, AFullTableRefusesWithZeroAndChangesNothing) {
    auto e = NewEngine();
    EXPECT_EQ(AddMesh(*e, kEngineLimit + 1, 1), 0);
    ASSERT_EQ(AddMesh(*e, kEngineLimit, 1), 1);
    e->lastErrorCode = 0;
    EXPECT_EQ(AddMesh(*e, 1, 1), 0);  // the 10001st vertex
    EXPECT_EQ(e->MeshCount, 1);
    EXPECT_EQ(e->lastErrorCode, engine_error::MeshMemory);
    EXPECT_EQ(AddLine(*e, {}, {1, 1, 1}), 0);
    EXPECT_EQ(AddMesh(*e, 0, kEngineLimit), 0);  // faces count alike
}

TEST(EngineTables, RemovalRenumbersParentsAndClearSceneKeepsOneOfEach) {
    auto e = NewEngine();
    for (int i = 0; i < 4; ++i) AddMesh(*e, i + 1, 1);
    e->Meshes[2].Parent = 1;
    e->Meshes[3].Parent = 2;
    e->Meshes[4].Parent = 3;
    RemoveMesh(*e, 2);
    EXPECT_EQ(e->MeshCount, 3);
    EXPECT_EQ(e->Meshes[2].Parent, 0);  // its parent was the removed mesh
    EXPECT_EQ(e->Meshes[3].Parent, 2);  // followed its parent down

    AddCamera(*e);
    AddCamera(*e);
    e->Cameras[2].Far = 99;
    AddLight(*e);
    ClearScene(*e, 2);
    EXPECT_EQ(e->MeshCount, 1);
    EXPECT_EQ(e->Meshes[1].VertexCount, 3);
    EXPECT_EQ(e->Cameras[1].Far, 99);
    EXPECT_EQ(e->LightCount, 0);  // there was no light 2
}

TEST(SceneOperations, BoxFacesPointOutAndEditsWorkInPlace) {
    auto e = NewEngine();
    AddMesh(*e, 2, 0);  // so that the box's run does not start at 1
    const int box = AddBox(*e, {2, 4, 6});
    const MeshRecord& m = e->Meshes[box];
    ASSERT_EQ(m.FaceCount, 12);
    EXPECT_EQ(e->ObjectVertices[m.FirstVertex + 2], (Vector3{2, 0, 6}));
    const FaceRecord& first = e->Faces[m.FirstFace];
    EXPECT_EQ((std::array{first.A, first.B, first.C}), (std::array<std::int16_t, 3>{3, 7, 8}));  // (0, 4, 5)
    for (int f = m.FirstFace; f < m.FirstFace + m.FaceCount; ++f) {
        const FaceRecord& face = e->Faces[f];
        const Vector3 a = e->ObjectVertices[face.A], b = e->ObjectVertices[face.B], c = e->ObjectVertices[face.C];
        EXPECT_GT(Dot(Cross(b - a, c - a), (a + b + c) * (1.0f / 3) - Vector3{1, 2, 3}), 0) << f;
    }
    CentreMesh(*e, box);
    EXPECT_EQ(MeshBoundsMin(*e, box), (Vector3{-1, -2, -3}));
    ScaleMesh(*e, box, 2, 1, 0.5f);
    TransformMesh(*e, box, Translation({10, 0, 0}));
    EXPECT_EQ(MeshBoundsMax(*e, box), (Vector3{12, 2, 1.5f}));
}

TEST(SceneOperations, CopiesFollowTheirOwnRuns) {
    auto e = NewEngine();
    const int line = AddLine(*e, {1, 2, 3}, {4, 5, 6});
    const int box = AddBox(*e, {1, 1, 1});
    e->Meshes[box].Text = "boite";
    const MeshRecord& c = e->Meshes[DuplicateMesh(*e, box)];
    EXPECT_EQ(c.Text, "boite");
    EXPECT_EQ(e->Faces[c.FirstFace].A - e->Faces[e->Meshes[box].FirstFace].A, c.FirstVertex - 3);
    EXPECT_EQ(e->Faces[e->Meshes[DuplicateMesh(*e, line)].FirstFace].A, 0);  // still no triangle

    // Relocation: the copy's index after the original left the table.
    const int moved = RelocateMesh(*e, box);
    EXPECT_EQ(moved, 4);
    EXPECT_EQ(e->Meshes[moved].FirstVertex, 21);
    EXPECT_EQ(e->Meshes[AddMesh(*e, 8, 0)].FirstVertex, 3);  // the original's run is free again
}

TEST(SceneOperations, CheckMeshFacesDropsFacesReachingPastTheMesh) {
    auto e = NewEngine();
    const int m = AddMesh(*e, 4, 4);  // vertices 1 to 4
    const int other = AddBox(*e, {1, 1, 1});
    const int f0 = e->Meshes[m].FirstFace;
    const std::int16_t corners[4][3] = {{1, 2, 3}, {2, 3, 5}, {1, 3, 4}, {4, 5, 6}};
    for (int i = 0; i < 4; ++i) e->Faces[f0 + i] = {corners[i][0], corners[i][1], corners[i][2], {}, 0};
    CheckMeshFaces(*e, m);
    ASSERT_EQ(e->Meshes[m].FaceCount, 2);
    EXPECT_EQ(e->Faces[f0 + 1].C, 4);
    DeleteFace(*e, e->Meshes[other].FirstFace + 11);
    EXPECT_EQ(e->Meshes[other].FaceCount, 11);
    EXPECT_EQ(e->Meshes[m].FaceCount, 2);
}

}  // namespace
}  // namespace tarvokin

#include "views/engine_scene.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvokin {

namespace {

using RunField = std::int16_t MeshRecord::*;

int RunLast(const MeshRecord& mesh, RunField first, RunField count) { return mesh.*first + mesh.*count - 1; }

// Start of a free run of n entries in the vertex or face tables, 0 when there
// is none. First fit: the gap in front of each mesh's run is tried in table
// order, so the hole a removed mesh leaves is taken by the next mesh that fits.
int FindRun(const Engine& engine, int n, RunField first, RunField count) {
    if (n < 0) return 0;
    const int lastMesh = engine.meshLast();
    if (n > 0) {
        for (int m = engine.MeshFirst; m <= lastMesh; ++m) {
            const int start = engine.Meshes[m].*first;
            int before = 0;
            for (int k = engine.MeshFirst; k <= lastMesh; ++k)
                if (engine.Meshes[k].*first < start) before = std::max(before, RunLast(engine.Meshes[k], first, count));
            if (start - (before + 1) >= n) return before + 1;
        }
    }
    int last = 0;
    for (int m = engine.MeshFirst; m <= lastMesh; ++m) last = std::max(last, RunLast(engine.Meshes[m], first, count));
    return last + n <= kEngineLimit ? last + 1 : 0;
}

std::int16_t ToIndex(int i) { return static_cast<std::int16_t>(std::clamp(i, -32768, 32767)); }

// Removes record `index` of a first/count table by shifting the later ones down.
template <typename Record>
bool RemoveRecord(std::vector<Record>& table, int first, int& count, int index) {
    const int last = first + count - 1;
    if (index < first || index > last || index < 1) return false;
    for (int i = index; i < last; ++i) table[i] = std::move(table[i + 1]);
    table[last] = Record{};
    --count;
    return true;
}

// Keeps only record `keep`, moved down to the first index.
template <typename Record>
void KeepOnly(std::vector<Record>& table, int first, int& count, int keep) {
    const int last = first + count - 1;
    const bool kept = keep >= first && keep <= last && keep >= 1;
    Record record = kept ? std::move(table[keep]) : Record{};
    for (int i = std::max(first, 1); i <= last; ++i) table[i] = Record{};
    count = 0;
    if (kept) {
        table[first] = std::move(record);
        count = 1;
    }
}

int OwnerOfFace(const Engine& engine, int face) {
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        const MeshRecord& mesh = engine.Meshes[m];
        if (mesh.FaceCount > 0 && face >= mesh.FirstFace && face < mesh.FirstFace + mesh.FaceCount) return m;
    }
    return 0;
}

}  // namespace

bool IsMesh(const Engine& engine, int mesh) {
    return mesh >= 1 && mesh >= engine.MeshFirst && mesh <= engine.meshLast() && mesh <= kEngineLimit;
}
bool IsCamera(const Engine& engine, int camera) {
    return camera >= 1 && camera >= engine.CameraFirst && camera <= engine.cameraLast() && camera <= kEngineLimit;
}
bool IsLight(const Engine& engine, int light) {
    return light >= 1 && light >= engine.LightFirst && light <= engine.lightLast() && light <= kEngineLimit;
}

void InitEngine(Engine& engine, DrawSurface& surface) {
    surface.setAutoRedraw(true);
    surface.setPixelScale();
    engine.MeshFirst = 1;
    engine.CameraFirst = 1;
    engine.LightFirst = 1;
}

void ClearScene(Engine& engine, int keep) {
    int keptParent = 0;
    if (IsMesh(engine, keep) && engine.Meshes[keep].Parent == keep) keptParent = engine.MeshFirst;
    KeepOnly(engine.Meshes, engine.MeshFirst, engine.MeshCount, keep);
    if (engine.MeshCount == 1) engine.Meshes[engine.MeshFirst].Parent = ToIndex(keptParent);
    KeepOnly(engine.Cameras, engine.CameraFirst, engine.CameraCount, keep);
    KeepOnly(engine.Lights, engine.LightFirst, engine.LightCount, keep);
}

int AddMesh(Engine& engine, int vertexCount, int faceCount) {
    const int index = engine.MeshFirst + engine.MeshCount;
    if (index > kEngineLimit || index < 1 || vertexCount < 0 || faceCount < 0) {
        ReportEngineError(engine, engine_error::MeshMemory);
        return 0;
    }
    const int firstVertex = FindRun(engine, vertexCount, &MeshRecord::FirstVertex, &MeshRecord::VertexCount);
    const int firstFace = FindRun(engine, faceCount, &MeshRecord::FirstFace, &MeshRecord::FaceCount);
    if (firstVertex == 0 || firstFace == 0) {
        ReportEngineError(engine, engine_error::MeshMemory);
        return 0;
    }
    MeshRecord& mesh = engine.Meshes[index];
    mesh = MeshRecord{};
    mesh.FirstVertex = ToIndex(firstVertex);
    mesh.VertexCount = ToIndex(vertexCount);
    mesh.FirstFace = ToIndex(firstFace);
    mesh.FaceCount = ToIndex(faceCount);
    // A reused hole still holds the removed mesh's geometry.
    std::fill_n(engine.ObjectVertices.begin() + firstVertex, vertexCount, Vector3{});
    std::fill_n(engine.Faces.begin() + firstFace, faceCount, FaceRecord{});
    ++engine.MeshCount;
    return index;
}

void RemoveMesh(Engine& engine, int mesh) {
    if (!RemoveRecord(engine.Meshes, engine.MeshFirst, engine.MeshCount, mesh)) return;
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        std::int16_t& parent = engine.Meshes[m].Parent;
        if (parent == mesh)
            parent = 0;
        else if (parent > mesh)
            --parent;
    }
}

int AddCamera(Engine& engine) {
    const int index = engine.CameraFirst + engine.CameraCount;
    if (index > kEngineLimit || index < 1) {
        ReportEngineError(engine, engine_error::CameraMemory);
        return 0;
    }
    CameraRecord& camera = engine.Cameras[index];
    camera = CameraRecord{};
    camera.Near = 1.0f;
    camera.Far = 1600.0f;
    camera.FogNear = 1.0f;
    camera.FogFar = 1600.0f;
    camera.Dirty = true;
    camera.RenderMode = render_mode::Shaded;
    camera.OrthoZoom = 1.0f;
    ++engine.CameraCount;
    SetFov(engine, index, 60.0f * kDegreesToRadians);
    return index;
}

void RemoveCamera(Engine& engine, int camera) {
    RemoveRecord(engine.Cameras, engine.CameraFirst, engine.CameraCount, camera);
}

int AddLight(Engine& engine) {
    const int index = engine.LightFirst + engine.LightCount;
    if (index > kEngineLimit || index < 1) {
        ReportEngineError(engine, engine_error::LightMemory);
        return 0;
    }
    LightRecord& light = engine.Lights[index];
    light = LightRecord{};
    light.Colour = {255, 255, 255};
    light.Near = 1.0f;
    light.Far = 1600.0f;
    light.ConeOuter = -1.0f;
    light.Enabled = true;
    ++engine.LightCount;
    return index;
}

void RemoveLight(Engine& engine, int light) { RemoveRecord(engine.Lights, engine.LightFirst, engine.LightCount, light); }

int AddLine(Engine& engine, Vector3 from, Vector3 to) {
    const int mesh = AddMesh(engine, 2, 1);
    if (mesh == 0) return 0;
    const int v = engine.Meshes[mesh].FirstVertex;
    engine.ObjectVertices[v] = from;
    engine.ObjectVertices[v + 1] = to;
    return mesh;
}

int AddLabel(Engine& engine, const std::string& text, Vector3 at) {
    const int mesh = AddMesh(engine, 1, 1);
    if (mesh == 0) return 0;
    engine.ObjectVertices[engine.Meshes[mesh].FirstVertex] = at;
    engine.Meshes[mesh].Text = text;
    return mesh;
}

int AddBox(Engine& engine, Vector3 size) {
    const int mesh = AddMesh(engine, 8, 12);
    if (mesh == 0) return 0;
    const float x = size.x, y = size.y, z = size.z;
    const Vector3 corners[8] = {{0, 0, 0}, {x, 0, 0}, {x, 0, z}, {0, 0, z},
                                {0, y, 0}, {x, y, 0}, {x, y, z}, {0, y, z}};
    // Two triangles a side, wound so that cross(B - A, C - A) points out.
    static constexpr int kTriangles[12][3] = {{0, 4, 5}, {0, 5, 1},   // z = 0
                                              {3, 2, 6}, {3, 6, 7},   // z = size
                                              {0, 1, 2}, {0, 2, 3},   // y = 0
                                              {4, 7, 6}, {4, 6, 5},   // y = size
                                              {0, 3, 7}, {0, 7, 4},   // x = 0
                                              {1, 5, 6}, {1, 6, 2}};  // x = size
    const MeshRecord& record = engine.Meshes[mesh];
    for (int i = 0; i < 8; ++i) engine.ObjectVertices[record.FirstVertex + i] = corners[i];
    for (int f = 0; f < 12; ++f) {
        FaceRecord& face = engine.Faces[record.FirstFace + f];
        face.A = ToIndex(record.FirstVertex + kTriangles[f][0]);
        face.B = ToIndex(record.FirstVertex + kTriangles[f][1]);
        face.C = ToIndex(record.FirstVertex + kTriangles[f][2]);
    }
    return mesh;
}

int DuplicateMesh(Engine& engine, int mesh) {
    if (!IsMesh(engine, mesh)) return 0;
    const MeshRecord source = engine.Meshes[mesh];
    const int copy = AddMesh(engine, source.VertexCount, source.FaceCount);
    if (copy == 0) return 0;
    const int firstVertex = engine.Meshes[copy].FirstVertex;
    const int firstFace = engine.Meshes[copy].FirstFace;
    const int shift = firstVertex - source.FirstVertex;
    std::copy_n(engine.ObjectVertices.begin() + source.FirstVertex, source.VertexCount,
                engine.ObjectVertices.begin() + firstVertex);
    for (int f = 0; f < source.FaceCount; ++f) {
        FaceRecord face = engine.Faces[source.FirstFace + f];
        // Index 0 is "no vertex" (the face of a line or a label) and stays so.
        for (std::int16_t* corner : {&face.A, &face.B, &face.C})
            if (*corner != 0) *corner = ToIndex(*corner + shift);
        engine.Faces[firstFace + f] = face;
    }
    MeshRecord& record = engine.Meshes[copy];
    record = source;
    record.FirstVertex = ToIndex(firstVertex);
    record.FirstFace = ToIndex(firstFace);
    return copy;
}

int RelocateMesh(Engine& engine, int mesh) {
    if (!IsMesh(engine, mesh)) return 0;
    const int copy = DuplicateMesh(engine, mesh);
    RemoveMesh(engine, mesh);
    return copy == 0 ? 0 : copy - 1;
}

void TransformMesh(Engine& engine, int mesh, const Matrix4& matrix) {
    if (!IsMesh(engine, mesh)) return;
    const MeshRecord& record = engine.Meshes[mesh];
    for (int v = record.FirstVertex; v < record.FirstVertex + record.VertexCount; ++v)
        engine.ObjectVertices[v] = engine.ObjectVertices[v] * matrix;
}

void ScaleMesh(Engine& engine, int mesh, float sx, float sy, float sz) {
    if (!IsMesh(engine, mesh)) return;
    const MeshRecord& record = engine.Meshes[mesh];
    for (int v = record.FirstVertex; v < record.FirstVertex + record.VertexCount; ++v) {
        Vector3& p = engine.ObjectVertices[v];
        p = {p.x * sx, p.y * sy, p.z * sz};
    }
}

namespace {

template <typename Pick>
Vector3 Bounds(const Engine& engine, int mesh, Pick pick) {
    if (!IsMesh(engine, mesh)) return {};
    const MeshRecord& record = engine.Meshes[mesh];
    if (record.VertexCount <= 0) return {};
    Vector3 r = engine.ObjectVertices[record.FirstVertex];
    for (int v = record.FirstVertex + 1; v < record.FirstVertex + record.VertexCount; ++v) {
        const Vector3& p = engine.ObjectVertices[v];
        r = {pick(r.x, p.x), pick(r.y, p.y), pick(r.z, p.z)};
    }
    return r;
}

}  // namespace

Vector3 MeshBoundsMax(const Engine& engine, int mesh) {
    return Bounds(engine, mesh, [](float a, float b) { return b > a ? b : a; });
}

Vector3 MeshBoundsMin(const Engine& engine, int mesh) {
    return Bounds(engine, mesh, [](float a, float b) { return b < a ? b : a; });
}

void CentreMesh(Engine& engine, int mesh) {
    if (!IsMesh(engine, mesh)) return;
    const Vector3 middle = (MeshBoundsMin(engine, mesh) + MeshBoundsMax(engine, mesh)) * 0.5f;
    TransformMesh(engine, mesh, Translation(Vector3{} - middle));
}

void SetMeshColour(Engine& engine, int mesh, EngineColour colour, float reflectivity) {
    if (!IsMesh(engine, mesh)) return;
    const MeshRecord& record = engine.Meshes[mesh];
    for (int f = record.FirstFace; f < record.FirstFace + record.FaceCount; ++f) {
        engine.Faces[f].Colour = colour;
        engine.Faces[f].Reflectivity = reflectivity;
    }
}

void CheckMeshFaces(Engine& engine, int mesh) {
    if (!IsMesh(engine, mesh)) return;
    const MeshRecord& record = engine.Meshes[mesh];
    const int low = record.FirstVertex, high = record.FirstVertex + record.VertexCount - 1;
    const auto inside = [&](int v) { return v >= low && v <= high; };
    for (int f = record.FirstFace + record.FaceCount - 1; f >= record.FirstFace; --f) {
        const FaceRecord& face = engine.Faces[f];
        if (!inside(face.A) || !inside(face.B) || !inside(face.C)) DeleteFace(engine, f);
    }
}

void DeleteFace(Engine& engine, int face) {
    const int owner = OwnerOfFace(engine, face);
    if (owner == 0) return;
    MeshRecord& record = engine.Meshes[owner];
    const int last = record.FirstFace + record.FaceCount - 1;
    for (int f = face; f < last; ++f) engine.Faces[f] = engine.Faces[f + 1];
    engine.Faces[last] = FaceRecord{};
    --record.FaceCount;
}

void OrbitCamera(Engine& engine, int camera, Vector3 target, float distance, float azimuth, float elevation) {
    if (!IsCamera(engine, camera)) return;
    CameraRecord& record = engine.Cameras[camera];
    record.Position = target - DirectionFromAngles({0, elevation, -azimuth}) * distance;
    record.RotationX = elevation;
    record.RotationY = -azimuth;
    record.Dirty = true;
}

void SetFov(Engine& engine, int camera, float radians) {
    if (!IsCamera(engine, camera)) return;
    engine.Cameras[camera].TanHalfFov = std::tan(radians / 2.0f);
}

}  // namespace tarvokin

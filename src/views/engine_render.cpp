#include "views/engine_render.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

#include "views/engine_scene.h"

namespace tarvokin {

namespace {

bool IsVertexIndex(int v) { return v >= 0 && v <= kEngineLimit; }

// Screen coordinate to pixel, rounded; held inside a range the surfaces can
// take (an orthographic view keeps faces far off the picture).
int Pixel(float v) {
    constexpr float kLimit = 1 << 30;
    if (!(v == v)) return 0;
    return static_cast<int>(std::lround(std::clamp(v, -kLimit, kLimit)));
}

SurfacePoint ScreenPoint(const Engine& engine, int v) {
    return {Pixel(engine.ScreenVertices[v].x), Pixel(engine.ScreenVertices[v].y)};
}

std::uint16_t Channel16(std::int16_t v) { return static_cast<std::uint16_t>(std::clamp<int>(v, 0, 255) << 8); }

Vector3 FaceNormal(const Engine& engine, const FaceRecord& face) {
    const Vector3& a = engine.WorldVertices[face.A];
    return Cross(engine.WorldVertices[face.B] - a, engine.WorldVertices[face.C] - a);
}

Vector3 FaceCentroid(const Engine& engine, const FaceRecord& face) {
    const Vector3 sum = engine.WorldVertices[face.A] + engine.WorldVertices[face.B] + engine.WorldVertices[face.C];
    return {sum.x / 3.0f, sum.y / 3.0f, sum.z / 3.0f};
}

template <typename Visit>
void ForEachMeshVertex(const Engine& engine, bool visibleOnly, Visit visit) {
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        const MeshRecord& mesh = engine.Meshes[m];
        if (visibleOnly && !mesh.Visible) continue;
        const int first = std::max<int>(mesh.FirstVertex, 0);
        const int end = std::min<int>(mesh.FirstVertex + mesh.VertexCount, kEngineLimit + 1);
        for (int v = first; v < end; ++v) visit(mesh, v);
    }
}

}  // namespace

// ---- 1. object to world -----------------------------------------------------------

void UpdateMeshTransforms(Engine& engine) {
    // One pass in table order: a child after its parent follows it at once, a
    // child before it is marked only on the next frame.
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        MeshRecord& mesh = engine.Meshes[m];
        if (IsMesh(engine, mesh.Parent) && engine.Meshes[mesh.Parent].Dirty) mesh.Dirty = true;
    }
    const Matrix4 zero = ZeroMatrix();
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        MeshRecord& mesh = engine.Meshes[m];
        if (!mesh.Dirty) continue;
        mesh.Dirty = false;
        mesh.Matrix = IdentityMatrix() * Scaling(mesh.Scale) * Rotation(3, mesh.RotationZ) *
                      Rotation(1, mesh.RotationX) * Rotation(2, mesh.RotationY) * Translation(mesh.Position);
        // A parent never built yet (or none) has the zero matrix and is left out.
        if (IsMesh(engine, mesh.Parent) && engine.Meshes[mesh.Parent].Matrix != zero)
            mesh.Matrix = mesh.Matrix * engine.Meshes[mesh.Parent].Matrix;
    }
    ForEachMeshVertex(engine, false, [&](const MeshRecord& mesh, int v) {
        engine.WorldVertices[v] = engine.ObjectVertices[v] * mesh.Matrix;
    });
}

// ---- 2. world to view -------------------------------------------------------------

void UpdateViewVertices(Engine& engine, int camera) {
    if (!IsCamera(engine, camera)) return;
    CameraRecord& cam = engine.Cameras[camera];
    if (cam.Dirty) {
        cam.Dirty = false;
        const Matrix4 placing = IdentityMatrix() * Rotation(3, cam.RotationZ) * Rotation(1, cam.RotationX) *
                                Rotation(2, cam.RotationY) * Translation(cam.Position);
        cam.Matrix = Inverse(placing);
    }
    const Matrix4& view = cam.Matrix;
    ForEachMeshVertex(engine, false,
                      [&](const MeshRecord&, int v) { engine.ViewVertices[v] = engine.WorldVertices[v] * view; });
}

// ---- 3. view to screen ------------------------------------------------------------

void ProjectVertices(Engine& engine, int surfaceWidth, int surfaceHeight, int camera) {
    if (!IsCamera(engine, camera)) return;
    if (engine.CentreDivX == 0.0f) engine.CentreDivX = 2.0f;
    if (engine.CentreDivY == 0.0f) engine.CentreDivY = 2.0f;
    const CameraRecord& cam = engine.Cameras[camera];
    const float cx = static_cast<float>(surfaceWidth) / engine.CentreDivX;
    const float cy = static_cast<float>(surfaceHeight) / engine.CentreDivY;
    const float s = cx > cy ? cx : cy;
    const float h = cam.Near * cam.TanHalfFov;

    if (!(cam.Near > 0.0f) || !(cam.Near < cam.Far)) {
        // The zero matrix gives w = 0 everywhere: the screen vertices keep
        // their previous values.
        ReportEngineError(engine, engine_error::BadCamera);
        return;
    }
    Matrix4 p;
    const float depth = cam.Far - cam.Near;
    if (cam.Orthographic) {
        const float z = cam.OrthoZoom;
        p.m[0][0] = z;
        p.m[1][1] = -z;
        p.m[2][2] = 1.0f / depth;
        p.m[3][0] = cx;
        p.m[3][1] = cy;
        p.m[3][2] = -cam.Near / depth;
        p.m[3][3] = 1.0f;
    } else {
        const float t = h / cam.Near;
        p.m[0][0] = s;
        p.m[1][1] = -s;
        p.m[2][0] = cx * t;
        p.m[2][1] = cy * t;
        p.m[2][2] = cam.Far * t / depth;
        p.m[2][3] = t;
        p.m[3][2] = -cam.Far * h / depth;
    }
    ForEachMeshVertex(engine, true, [&](const MeshRecord&, int v) {
        const Vector4 q = TransformVector4(engine.ViewVertices[v], p);
        if (q.w != 0.0f) engine.ScreenVertices[v] = {q.x / q.w, q.y / q.w, q.z / q.w};
    });
}

// ---- 4. culling and sort ------------------------------------------------------------

int DrawListLength(const Engine& engine) {
    int n = 0;
    while (n + 1 < static_cast<int>(engine.DrawList.size()) && engine.DrawList[n + 1] != 0) ++n;
    return n;
}

void BuildDrawList(Engine& engine, int camera) {
    if (!IsCamera(engine, camera)) return;
    const CameraRecord& cam = engine.Cameras[camera];
    const Vector3 forward = DirectionFromAngles({cam.RotationZ, cam.RotationX, cam.RotationY});
    // A point, not a direction; an orthographic view uses it as the viewing
    // direction for its back-face test.
    const Vector3 d = cam.Position - forward;
    const float tanHalf = cam.TanHalfFov;

    int n = 0;
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        const MeshRecord& mesh = engine.Meshes[m];
        if (!mesh.Visible) continue;
        const int end = std::min<int>(mesh.FirstFace + mesh.FaceCount, kEngineLimit + 1);
        for (int f = std::max<int>(mesh.FirstFace, 1); f < end; ++f) {
            const FaceRecord& face = engine.Faces[f];
            if (!IsVertexIndex(face.A) || !IsVertexIndex(face.B) || !IsVertexIndex(face.C)) continue;
            const int corners[3] = {face.A, face.B, face.C};

            bool behind = false;
            for (int v : corners) {
                const float z = engine.ScreenVertices[v].z;
                if (!(z > 0.0f && z < 1.0f)) behind = true;
            }
            if (behind) continue;

            // Never clipped: a face touching the side of the view goes whole.
            bool outside = false;
            for (int v : corners) {
                const Vector3& p = engine.ViewVertices[v];
                const float limit = p.z * tanHalf;
                if (std::fabs(p.x) >= limit || std::fabs(p.y) >= limit) outside = true;
            }
            if (outside && !cam.Orthographic) continue;

            const Vector3 normal = FaceNormal(engine, face);
            bool keep = cam.ShowBackFaces || CosAngle(cam.Position - FaceCentroid(engine, face), normal) > 0.0f;
            if (!keep && cam.Orthographic) keep = CosAngle(d, normal) > 0.0f;
            if (!keep) continue;

            ++n;
            engine.DrawList[n] = static_cast<std::int16_t>(f);
            // Summed, not averaged: only the order matters.
            engine.SortKeys[n] = -(engine.ScreenVertices[face.A].z + engine.ScreenVertices[face.B].z +
                                   engine.ScreenVertices[face.C].z);
        }
    }
    for (int i = n + 1; i < static_cast<int>(engine.DrawList.size()) && engine.DrawList[i] != 0; ++i)
        engine.DrawList[i] = 0;
    SortDrawList(engine, 1, n);
}

void SortDrawList(Engine& engine, int lo, int hi) {
    auto& keys = engine.SortKeys;
    auto& list = engine.DrawList;
    const auto swapAt = [&](int i, int j) {
        std::swap(keys[i], keys[j]);
        std::swap(list[i], list[j]);
    };
    while (lo < hi) {
        if (hi - lo == 1) {
            if (keys[lo] > keys[hi]) swapAt(lo, hi);
            return;
        }
        const int pick = std::uniform_int_distribution<int>(lo, hi)(engine.pivotRandom);
        swapAt(pick, hi);
        const float pivot = keys[hi];
        int i = lo, j = hi - 1;
        for (;;) {
            while (i <= j && keys[i] < pivot) ++i;
            while (j >= i && keys[j] > pivot) --j;
            if (i >= j) break;
            swapAt(i, j);
            ++i;
            --j;
        }
        swapAt(i, hi);
        // The smaller side first; the larger one is taken by the loop, which
        // keeps the stack short on a long list.
        if (i - lo < hi - i) {
            SortDrawList(engine, lo, i - 1);
            lo = i + 1;
        } else {
            SortDrawList(engine, i + 1, hi);
            hi = i - 1;
        }
    }
}

// ---- 5. shading and drawing -----------------------------------------------------------

namespace {

constexpr PackedColour kWhite = 0xFFFFFF;
constexpr PackedColour kPolylineGreen = 0x008000;

void SetPens(DrawSurface& surface, int renderMode) {
    switch (renderMode) {
    case render_mode::Wireframe:
        surface.setDrawMode(drawmode::CopyPen);
        surface.setDrawStyle(drawstyle::Solid);
        surface.setFillStyle(fillstyle::None);
        surface.setForeColor(kWhite);
        break;
    case render_mode::Solid:
        surface.setDrawMode(drawmode::CopyPen);
        surface.setDrawStyle(drawstyle::Solid);
        surface.setFillStyle(fillstyle::Solid);
        surface.setForeColor(kWhite);
        break;
    case render_mode::Shaded:
        surface.setDrawMode(drawmode::CopyPen);
        surface.setDrawStyle(drawstyle::None);
        surface.setFillStyle(fillstyle::Solid);
        break;
    case render_mode::Transparent:
        surface.setDrawMode(drawmode::MergePen);
        surface.setDrawStyle(drawstyle::None);
        surface.setFillStyle(fillstyle::Solid);
        break;
    case render_mode::Inverted:
        surface.setDrawMode(drawmode::Invert);
        surface.setDrawStyle(drawstyle::Solid);
        surface.setFillStyle(fillstyle::None);
        break;
    case render_mode::Surface:
        surface.setDrawMode(drawmode::CopyPen);
        break;
    default:
        break;
    }
}

// Per-corner colours: each corner's normal is the sum of the normals of the
// listed faces around it; a corner shared by faces takes the colour computed
// for the last of them in list order, the front-most.
void ShadeCorners(Engine& engine, int camera, int n) {
    for (int i = 1; i <= n; ++i) {
        const FaceRecord& face = engine.Faces[engine.DrawList[i]];
        for (int v : {face.A, face.B, face.C}) engine.VertexNormals[v] = {};
    }
    for (int i = 1; i <= n; ++i) {
        const FaceRecord& face = engine.Faces[engine.DrawList[i]];
        const Vector3 normal = FaceNormal(engine, face);
        for (int v : {face.A, face.B, face.C}) engine.VertexNormals[v] = engine.VertexNormals[v] + normal;
    }
    for (int i = 1; i <= n; ++i) {
        const int f = engine.DrawList[i];
        const FaceRecord& face = engine.Faces[f];
        // The object vertex, not the world one: meshes placed by baking their
        // move into the object vertices have the two equal.
        for (int v : {face.A, face.B, face.C})
            engine.VertexColours[v] = Shade(engine, engine.ObjectVertices[v], engine.VertexNormals[v], f, camera);
    }
}

void DrawPrimitives(Engine& engine, DrawSurface& surface) {
    for (int m = engine.MeshFirst; m <= engine.meshLast(); ++m) {
        const MeshRecord& mesh = engine.Meshes[m];
        if (!mesh.Visible || mesh.FaceCount != 1) continue;
        const int first = mesh.FirstVertex;
        if (first < 1 || first > kEngineLimit) continue;
        const float z = engine.ScreenVertices[first].z;
        if (!(z > 0.0f && z < 1.0f)) continue;
        const PackedColour colour = ToPacked(engine.Faces[mesh.FirstFace].Colour);
        const SurfacePoint p0 = ScreenPoint(engine, first);

        if (mesh.VertexCount == 1 && mesh.Text.empty()) {
            surface.setDrawMode(drawmode::CopyPen);
            surface.setPixel(p0.x, p0.y, colour);
        } else if (mesh.VertexCount == 1) {
            surface.setForeColor(colour);
            surface.textOut(p0.x, p0.y, mesh.Text);
        } else if (mesh.VertexCount == 2) {
            surface.setDrawMode(drawmode::CopyPen);
            surface.setDrawStyle(drawstyle::Solid);
            surface.setForeColor(colour);
            surface.moveTo(p0.x, p0.y);
            const SurfacePoint p1 = ScreenPoint(engine, first + 1);
            surface.lineTo(p1.x, p1.y);
        } else if (mesh.VertexCount == 4) {
            surface.setDrawMode(drawmode::CopyPen);
            surface.setDrawStyle(drawstyle::Solid);
            surface.setForeColor(colour);
            surface.polyBezier({p0, ScreenPoint(engine, first + 1), ScreenPoint(engine, first + 2),
                                ScreenPoint(engine, first + 3)});
        } else {
            // A section outline: SectionPoints segments whatever the mesh's
            // own count, or its text written at each point.
            surface.setDrawMode(drawmode::CopyPen);
            surface.setDrawStyle(drawstyle::Solid);
            surface.setForeColor(kPolylineGreen);
            const bool ruler = mesh.Text.find("REGLE") != std::string::npos;
            for (int i = 0; i < engine.SectionPoints && first + i + 1 <= kEngineLimit; ++i) {
                const SurfacePoint a = ScreenPoint(engine, first + i);
                if (!ruler && !mesh.Text.empty()) surface.textOut(a.x, a.y, mesh.Text);
                if (mesh.Text.empty() || ruler) {
                    const SurfacePoint b = ScreenPoint(engine, first + i + 1);
                    surface.moveTo(a.x, a.y);
                    surface.lineTo(b.x, b.y);
                }
            }
        }
    }
}

}  // namespace

void ShadeAndDraw(Engine& engine, DrawSurface& surface, int camera) {
    if (!IsCamera(engine, camera)) return;
    if (engine.applyPartVisibility) engine.applyPartVisibility(engine);

    const int mode = engine.Cameras[camera].RenderMode;
    const int n = DrawListLength(engine);
    SetPens(surface, mode);

    if (mode == render_mode::Solid) {
        for (int i = 1; i <= n; ++i) engine.FaceColours[engine.DrawList[i]] = engine.Faces[engine.DrawList[i]].Colour;
    } else if (mode == render_mode::Shaded || mode == render_mode::Transparent) {
        for (int i = 1; i <= n; ++i) {
            const int f = engine.DrawList[i];
            const FaceRecord& face = engine.Faces[f];
            engine.FaceColours[f] = Shade(engine, FaceCentroid(engine, face), FaceNormal(engine, face), f, camera);
        }
    } else if (mode == render_mode::Surface) {
        ShadeCorners(engine, camera, n);
    }

    for (int i = 1; i <= n; ++i) {
        const int f = engine.DrawList[i];
        const FaceRecord& face = engine.Faces[f];
        if (mode == render_mode::Surface) {
            std::array<GradientVertex, 3> corners;
            const int v[3] = {face.A, face.B, face.C};
            for (int k = 0; k < 3; ++k) {
                const SurfacePoint p = ScreenPoint(engine, v[k]);
                const EngineColour& c = engine.VertexColours[v[k]];
                corners[k] = {p.x, p.y, Channel16(c.R), Channel16(c.G), Channel16(c.B)};
            }
            surface.gradientTriangle(corners);
        } else {
            surface.setFillColor(ToPacked(engine.FaceColours[f]));
            const SurfacePoint points[3] = {ScreenPoint(engine, face.A), ScreenPoint(engine, face.B),
                                            ScreenPoint(engine, face.C)};
            surface.polygon(points);
        }
    }

    DrawPrimitives(engine, surface);
}

// ---- the frame ------------------------------------------------------------------------

void RenderScene(Engine& engine, DrawSurface& surface, int camera) {
    if (!IsCamera(engine, camera)) return;
    UpdateMeshTransforms(engine);
    UpdateViewVertices(engine, camera);
    ProjectVertices(engine, surface.width(), surface.height(), camera);
    BuildDrawList(engine, camera);
    ShadeAndDraw(engine, surface, camera);
}

}  // namespace tarvokin

#include "construction/frame_mesh.h"

#include <algorithm>
#include <cmath>

#include "construction/frame_curve.h"
#include "views/engine.h"

namespace tarvokin {

int FrameViewRenderMode(int view) {
    switch (view) {
        case 0: return render_mode::Transparent;
        case 1: return render_mode::Inverted;
        case 2: return render_mode::Wireframe;
        case 3: return render_mode::Solid;
        default: return render_mode::Surface;
    }
}

std::vector<MeshPoint> FrameContour(const FrameState& f, const FramePoints& right, const FramePoints& left,
                                    FrameKind kind) {
    auto mm = [&f](const FramePoint& p) {
        return MeshPoint{(p.x - f.AxeX) * kFrameMillimetresPerPixel, (f.BaseLineY - p.y) * kFrameMillimetresPerPixel,
                         0};
    };
    std::vector<MeshPoint> loop;
    if (right.size() < 2 || left.size() != right.size()) return loop;
    // Round the frame: down the right half, up the left one; the ends on the
    // axis are shared.
    for (const FramePoint& p : right) loop.push_back(mm(p));
    for (size_t i = left.size() - 1; i-- > 1;) loop.push_back(mm(left[i]));
    if (kind == FrameKind::Whole) return loop;

    std::vector<MeshPoint> half;
    if (kind == FrameKind::Right || kind == FrameKind::Left) {
        const bool rightSide = kind == FrameKind::Right;
        for (const FramePoint& p : rightSide ? right : left) half.push_back(mm(p));
        return half;  // closed by the straight cut along the axis
    }
    // Upper and lower halves: cut at the middle height of the frame.
    double lo = loop[0].y, hi = loop[0].y;
    for (const MeshPoint& p : loop) {
        lo = std::min(lo, p.y);
        hi = std::max(hi, p.y);
    }
    const double cut = (lo + hi) / 2;
    const bool upper = kind == FrameKind::Upper;
    const size_t n = loop.size();
    // Walk the loop from a point kept and add the crossings of the cut.
    size_t start = 0;
    while (start < n && (upper ? loop[start].y < cut : loop[start].y > cut)) ++start;
    if (start == n) return half;
    for (size_t k = 0; k < n; ++k) {
        const MeshPoint& a = loop[(start + k) % n];
        const MeshPoint& b = loop[(start + k + 1) % n];
        const bool ka = upper ? a.y >= cut : a.y <= cut, kb = upper ? b.y >= cut : b.y <= cut;
        if (ka) half.push_back(a);
        if (ka != kb && b.y != a.y) {
            const double t = (cut - a.y) / (b.y - a.y);
            half.push_back({a.x + t * (b.x - a.x), cut, 0});
        }
    }
    return half;
}

SkinMesh FrameSkin(const FrameState& f, FrameKind kind) {
    SkinMesh m;
    FramePoints right, left, dRight, dLeft;
    EvaluateBSpline(f.ControlPoints, f.CurveOrder, f.PointCount, right);
    left = MirrorCurve(right, f.AxeX);
    const std::vector<MeshPoint> outer = FrameContour(f, right, left, kind);
    if (outer.size() < 3) return m;
    const int P = static_cast<int>(outer.size()) + 1;  // each row closed on its first point
    auto row = [&m](const std::vector<MeshPoint>& c, double z) {
        for (size_t i = 0; i <= c.size(); ++i) {
            const MeshPoint& p = c[i % c.size()];
            m.vertices.push_back({p.x, p.y, z});
        }
    };
    std::vector<MeshPoint> inner;
    if (f.Doubling) {
        EvaluateBSpline(f.DoubledControl, f.CurveOrder, f.PointCount, dRight);
        dLeft = MirrorCurve(dRight, f.AxeX);
        inner = FrameContour(f, dRight, dLeft, kind);
    }
    if (inner.size() == outer.size()) {
        // A ring: outer face, back, inner face, front, back to the start.
        row(outer, -0.5);
        row(outer, 0.5);
        row(inner, 0.5);
        row(inner, -0.5);
        row(outer, -0.5);
        m.faces = LoftFaces(P, 5);
    } else {
        // A plate: the rows collapse on the contour's middle, the end caps of
        // the body skin's row scheme.
        MeshPoint c;
        for (const MeshPoint& p : outer) {
            c.x += p.x / outer.size();
            c.y += p.y / outer.size();
        }
        const std::vector<MeshPoint> centre(outer.size(), c);
        row(centre, -0.5);
        row(outer, -0.5);
        row(outer, 0.5);
        row(centre, 0.5);
        m.faces = LoftFaces(P, 4);
    }
    const int count = static_cast<int>(m.vertices.size());
    std::erase_if(m.faces, [count](const MeshTriangle& t) { return t.a >= count || t.b >= count || t.c >= count; });
    return m;
}

void BuildFrameMesh(FrameState& f, FrameKind kind, double thickness, double heightPercent, double lengthPercent) {
    Engine& e = f.engine;
    while (e.MeshCount > 0) RemoveMesh(e, e.meshLast());
    f.meshes.clear();
    f.baseVertices.clear();
    f.meshReady = false;
    if (!IsCamera(e, f.CameraIndex)) f.CameraIndex = AddCamera(e);
    if (IsCamera(e, f.CameraIndex)) {
        e.Cameras[f.CameraIndex].OrthoZoom = 1.0f;
        e.Cameras[f.CameraIndex].Background = {40, 40, 60};
    }
    if (!IsLight(e, f.LightIndex)) f.LightIndex = AddLight(e);

    const SkinMesh skin = FrameSkin(f, kind);
    if (skin.vertices.empty()) return;
    const int mesh = AddMesh(e, static_cast<int>(skin.vertices.size()), static_cast<int>(skin.faces.size()));
    if (mesh == 0) return;  // the scene is full: the engine stays silent
    const MeshRecord& r = e.Meshes[mesh];
    for (size_t i = 0; i < skin.vertices.size(); ++i)
        e.ObjectVertices[r.FirstVertex + i] = {static_cast<float>(skin.vertices[i].x),
                                               static_cast<float>(skin.vertices[i].y),
                                               static_cast<float>(skin.vertices[i].z)};
    for (size_t j = 0; j < skin.faces.size(); ++j) {
        FaceRecord& fr = e.Faces[r.FirstFace + j];
        fr.A = static_cast<std::int16_t>(r.FirstVertex + skin.faces[j].a);
        fr.B = static_cast<std::int16_t>(r.FirstVertex + skin.faces[j].b);
        fr.C = static_cast<std::int16_t>(r.FirstVertex + skin.faces[j].c);
    }
    CheckMeshFaces(e, mesh);
    CentreMesh(e, mesh);
    SetMeshColour(e, mesh, {210, 170, 110}, 0.6f);  // plywood
    f.meshes.push_back(mesh);
    const MeshRecord& rr = e.Meshes[mesh];
    f.baseVertices.assign(e.ObjectVertices.begin() + rr.FirstVertex,
                          e.ObjectVertices.begin() + rr.FirstVertex + rr.VertexCount);
    // The camera stands back far enough to see the whole piece.
    const Vector3 hi = MeshBoundsMax(e, mesh), lo = MeshBoundsMin(e, mesh);
    const float size = std::max({hi.x - lo.x, hi.y - lo.y, 1.0f});
    if (f.ViewDistance <= 0) f.ViewDistance = 2.2f * size;
    f.meshReady = true;
    ResizeFrameMesh(f, thickness, heightPercent, lengthPercent);
}

void ResizeFrameMesh(FrameState& f, double thickness, double heightPercent, double lengthPercent) {
    if (!f.meshReady || f.meshes.empty()) return;
    Engine& e = f.engine;
    const MeshRecord& r = e.Meshes[f.meshes.front()];
    if (static_cast<size_t>(r.VertexCount) != f.baseVertices.size()) return;
    const float sx = static_cast<float>(lengthPercent / 100), sy = static_cast<float>(heightPercent / 100);
    const float sz = static_cast<float>(std::max(0.1, thickness));
    for (size_t i = 0; i < f.baseVertices.size(); ++i) {
        const Vector3& b = f.baseVertices[i];
        e.ObjectVertices[r.FirstVertex + i] = {b.x * sx, b.y * sy, b.z * sz};
    }
}

void RenderFrame(FrameState& f, DrawSurface& surface, int view) {
    Engine& e = f.engine;
    if (!IsCamera(e, f.CameraIndex)) return;
    InitEngine(e, surface);
    CameraRecord& c = e.Cameras[f.CameraIndex];
    c.RenderMode = static_cast<std::int16_t>(FrameViewRenderMode(view));
    c.Specular = view == 4;
    OrbitCamera(e, f.CameraIndex, {0, 0, 0}, f.ViewDistance > 0 ? f.ViewDistance : 200.0f, f.ViewAzimuth,
                f.ViewElevation);
    if (IsLight(e, f.LightIndex)) e.Lights[f.LightIndex].Position = c.Position;
    surface.clear(ToPacked(c.Background));
    RenderScene(e, surface, f.CameraIndex);
}

void OrbitFrame(FrameState& f, double dx, double dy, bool zoom) {
    if (zoom) {
        f.ViewDistance = std::max(5.0f, f.ViewDistance + static_cast<float>(dy));
        return;
    }
    f.ViewAzimuth += static_cast<float>(dx * 0.01);
    f.ViewElevation = std::clamp(f.ViewElevation + static_cast<float>(dy * 0.01), -1.5f, 1.5f);
}

}  // namespace tarvokin

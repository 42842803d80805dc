#include "views/rib_scene.h"

#include <algorithm>
#include <cmath>

#include "core/workbench.h"
#include "views/engine.h"

namespace tarvokin {

namespace {

constexpr EngineColour kRibColour{205, 170, 110};   // balsa
constexpr EngineColour kSkinColour{120, 160, 215};  // covering film
constexpr EngineColour kBackground{235, 235, 235};
// The scene is scaled so that its largest extent spans this many units: the
// default orbit distance then frames it whatever the panel's size in mm.
constexpr double kSceneExtent = 200.0;
// Points a rib keeps in the preview: the engine's tables hold 10000 vertices
// for the whole scene, and a preview needs no more detail than this.
constexpr size_t kPreviewPoints = 80;

struct P3 {
    double x, y, z;
};

int addMesh(Engine& e, const std::vector<P3>& v, const std::vector<std::array<int, 3>>& f, EngineColour colour) {
    if (v.empty() || f.empty()) return 0;
    const int m = AddMesh(e, static_cast<int>(v.size()), static_cast<int>(f.size()));
    if (m == 0) return 0;
    const MeshRecord& r = e.Meshes[m];
    for (size_t i = 0; i < v.size(); ++i)
        e.ObjectVertices[r.FirstVertex + i] = {static_cast<float>(v[i].x), static_cast<float>(v[i].y),
                                              static_cast<float>(v[i].z)};
    for (size_t j = 0; j < f.size(); ++j) {
        FaceRecord& face = e.Faces[r.FirstFace + j];
        face.A = static_cast<std::int16_t>(r.FirstVertex + f[j][0]);
        face.B = static_cast<std::int16_t>(r.FirstVertex + f[j][1]);
        face.C = static_cast<std::int16_t>(r.FirstVertex + f[j][2]);
    }
    CheckMeshFaces(e, m);
    SetMeshColour(e, m, colour, 0.3f);
    return m;
}

// Indices of the preview points of an outline of n points: evenly picked, the
// first and last always kept.
std::vector<size_t> previewIndices(size_t n) {
    std::vector<size_t> idx;
    if (n == 0) return idx;
    const size_t stride = std::max<size_t>(1, (n + kPreviewPoints - 1) / kPreviewPoints);
    for (size_t i = 0; i < n; i += stride) idx.push_back(i);
    if (idx.back() != n - 1) idx.push_back(n - 1);
    return idx;
}

}  // namespace

void BuildRibScene(Workbench& wb) {
    RibView& v = wb.generators.ribView;
    if (!v.engine) v.engine = std::make_unique<Engine>();
    Engine& e = *v.engine;
    ClearScene(e, 0);
    if (v.surface) InitEngine(e, *v.surface);
    v.CameraIndex = AddCamera(e);
    v.LightIndex = AddLight(e);
    if (IsCamera(e, v.CameraIndex)) {
        CameraRecord& c = e.Cameras[v.CameraIndex];
        c.RenderMode = render_mode::Shaded;
        c.ShowBackFaces = true;  // a rib plate is seen from both sides
        c.Background = kBackground;
    }
    v.NeedsRedraw = true;

    const auto& ribs = wb.generators.ribs;
    if (ribs.empty() || ribs.front().points.size() < 3) return;
    const Sheet& s = wb.sheet;
    const bool ribStyle = s.on(F_RIBS::Option2[1]);
    const bool skin = !ribStyle || s.on(F_RIBS::Check1);
    const double heightScale = std::clamp(s.val(F_RIBS::Slider1), 1.0, 5.0);
    const std::vector<size_t> idx = previewIndices(ribs.front().points.size());

    // Bounds in mm, to centre and scale the scene.
    double x0 = 1e300, x1 = -1e300, y0 = 1e300, y1 = -1e300;
    for (const RibOutline& r : ribs)
        for (const OutlinePoint& p : r.points) {
            x0 = std::min(x0, p.x), x1 = std::max(x1, p.x);
            y0 = std::min(y0, p.y * heightScale), y1 = std::max(y1, p.y * heightScale);
        }
    const double z1 = ribs.back().position;
    const double extent = std::max({x1 - x0, y1 - y0, z1, 1.0});
    const double k = kSceneExtent / extent;
    auto place = [&](const OutlinePoint& p, double z) {
        return P3{(p.x - (x0 + x1) / 2) * k, (p.y * heightScale - (y0 + y1) / 2) * k, (z - z1 / 2) * k};
    };

    const int n = static_cast<int>(idx.size());
    if (ribStyle) {
        // Each rib a plate: point i of the upper surface joined to the point
        // as far from the trailing edge on the lower one.
        std::vector<std::array<int, 3>> faces;
        for (int i = 0;; ++i) {
            const int j = n - 1 - i;
            if (i + 1 >= j) break;
            if (i + 1 == j - 1) {  // the nose point left alone in the middle
                faces.push_back({i, i + 1, j});
                break;
            }
            faces.push_back({i, i + 1, j - 1});
            faces.push_back({i, j - 1, j});
        }
        for (const RibOutline& r : ribs) {
            std::vector<P3> pts;
            for (size_t i : idx) pts.push_back(place(r.points[i], r.position));
            addMesh(e, pts, faces, kRibColour);
        }
    }
    if (skin && ribs.size() > 1) {
        std::vector<P3> pts;
        for (const RibOutline& r : ribs)
            for (size_t i : idx) pts.push_back(place(r.points[i], r.position));
        std::vector<std::array<int, 3>> faces;
        for (int row = 0; row + 1 < static_cast<int>(ribs.size()); ++row)
            for (int i = 0; i + 1 < n; ++i) {
                const int a = row * n + i, b = (row + 1) * n + i;
                faces.push_back({a, b, b + 1});
                faces.push_back({a, b + 1, a + 1});
            }
        addMesh(e, pts, faces, kSkinColour);
    }
}

void DrawRibFrame(Workbench& wb) {
    RibView& v = wb.generators.ribView;
    v.NeedsRedraw = false;
    if (!v.engine || !v.surface) return;
    Engine& e = *v.engine;
    if (!IsCamera(e, v.CameraIndex)) return;
    OrbitCamera(e, v.CameraIndex, {0, 0, 0}, v.ViewDistance, v.ViewAzimuth, v.ViewElevation);
    if (IsLight(e, v.LightIndex)) e.Lights[v.LightIndex].Position = e.Cameras[v.CameraIndex].Position;
    v.surface->clear(ToPacked(kBackground));
    RenderScene(e, *v.surface, v.CameraIndex);
}

void RibViewPress(Workbench& wb, int x, int y) {
    RibView& v = wb.generators.ribView;
    v.LastMouseX = x;
    v.LastMouseY = y;
}

void RibViewDrag(Workbench& wb, int x, int y, bool left, bool right) {
    RibView& v = wb.generators.ribView;
    const int dx = x - v.LastMouseX, dy = y - v.LastMouseY;
    v.LastMouseX = x;
    v.LastMouseY = y;
    if (left) {
        v.ViewAzimuth += 0.01f * static_cast<float>(dx);
        v.ViewElevation = std::clamp(v.ViewElevation + 0.01f * static_cast<float>(dy), -1.55f, 1.55f);
        v.NeedsRedraw = true;
    } else if (right) {
        v.ViewDistance = std::max(20.0f, v.ViewDistance + static_cast<float>(dy));
        v.NeedsRedraw = true;
    }
}

void RibViewZoom(Workbench& wb, double notches) {
    RibView& v = wb.generators.ribView;
    v.ViewDistance = std::max(20.0f, v.ViewDistance - static_cast<float>(notches * 15.0));
    v.NeedsRedraw = true;
}

}  // namespace tarvokin

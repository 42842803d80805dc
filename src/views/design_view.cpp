#include "views/design_view.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/numbers.h"
#include "core/profile_file.h"
#include "core/workbench.h"
#include "core/project_key.h"
#include "views/aircraft_mesh.h"
#include "views/engine.h"

namespace tarvokin {

namespace {

constexpr float kPi = 3.14159265f;
// The three-quarter view of the first look: turned from the nose towards the
// built wing half, and from above.
constexpr float kFrameAzimuth = -2.3f;
constexpr float kFrameElevation = 0.45f;

bool pointInTriangle(float px, float py, const Vector3& a, const Vector3& b, const Vector3& c) {
    const float d1 = (px - b.x) * (a.y - b.y) - (a.x - b.x) * (py - b.y);
    const float d2 = (px - c.x) * (b.y - c.y) - (b.x - c.x) * (py - c.y);
    const float d3 = (px - a.x) * (c.y - a.y) - (c.x - a.x) * (py - a.y);
    const bool neg = d1 < 0 || d2 < 0 || d3 < 0;
    const bool pos = d1 > 0 || d2 > 0 || d3 > 0;
    return !(neg && pos);
}

// Outline of a face in the invert pen: drawn twice, it is gone again.
void invertOutline(Workbench& wb, int face) {
    AircraftView& v = wb.view3d;
    if (!v.surface || face <= 0 || face > kEngineLimit) return;
    const FaceRecord& f = v.engine.Faces[static_cast<size_t>(face)];
    if (f.A <= 0 || f.B <= 0 || f.C <= 0) return;
    const auto& sv = v.engine.ScreenVertices;
    const SurfacePoint pts[3] = {
        {static_cast<int>(std::lround(sv[f.A].x)), static_cast<int>(std::lround(sv[f.A].y))},
        {static_cast<int>(std::lround(sv[f.B].x)), static_cast<int>(std::lround(sv[f.B].y))},
        {static_cast<int>(std::lround(sv[f.C].x)), static_cast<int>(std::lround(sv[f.C].y))}};
    v.surface->setDrawMode(drawmode::Invert);
    v.surface->setDrawStyle(drawstyle::Solid);
    v.surface->setFillStyle(fillstyle::None);
    v.surface->polygon(pts);
    v.surface->setDrawMode(drawmode::CopyPen);
    v.surface->setFillStyle(fillstyle::Solid);
}

void setMeshesColour(Engine& e, const int* meshes, size_t n, EngineColour c) {
    for (size_t i = 0; i < n; ++i)
        if (meshes[i] && IsMesh(e, meshes[i])) SetMeshColour(e, meshes[i], c, 0.9f);
}

}  // namespace

bool ViewTakesFrames(const Workbench& wb) {
    return wb.isOpen(button::View3D) && wb.sheet.val(F_3D::Text4) != 0;
}

void DrawViewFrame(Workbench& wb) {
    AircraftView& v = wb.view3d;
    v.NeedsRedraw = false;
    Engine& e = v.engine;
    if (!v.surface || !IsCamera(e, v.CameraIndex)) return;
    const Vector3 origin{0, 0, 0};
    const bool light = IsLight(e, v.LightIndex);
    if (!v.LightFollowsView) {
        OrbitCamera(e, v.CameraIndex, origin, v.ViewDistance, v.ViewAzimuth, v.ViewElevation);
        if (light) e.Lights[v.LightIndex].Position = e.Cameras[v.CameraIndex].Position;
    } else if (light) {
        e.Lights[v.LightIndex].Position =
            origin + DirectionFromAngles({0, v.ViewElevation, -v.ViewAzimuth}) * (-v.ViewDistance);
    }
    if (v.LampMesh && IsMesh(e, v.LampMesh) && light) {
        MeshRecord& lamp = e.Meshes[v.LampMesh];
        lamp.Position = e.Lights[v.LightIndex].Position;
        lamp.RotationX = v.ViewElevation;
        lamp.RotationY = -v.ViewAzimuth;
        lamp.Dirty = true;
    }
    v.surface->clear(ToPacked(ColourFromString(wb.sheet.text(F_3D::T_Backolor))));
    RenderScene(e, *v.surface, v.CameraIndex);
    if (v.LampMesh && IsMesh(e, v.LampMesh)) e.Meshes[v.LampMesh].Visible = false;
    v.HoverFace = 0;  // the new picture has no highlight
}

int PickFace(const Workbench& wb, int x, int y) {
    const Engine& e = wb.view3d.engine;
    const int n = DrawListLength(e);
    // The list runs far to near: the last face that covers the pixel is on top.
    for (int i = n; i >= 1; --i) {
        const int face = e.DrawList[static_cast<size_t>(i)];
        if (face <= 0) continue;
        const FaceRecord& f = e.Faces[static_cast<size_t>(face)];
        if (f.A <= 0 || f.B <= 0 || f.C <= 0) continue;
        const auto& sv = e.ScreenVertices;
        if (pointInTriangle(static_cast<float>(x), static_cast<float>(y), sv[f.A], sv[f.B], sv[f.C])) return face;
    }
    return 0;
}

float PickedReflectivity(const Workbench& wb) { return wb.view3d.PickedReflectivity; }

void ViewMouseMove(Workbench& wb, int x, int y, ViewMouse m) {
    AircraftView& v = wb.view3d;
    if (!m.left && !m.right) {
        if (v.LampMesh == 0) {
            const int face = PickFace(wb, x, y);
            if (face != v.HoverFace) {
                invertOutline(wb, v.HoverFace);
                invertOutline(wb, face);
                v.HoverFace = face;
            }
        }
    } else if (m.left && !m.shift) {
        v.Framed = false;
        v.ViewAzimuth -= static_cast<float>(x - v.LastMouseX) * v.RotateSensitivity;
        v.ViewElevation += static_cast<float>(y - v.LastMouseY) * v.RotateSensitivity;
        while (v.ViewAzimuth > kPi) v.ViewAzimuth -= 2 * kPi;
        while (v.ViewAzimuth < -kPi) v.ViewAzimuth += 2 * kPi;
        v.ViewElevation = std::fmax(-kPi / 2, std::fmin(kPi / 2, v.ViewElevation));
        v.NeedsRedraw = true;
    } else if (m.left && m.shift) {
        v.Framed = false;
        // The centre of the picture goes to the pressed point; a zero divisor
        // is read as 2 by the projection, which puts the centre back in the middle.
        if (v.surface) {
            v.engine.CentreDivX = v.LastMouseX == 0 ? 0 : static_cast<float>(v.surface->width()) / v.LastMouseX;
            v.engine.CentreDivY = v.LastMouseY == 0 ? 0 : static_cast<float>(v.surface->height()) / v.LastMouseY;
        }
        v.NeedsRedraw = true;
    } else if (m.right) {
        v.Framed = false;
        v.ViewDistance = std::fmax(0.0f, v.ViewDistance + static_cast<float>(y - v.LastMouseY) * v.ZoomSensitivity);
        v.NeedsRedraw = true;
    }
    v.LastMouseX = x;
    v.LastMouseY = y;
}

void ViewMousePress(Workbench& wb, int x, int y, ViewMouse m) {
    AircraftView& v = wb.view3d;
    if (wb.sheet.val(F_3D::Text4) == 0) wb.sheet.set(F_3D::Text4, "1");
    if (m.right) {
        const int face = PickFace(wb, x, y);
        if (face > 0) v.PickedReflectivity = v.engine.Faces[static_cast<size_t>(face)].Reflectivity;
    }
    v.LastMouseX = x;
    v.LastMouseY = y;
    v.NeedsRedraw = true;
}

void PressRenderButton(Workbench& wb, int index) {
    if (!F_3D::pb1.holds(index)) return;
    for (int i = 0; i < F_3D::pb1.count; ++i) wb.sheet.set(F_3D::pb1[i], i == index ? "1" : "0");
    Engine& e = wb.view3d.engine;
    const int cam = wb.view3d.CameraIndex;
    if (IsCamera(e, cam)) {
        static constexpr int kModes[5] = {render_mode::Inverted, render_mode::Wireframe, render_mode::Solid,
                                          render_mode::Transparent, render_mode::Surface};
        e.Cameras[cam].RenderMode = static_cast<int16_t>(kModes[index]);
        for (int i : {4, 5, 6}) ViewSwitchChanged(wb, i);
    }
    wb.view3d.NeedsRedraw = true;
}

void ViewSwitchChanged(Workbench& wb, int index) {
    const Sheet& s = wb.sheet;
    AircraftView& v = wb.view3d;
    Engine& e = v.engine;
    if (IsCamera(e, v.CameraIndex)) {
        CameraRecord& c = e.Cameras[v.CameraIndex];
        c.Specular = s.on(F_3D::Check1[6]) && !s.on(F_3D::pb1[3]);
        c.DepthEffects = s.on(F_3D::Check1[5]);
        c.ColourCorrection = s.on(F_3D::Check1[4]);
    }
    if (index == 8) {
        for (int m : v.parts.MeshAxisLabels)
            if (m && IsMesh(e, m)) e.Meshes[m].Visible = s.on(F_3D::Check1[8]) && s.on(F_3D::Check1[9]);
    }
    if (index == 9) {
        // Axes off take the background's colour, so they vanish even where the
        // part switches would not hide them; on, they are red.
        const EngineColour colour = s.on(F_3D::Check1[9]) ? EngineColour{255, 0, 0}
                                                         : ColourFromString(s.text(F_3D::T_Backolor));
        for (int m : v.parts.MeshAxes)
            if (m && IsMesh(e, m)) SetMeshColour(e, m, colour, 0.5f);
        for (int m : v.parts.MeshAxisLabels)
            if (m && IsMesh(e, m)) SetMeshColour(e, m, colour, 0.5f);
    }
    v.NeedsRedraw = true;
}

void SetViewColour(Workbench& wb, Cell sample, PackedColour colour) {
    const std::string text = std::to_string(colour);
    wb.sheet.set(sample, text);
    AircraftView& v = wb.view3d;
    Engine& e = v.engine;
    const EngineColour c = ColourFromPacked(colour);
    const AircraftParts& p = v.parts;
    const char* key = nullptr;
    bool project = true;
    if (sample == F_3D::T_Ailes) {
        key = "Ailes";
        setMeshesColour(e, p.MeshWingLeft.data(), p.MeshWingLeft.size(), c);
        setMeshesColour(e, p.MeshWingRight.data(), p.MeshWingRight.size(), c);
    } else if (sample == F_3D::T_Stab) {
        key = "Stab";
        setMeshesColour(e, p.MeshStabLeft.data(), p.MeshStabLeft.size(), c);
        setMeshesColour(e, p.MeshStabRight.data(), p.MeshStabRight.size(), c);
    } else if (sample == F_3D::T_Derive) {
        key = "Derive";
        const int fins[2] = {p.MeshFin, p.MeshFinCopy};
        setMeshesColour(e, fins, 2, c);
    } else if (sample == F_3D::T_Fus) {
        key = "Fuselage";
        setMeshesColour(e, p.MeshFuselage.data(), p.MeshFuselage.size(), c);
    } else if (sample == F_3D::T_Backolor) {
        key = "3D_Backolor";
        project = false;
        if (IsCamera(e, v.CameraIndex)) e.Cameras[v.CameraIndex].Background = c;
    } else if (sample == F_3D::T_Filaire) {
        key = "3D_Filaire";
        project = false;
    }
    if (!key) return;
    if (project && !wb.projectFilePath.empty())
        WriteProjectKey(wb, "Colors", key, text);
    else if (!project)
        WriteProfileString("Colors", key, text, wb.settingsFilePath());
    v.NeedsRedraw = true;
}

const char* PhotoKey(int place) {
    static const char* keys[4] = {"Photo_Profil", "Photo_Dessus", "Photo_Face", "Photo_Centrage"};
    return place >= 0 && place < 4 ? keys[place] : "";
}

void FrameAircraft(Workbench& wb) {
    AircraftView& v = wb.view3d;
    const Engine& e = v.engine;
    const AircraftParts& p = v.parts;
    // The camera orbits the origin: what must fit is the sphere about the
    // origin that holds every corner of every part's box.
    float radius = 0;
    auto take = [&](int mesh) {
        if (!mesh || !IsMesh(e, mesh)) return;
        const MeshRecord& m = e.Meshes[static_cast<size_t>(mesh)];
        const Vector3 lo = MeshBoundsMin(e, mesh), hi = MeshBoundsMax(e, mesh);
        for (int k = 0; k < 8; ++k) {
            const Vector3 corner{(k & 1) ? hi.x : lo.x, (k & 2) ? hi.y : lo.y, (k & 4) ? hi.z : lo.z};
            const Vector3 world{corner.x * m.Scale.x + m.Position.x, corner.y * m.Scale.y + m.Position.y,
                                corner.z * m.Scale.z + m.Position.z};
            radius = std::max(radius, Length(world));
        }
    };
    for (const auto* list : {&p.MeshWingLeft, &p.MeshWingRight, &p.MeshStabLeft, &p.MeshStabRight})
        for (int mesh : *list) take(mesh);
    take(p.MeshFin);
    take(p.MeshFinCopy);
    for (int mesh : p.MeshFuselage) take(mesh);
    if (!(radius > 0) || !IsCamera(e, v.CameraIndex)) return;

    // The camera's angle spans the longer side of the picture; the shorter
    // side sees less, and it is the one the sphere must fit.
    const float w = v.surface ? static_cast<float>(std::max(1, v.surface->width())) : 4.0f;
    const float h = v.surface ? static_cast<float>(std::max(1, v.surface->height())) : 3.0f;
    const float tanHalf = e.Cameras[static_cast<size_t>(v.CameraIndex)].TanHalfFov * std::min(w, h) / std::max(w, h);
    if (!(tanHalf > 0)) return;
    const float sinHalf = tanHalf / std::sqrt(1.0f + tanHalf * tanHalf);
    constexpr float kMargin = 1.08f;
    v.ViewAzimuth = kFrameAzimuth;
    v.ViewElevation = kFrameElevation;
    v.ViewDistance = radius / sinHalf * kMargin;
    v.Framed = true;
    v.NeedsRedraw = true;
}

}  // namespace tarvokin

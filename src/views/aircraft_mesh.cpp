#include "views/aircraft_mesh.h"

#include <cmath>
#include <utility>

#include "core/numbers.h"
#include "core/profile_file.h"
#include "core/workbench.h"
#include "views/aircraft_layout.h"
#include "views/mesh_outline.h"

namespace tarvokin {

namespace {

// Toolbar button that freezes the view: while pressed the scene keeps its
// camera, light and visibility as they are.
constexpr int kFreezeButton = 26;
constexpr float kPartReflectivity = 0.9f;
constexpr PackedColour kAxisColour = 255;     // red
constexpr PackedColour kLabelColour = 65280;  // green
const Vector3 kAxesCorner{-70, -35, -70};

EngineColour sampleColour(const Sheet& s, Cell sample) { return ColourFromString(s.text(sample)); }

// A skin into the engine at scene scale. 0 when the tables have no room (the
// part is then simply missing) or the skin is empty.
int addSkin(Engine& e, const SkinMesh& m, EngineColour colour) {
    if (m.vertices.empty()) return 0;
    const int index = AddMesh(e, static_cast<int>(m.vertices.size()), static_cast<int>(m.faces.size()));
    if (index == 0) return 0;
    const MeshRecord& r = e.Meshes[index];
    for (size_t i = 0; i < m.vertices.size(); ++i) {
        const MeshPoint& v = m.vertices[i];
        e.ObjectVertices[r.FirstVertex + i] = {static_cast<float>(v.x * kSceneScale),
                                              static_cast<float>(v.y * kSceneScale),
                                              static_cast<float>(v.z * kSceneScale)};
    }
    for (size_t j = 0; j < m.faces.size(); ++j) {
        FaceRecord& f = e.Faces[r.FirstFace + j];
        f.A = static_cast<std::int16_t>(r.FirstVertex + m.faces[j].a);
        f.B = static_cast<std::int16_t>(r.FirstVertex + m.faces[j].b);
        f.C = static_cast<std::int16_t>(r.FirstVertex + m.faces[j].c);
    }
    CheckMeshFaces(e, index);
    SetMeshColour(e, index, colour, kPartReflectivity);
    return index;
}

// The right-hand copy of a left-hand mesh: mirrored across z = 0 and wound
// the other way round, so that its faces still look outwards.
int mirrorCopy(Engine& e, int mesh) {
    if (mesh == 0) return 0;
    const int copy = DuplicateMesh(e, mesh);
    if (copy == 0) return 0;
    ScaleMesh(e, copy, 1, 1, -1);
    const MeshRecord& r = e.Meshes[copy];
    for (int f = r.FirstFace; f < r.FirstFace + r.FaceCount; ++f) std::swap(e.Faces[f].B, e.Faces[f].C);
    return copy;
}

void moveMesh(Engine& e, int mesh, Vector3 by) {
    if (IsMesh(e, mesh)) TransformMesh(e, mesh, Translation(by));
}

template <size_t N>
void moveAll(Engine& e, const std::array<int, N>& meshes, Vector3 by) {
    for (int m : meshes) moveMesh(e, m, by);
}

void setVisible(Engine& e, int mesh, bool visible) {
    if (IsMesh(e, mesh)) e.Meshes[mesh].Visible = visible;
}

template <size_t N>
void setVisible(Engine& e, const std::array<int, N>& meshes, bool visible) {
    for (int m : meshes) setVisible(e, m, visible);
}

std::string colourText(const std::string& value, const std::string& fallback) {
    double v = 0;
    if (!tryNumber(value, v) || !(v >= 0) || v > 16777215) return fallback;
    return plain(std::floor(v));
}

void buildAxes(Engine& e, AircraftParts& parts) {
    static const char* names[3] = {"x", "z", "y"};
    for (int k = 0; k < 3; ++k) {
        Vector3 tip;
        (k == 0 ? tip.x : k == 1 ? tip.y : tip.z) = 140.0f / 5;
        const int line = AddLine(e, {0, 0, 0}, tip);
        moveMesh(e, line, kAxesCorner);
        if (line) SetMeshColour(e, line, ColourFromPacked(kAxisColour), 0.5f);
        parts.MeshAxes[static_cast<size_t>(k)] = line;
        const int label = AddLabel(e, names[k], tip);
        moveMesh(e, label, kAxesCorner);
        if (label) SetMeshColour(e, label, ColourFromPacked(kLabelColour), 0.5f);
        parts.MeshAxisLabels[static_cast<size_t>(k)] = label;
    }
}

// The drawing of the pressed button of pb1; with none pressed the mode stays.
void applyViewFlags(Workbench& wb) {
    Engine& e = wb.view3d.engine;
    const int cam = wb.view3d.CameraIndex;
    if (!IsCamera(e, cam)) return;
    const Sheet& s = wb.sheet;
    CameraRecord& c = e.Cameras[cam];
    if (s.on(F_3D::pb1[4])) {
        c.RenderMode = render_mode::Surface;
        c.Specular = s.on(F_3D::Check1[6]);
        c.DepthEffects = s.on(F_3D::Check1[5]);
        c.ColourCorrection = s.on(F_3D::Check1[4]);
    } else if (s.on(F_3D::pb1[3])) {
        c.RenderMode = render_mode::Transparent;
    } else if (s.on(F_3D::pb1[2])) {
        c.RenderMode = render_mode::Solid;
    } else if (s.on(F_3D::pb1[1])) {
        c.RenderMode = render_mode::Wireframe;
    } else if (s.on(F_3D::pb1[0])) {
        c.RenderMode = render_mode::Inverted;
    }
}

// Part placing: the wing, the stabiliser and the fins go to their stations
// along the fuselage, when the part boxes ticked count to 1. Then the whole
// model is centred on the orbit's origin along its length.
void placeParts(Workbench& wb, const AircraftLayout& a) {
    Engine& e = wb.view3d.engine;
    AircraftParts& p = wb.view3d.parts;
    if (PartPlacingCount(wb.sheet) == 1) {
        const Vector3 wing{static_cast<float>(a.wingStation) * kSceneScale, 0, 0};
        const Vector3 stab{static_cast<float>(a.stabStation) * kSceneScale, 0, 0};
        const Vector3 fin{static_cast<float>(a.finStation) * kSceneScale, 0, 0};
        moveAll(e, p.MeshWingLeft, wing);
        moveAll(e, p.MeshWingRight, wing);
        moveAll(e, p.MeshStabLeft, stab);
        moveAll(e, p.MeshStabRight, stab);
        moveMesh(e, p.MeshFin, fin);
        moveMesh(e, p.MeshFinCopy, fin);
    }
    const Vector3 centre{-static_cast<float>(a.length / 2) * kSceneScale, 0, 0};
    moveAll(e, p.MeshWingLeft, centre);
    moveAll(e, p.MeshWingRight, centre);
    moveAll(e, p.MeshStabLeft, centre);
    moveAll(e, p.MeshStabRight, centre);
    moveMesh(e, p.MeshFin, centre);
    moveMesh(e, p.MeshFinCopy, centre);
    moveAll(e, p.MeshFuselage, centre);
}

void drawFrame(Workbench& wb) {
    AircraftView& v = wb.view3d;
    if (!v.surface || !IsCamera(v.engine, v.CameraIndex)) return;
    OrbitCamera(v.engine, v.CameraIndex, {0, 0, 0}, v.ViewDistance, v.ViewAzimuth, v.ViewElevation);
    // The light stands at the eye, so what is seen is lit.
    if (IsLight(v.engine, v.LightIndex)) v.engine.Lights[v.LightIndex].Position = v.engine.Cameras[v.CameraIndex].Position;
    v.surface->clear(ToPacked(ColourFromString(wb.sheet.text(F_3D::T_Backolor))));
    RenderScene(v.engine, *v.surface, v.CameraIndex);
}

}  // namespace

void PrepareView(Workbench& wb) {
    AircraftView& v = wb.view3d;
    Engine& e = v.engine;
    v.parts = AircraftParts{};
    while (e.MeshCount > 0) RemoveMesh(e, e.meshLast());
    if (!wb.isOpen(kFreezeButton)) {
        if (v.surface) InitEngine(e, *v.surface);
        if (!IsCamera(e, v.CameraIndex)) v.CameraIndex = AddCamera(e);
        if (IsCamera(e, v.CameraIndex)) {
            CameraRecord& c = e.Cameras[v.CameraIndex];
            c.OrthoZoom = 1.0f;
            c.RenderMode = render_mode::Shaded;
            c.Background = ColourFromString(wb.sheet.text(F_3D::T_Backolor));
        }
        if (!IsLight(e, v.LightIndex)) v.LightIndex = AddLight(e);
        v.ViewDistance = 370.0f;
        v.RotateSensitivity = 0.01f;
        v.ZoomSensitivity = 1.0f;
    }
    v.NeedsRedraw = true;
}

void BuildWingMesh(Workbench& wb) {
    Engine& e = wb.view3d.engine;
    AircraftParts& p = wb.view3d.parts;
    const AircraftLayout a = LayoutAircraft(wb.sheet);
    if (a.wing.empty()) return;
    const OutlinePoints section = WingSection(wb);
    const EngineColour colour = sampleColour(wb.sheet, F_3D::T_Ailes);
    for (const WingPanelLayout& panel : a.wing) {
        const size_t k = static_cast<size_t>(panel.panel - 1);
        p.MeshWingLeft[k] = addSkin(e, BuildPanelSkin(section, section, panel.shape), colour);
        p.MeshWingRight[k] = mirrorCopy(e, p.MeshWingLeft[k]);
    }
}

void BuildTailMesh(Workbench& wb) {
    Engine& e = wb.view3d.engine;
    AircraftParts& p = wb.view3d.parts;
    const Sheet& s = wb.sheet;
    const AircraftLayout a = LayoutAircraft(s);
    if (!a.stab.empty()) {
        const OutlinePoints section = StabSection(s);
        const EngineColour colour = sampleColour(s, F_3D::T_Stab);
        for (const WingPanelLayout& panel : a.stab) {
            const size_t k = static_cast<size_t>(panel.panel - 1);
            p.MeshStabLeft[k] = addSkin(e, BuildPanelSkin(section, section, panel.shape), colour);
            p.MeshStabRight[k] = mirrorCopy(e, p.MeshStabLeft[k]);
        }
    }
    if (a.fin) {
        const OutlinePoints section = FinSection(s);
        p.MeshFin = addSkin(e, BuildPanelSkin(section, section, *a.fin), sampleColour(s, F_3D::T_Derive));
        if (p.MeshFin) {
            p.MeshFinCopy = DuplicateMesh(e, p.MeshFin);
            moveMesh(e, p.MeshFinCopy, {0, 0, static_cast<float>(a.finSpacing) * kSceneScale});
        }
    }
}

void BuildFuselageMesh(Workbench& wb) {
    Engine& e = wb.view3d.engine;
    AircraftParts& p = wb.view3d.parts;
    const Sheet& s = wb.sheet;
    p.OriginMarker = AddBox(e, {0, 0, 0});
    if (p.OriginMarker) CentreMesh(e, p.OriginMarker);

    const std::vector<FuselageFrame> frames = FuselageFrames(s);
    if (frames.size() < 2) return;
    const OutlinePoints section = FuselageSection(s);
    const EngineColour colour = sampleColour(s, F_3D::T_Fus);
    // The kind of body: an open tube (a pod whose ends take other parts),
    // a closed nose, or "Complète", closed at both ends.
    const bool tube = s.on(F_GEO_FUS::Option1), noseOnly = !tube && s.on(F_GEO_FUS::Option2);
    for (size_t i = 0; i + 1 < frames.size() && i < p.MeshFuselage.size(); ++i) {
        std::vector<BodyStation> stations;
        for (const FuselageFrame& f : {frames[i], frames[i + 1]}) stations.push_back({f.station, f.width, f.height, f.yCentre});
        SkinMesh skin = BuildBodySkin(section, stations, !tube && i == 0, !tube && !noseOnly && i + 2 == frames.size());
        // The body is lofted along its own z: turned so that it runs along
        // x from the nose, its width across the span.
        for (MeshPoint& v : skin.vertices) v = {v.z, v.y, -v.x};
        p.MeshFuselage[i] = addSkin(e, skin, colour);
    }
}

void BuildAircraft(Workbench& wb) {
    AircraftView& v = wb.view3d;
    Engine& e = v.engine;
    PrepareView(wb);
    ClearScene(e, 1);
    if (v.surface) InitEngine(e, *v.surface);
    e.SectionPoints = kSectionPoints;

    BuildWingMesh(wb);
    BuildTailMesh(wb);
    BuildFuselageMesh(wb);
    buildAxes(e, v.parts);
    applyViewFlags(wb);
    placeParts(wb, LayoutAircraft(wb.sheet));

    e.applyPartVisibility = [&wb](Engine&) { ApplyPartVisibility(wb); };
    drawFrame(wb);
    v.NeedsRedraw = true;
}

void BuildAircraftKeepView(Workbench& wb) {
    AircraftView& v = wb.view3d;
    const float azimuth = v.ViewAzimuth, elevation = v.ViewElevation, distance = v.ViewDistance;
    BuildAircraft(wb);
    v.ViewAzimuth = azimuth;
    v.ViewElevation = elevation;
    v.ViewDistance = distance;
}

void LoadViewColours(Workbench& wb) {
    Sheet& s = wb.sheet;
    const std::filesystem::path ini = wb.settingsFilePath();
    const ProfileDocument settings = ProfileDocument::load(ini);
    s.set(F_3D::T_Backolor, colourText(settings.get("Colors", "3D_Backolor", "0"), "0"));
    s.set(F_3D::T_Filaire, colourText(settings.get("Colors", "3D_Filaire", "16777215"), "16777215"));
    ProfileDocument project;
    if (!wb.projectFilePath.empty()) project = ProfileDocument::load(wb.projectFilePath);
    const std::pair<const char*, Cell> parts[] = {
        {"Fuselage", F_3D::T_Fus}, {"Ailes", F_3D::T_Ailes}, {"Stab", F_3D::T_Stab}, {"Derive", F_3D::T_Derive}};
    for (const auto& [key, cell] : parts) {
        const std::string fromSettings = colourText(settings.get("Colors", key, "0"), "0");
        s.set(cell, project.has("Colors", key) ? colourText(project.get("Colors", key, "0"), fromSettings)
                                               : fromSettings);
    }
    Engine& e = wb.view3d.engine;
    if (IsCamera(e, wb.view3d.CameraIndex)) {
        e.Cameras[wb.view3d.CameraIndex].Background = ColourFromString(s.text(F_3D::T_Backolor));
    }
}

void ApplyPartVisibility(Workbench& wb) {
    if (wb.isOpen(kFreezeButton)) return;
    const Sheet& s = wb.sheet;
    Engine& e = wb.view3d.engine;
    const AircraftParts& p = wb.view3d.parts;
    setVisible(e, p.MeshWingLeft, s.on(F_3D::Check1[0]));
    setVisible(e, p.MeshWingRight, s.on(F_3D::Check1[1]));
    const bool stab = s.on(F_3D::Check1[2]) && s.on(F_3D::Option1[0]);
    setVisible(e, p.MeshStabLeft, stab);
    setVisible(e, p.MeshStabRight, stab);
    setVisible(e, p.MeshFuselage, s.on(F_3D::Check1[3]));
    setVisible(e, p.MeshFin, s.on(F_3D::Check1[7]));
    setVisible(e, p.MeshFinCopy, s.on(F_3D::Check1[7]));
    setVisible(e, p.MeshAxes, s.on(F_3D::Check1[9]));
    setVisible(e, p.MeshAxisLabels, s.on(F_3D::Check1[9]));
}

}  // namespace tarvokin

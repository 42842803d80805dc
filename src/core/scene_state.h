// The state of a 3D scene. One Engine object holds one scene's tables: the
// design window's view, the rib preview and the frame preview each own their
// own. Every table is indexed 1 to kEngineLimit; index 0 exists and means
// "none". The limit counts over all meshes together, for vertices and faces
// alike. The aircraft's view keeps its camera, light, orbit and part lists
// beside its engine. The engine's routines live with the views.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "core/scene_types.h"

namespace tarvokin {

class DrawSurface;

inline constexpr int kEngineLimit = 10000;

struct MeshRecord {
    std::int16_t FirstVertex = 0;  // absolute index in the vertex tables
    std::int16_t VertexCount = 0;
    std::int16_t FirstFace = 0;  // absolute index in Faces
    std::int16_t FaceCount = 0;
    Vector3 Scale{1, 1, 1};
    float RotationZ = 0, RotationX = 0, RotationY = 0;  // radians, applied Z, X, Y
    Vector3 Position;
    std::int16_t Parent = 0;  // 0 for none
    bool Dirty = true;         // the matrix must be rebuilt
    Matrix4 Matrix;            // object to world; all zero until first built
    bool Visible = true;
    std::string Text;  // a label's text; also marks polyline meshes
};

struct FaceRecord {
    std::int16_t A = 0, B = 0, C = 0;  // absolute vertex indices
    EngineColour Colour;
    float Reflectivity = 0;  // 0 to 1: share of mirror light and of lit colour
};

struct CameraRecord {
    float TanHalfFov = 0;
    float Near = 0, Far = 0;
    float FogNear = 0, FogFar = 0;
    float RotationZ = 0, RotationX = 0, RotationY = 0;
    Vector3 Position;
    bool Dirty = false;
    Matrix4 Matrix;  // world to view: the inverse of the placing matrix
    bool ShowBackFaces = false;
    bool Specular = false;          // mirror highlights ("Surface métallique")
    bool DepthEffects = false;      // light fall-off and fog ("Ambiance")
    bool ColourCorrection = false;  // "Correction des couleurs"
    EngineColour Background;        // what fog fades to
    std::int16_t RenderMode = 0;    // 0 to 5, see render_mode
    bool Orthographic = false;
    float OrthoZoom = 0;  // pixels per model unit in orthographic mode
};

struct LightRecord {
    EngineColour Colour;
    float Near = 0, Far = 0;  // range of the distance fall-off
    Vector3 Direction;        // (Z, X, Y) angles of a spot's axis
    Vector3 Position;
    float ConeInner = 0, ConeOuter = 0;  // cosines; a negative ConeOuter is no spot
    bool Enabled = false;
};

// The six ways of drawing the triangles, by camera RenderMode.
namespace render_mode {
inline constexpr int Wireframe = 0;    // "Vue Filaire"
inline constexpr int Solid = 1;        // "Vue Solide": face colours, no lighting
inline constexpr int Shaded = 2;       // lit flat faces, the design window's default
inline constexpr int Transparent = 3;  // "Vue Transparent": lit faces through the merge pen
inline constexpr int Inverted = 4;     // outlines through the invert pen
inline constexpr int Surface = 5;      // "Vue Surface": lit corners blended across each face
}  // namespace render_mode

// Codes of the engine's error reporter.
namespace engine_error {
inline constexpr int MeshMemory = 1;
inline constexpr int CameraMemory = 2;
inline constexpr int LightMemory = 3;
inline constexpr int BadCamera = 4;
inline constexpr int BadLight = 5;
}  // namespace engine_error

struct Engine {
    Engine();  // reserves every table at its full size

    // Records, 0..kEngineLimit, with the first index and count of the used run.
    std::vector<MeshRecord> Meshes;
    std::vector<CameraRecord> Cameras;
    std::vector<LightRecord> Lights;
    int MeshFirst = 1, MeshCount = 0;
    int CameraFirst = 1, CameraCount = 0;
    int LightFirst = 1, LightCount = 0;
    int meshLast() const { return MeshFirst + MeshCount - 1; }
    int cameraLast() const { return CameraFirst + CameraCount - 1; }
    int lightLast() const { return LightFirst + LightCount - 1; }

    std::vector<FaceRecord> Faces;

    // Vertex tables, parallel. ObjectVertices is the built geometry and the
    // only one that survives between frames; the others are refilled.
    std::vector<Vector3> ObjectVertices;
    std::vector<Vector3> WorldVertices;
    std::vector<Vector3> ViewVertices;
    std::vector<Vector3> ScreenVertices;  // x, y in pixels, z 0 at Near to 1 at Far
    std::vector<Vector3> VertexNormals;
    std::vector<EngineColour> VertexColours;
    std::vector<EngineColour> FaceColours;  // parallel to Faces

    // Face indices in drawing order from position 1, ending at the first 0,
    // and their sort keys.
    std::vector<std::int16_t> DrawList;
    std::vector<float> SortKeys;

    // Scene values of the hosting window: the screen centre is at
    // width / CentreDivX, height / CentreDivY (0 is read as 2), and the point
    // count of a resampled outline, which the polyline primitive draws.
    float CentreDivX = 2, CentreDivY = 2;
    int SectionPoints = 0;

    // Called at the start of the drawing stage, when set: the host sets the
    // Visible flags of its parts there from its check boxes.
    std::function<void(Engine&)> applyPartVisibility;

    // Silent error reporter's memory: the last code and how many were reported.
    int lastErrorCode = 0;
    int errorCount = 0;

    // Pivot picks of the draw-list sort.
    std::minstd_rand pivotRandom;
};

inline constexpr float kSceneScale = 0.25f;

// Engine meshes of each part, 0 where the part is absent. Panel lists are
// indexed by panel (0 is panel 1). The left half is built, the right one is
// its mirror copy.
struct AircraftParts {
    std::array<int, 5> MeshWingLeft{}, MeshWingRight{};
    std::array<int, 5> MeshStabLeft{}, MeshStabRight{};
    int MeshFin = 0, MeshFinCopy = 0;  // the copy stands beside the first for twin fins, on it otherwise
    std::array<int, 7> MeshFuselage{};  // one a segment between two frames
    std::array<int, 3> MeshAxes{}, MeshAxisLabels{};
    int OriginMarker = 0;  // an empty box at the origin
};

// The 3D view of F_3D: its scene and what the window keeps around it.
struct AircraftView {
    Engine engine;
    // F_3D.Picture3, set by the window that paints it; without one the scene
    // is built but nothing is drawn.
    DrawSurface* surface = nullptr;
    int CameraIndex = 0, LightIndex = 0;
    // Orbit of the camera round the origin: radians, radians, scene units.
    float ViewAzimuth = 0, ViewElevation = 0, ViewDistance = 370.0f;
    float RotateSensitivity = 0.01f;  // radians a pixel
    float ZoomSensitivity = 1.0f;     // distance a pixel
    bool NeedsRedraw = false;         // asks the frame loop for a frame
    AircraftParts parts;
    // Interaction state of the view (design_view.h).
    int LastMouseX = 0, LastMouseY = 0;
    bool LightFollowsView = false;  // the light orbits instead of the camera
    int LampMesh = 0;               // mesh that marks the light, 0 for none
    int HoverFace = 0;              // face outlined under the mouse, 0 for none
    float PickedReflectivity = 0;   // of the face under the last right press
};

}  // namespace tarvokin

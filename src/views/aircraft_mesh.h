// The aircraft in the 3D view of the design window: the scene of the engine
// rebuilt from the geometry fields (wing panels and their mirror copies,
// stabiliser, fin, fuselage, three labelled axes), the part lists that the
// view's check boxes show and hide, and the view's camera, light and orbit.
//
// Model millimetres become scene units at a quarter (kSceneScale). The scene
// is always rebuilt from nothing, never edited.
#pragma once

#include <array>

#include "views/engine.h"

namespace tarvokin {

class Workbench;

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

// The full rebuild: PrepareView, the scene cleared (camera and light kept),
// wing, tail, fuselage, axes, the drawing flags from the buttons pb1, the
// placing of the parts, then one frame when there is a surface.
void BuildAircraft(Workbench& wb);
// BuildAircraft, the orbit (azimuth, elevation, distance) kept as it was:
// after a project is read.
void BuildAircraftKeepView(Workbench& wb);
// Empties the part lists and the scene's meshes; unless toolbar button 26 is
// pressed, readies the engine, makes the camera and the light when there are
// none, and puts the orbit back to distance 370.
void PrepareView(Workbench& wb);
// Colours of the view from the "Colors" section: background ("3D_Backolor")
// and wire frame ("3D_Filaire") from TARVOKIN.INI, the parts ("Fuselage",
// "Ailes", "Stab", "Derive") from the project when it names them, else from
// TARVOKIN.INI; into the colour samples of F_3D.
void LoadViewColours(Workbench& wb);

// The three builders, in the order BuildAircraft calls them. Each mesh gets
// the colour of its sample at reflectivity 0.9.
void BuildWingMesh(Workbench& wb);
void BuildTailMesh(Workbench& wb);
void BuildFuselageMesh(Workbench& wb);

// Shows and hides the parts by the check boxes F_3D.Check1: 0 left wing,
// 1 right wing, 2 stabiliser (also hidden while the first of the F_3D.Option1
// choices is off), 3 fuselage, 7 fins, 9 axes. Nothing changes while toolbar
// button 26 is pressed. The engine calls it at the start of each frame's drawing.
void ApplyPartVisibility(Workbench& wb);

}  // namespace tarvokin

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

// What the two airfoil generators keep between entries: the last NACA
// airfoil made, and the root, tip and ribs of the rib generator with its 3D
// preview. The generators' routines live with the airfoils and the views.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/outline_types.h"
#include "core/scene_state.h"

namespace tarvokin {

// One generated NACA airfoil.
struct NacaAirfoil {
    std::string name;
    double thickness = 0;  // largest thickness, per cent of chord
    // Chord stations, and both surfaces and the mean line at each, leading
    // edge first, in unit chord, ordinates rounded to 7 decimals.
    std::vector<double> stations;
    OutlinePoints upper, lower, camber;
    bool hasMeanLine = false;
};

// One rib: where it stands along the span, its chord and how far its leading
// edge stands behind the root's, and its outline in mm in file order.
struct RibOutline {
    double position = 0, chord = 0, offset = 0;
    OutlinePoints points;
};

// The 3D preview of the ribs: its own scene and orbit.
struct RibView {
    std::unique_ptr<Engine> engine;  // made at the first build
    DrawSurface* surface = nullptr;  // set by the window that paints it
    int CameraIndex = 0, LightIndex = 0;
    float ViewAzimuth = 0.6f, ViewElevation = 0.5f, ViewDistance = 300.0f;
    int LastMouseX = 0, LastMouseY = 0;
    bool NeedsRedraw = false;
};

struct GeneratorState {
    NacaAirfoil naca;         // the last airfoil generated, kept when a generation fails
    std::string nacaReason;   // why the last generation failed, "" when it did not

    OutlinePoints ribRoot, ribTip;  // unit chord, file order, as read
    std::string ribReadReason;      // why the last airfoil chosen did not read, "" when it did
    std::vector<RibOutline> ribs;
    int ribRevision = 0;  // counts the rib sets made, for the views that copy them
    RibView ribView;
};

}  // namespace tarvokin

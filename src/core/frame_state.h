// The frame being drawn in the frame generator, and its 3D piece. Plain data:
// the routines that shape and draw it live with the construction code.
#pragma once

#include <string>
#include <vector>

#include "core/scene_state.h"

namespace tarvokin {

// A point of the drawing area: x to the right, y downwards, in drawing
// pixels; z is carried along for the 3D piece.
struct FramePoint {
    double x = 0, y = 0, z = 0;
    bool operator==(const FramePoint&) const = default;
};
using FramePoints = std::vector<FramePoint>;

// Size of the frame generator's drawing area, in drawing pixels. The window
// scales it to the widget; files and handles keep this scale.
inline constexpr double kFrameAreaWidth = 640;
inline constexpr double kFrameAreaHeight = 560;

struct FrameState {
    int ControlCount = 8;  // highest handle index: 9 handles
    int PointCount = 12;
    int CurveOrder = 9;
    int ActiveHandle = -1;  // -1: no handle held
    double HandleGrabX = 0.0105882, HandleGrabY = 0.0092924;
    FramePoints ControlPoints, DoubledControl;
    FramePoints CurveRight, CurveLeft, DoubledRight, DoubledLeft;
    // The text of each handle's marker ("" or "1") and whether it turned red.
    std::vector<std::string> HandleMarks;
    std::vector<bool> HandleRed;
    double Thickness = 10;
    bool Doubling = false;     // Check4 "On / Off"
    bool Slaved = true;        // "Mode asservi"; false is "Mode découplé"
    double AxeX = kFrameAreaWidth / 2;   // the vertical axis line
    double BaseLineY = 480;              // the reference line
    bool dragging = false;

    // The 3D piece of Gen_Couples_1: its own scene and orbit.
    Engine engine;
    int CameraIndex = 0, LightIndex = 0;
    std::vector<int> meshes;
    float ViewAzimuth = 0.5f, ViewElevation = 0.35f, ViewDistance = 0;
    bool meshReady = false;
    // Object vertices of the piece as built at 100 % height and length, so
    // the sliders rewrite the vertices from them and not from the last pass.
    std::vector<Vector3> baseVertices;
};

}  // namespace tarvokin

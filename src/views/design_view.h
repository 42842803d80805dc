// What the 3D view of the design window does with the mouse and its buttons,
// apart from any widget: orbit, zoom, pan, hover highlight, render modes,
// drawing switches and part colours. The window forwards its events here and
// asks for a frame when NeedsRedraw is set.
#pragma once

#include "core/cells.h"
#include "views/draw_surface.h"

namespace tarvokin {

class Workbench;

struct ViewMouse {
    bool left = false, right = false, shift = false;
};

// The view takes frames while the design window is open (button 7) and its
// Text4 is not 0; a click on a stopped view wakes it.
bool ViewTakesFrames(const Workbench& wb);

// One frame: the camera orbits (or the light does, when it follows the view),
// the light or the lamp is placed, the surface cleared and the scene drawn.
// Clears NeedsRedraw. Nothing happens without a surface or a camera.
void DrawViewFrame(Workbench& wb);

// Mouse over the view. No button: hover highlight of the face under the
// pointer. Left: orbit (azimuth wraps to -pi..pi, elevation clamped to
// +-pi/2). Left with Shift: the view's centre goes to the pointer. Right: zoom,
// never closer than 0. The last position is kept after each event.
void ViewMouseMove(Workbench& wb, int x, int y, ViewMouse buttons);
// A press wakes a stopped view (Text4 "1") and asks for a frame; the right
// button on a face remembers its reflectivity.
void ViewMousePress(Workbench& wb, int x, int y, ViewMouse buttons);

// The face drawn at a pixel in the last frame (the nearest one), 0 for none.
int PickFace(const Workbench& wb, int x, int y);
// Reflectivity remembered by the last right press on a face.
float PickedReflectivity(const Workbench& wb);

// The drawing buttons: 0 the plain outline, 1 "Vue Filaire", 2 "Vue Solide",
// 3 "Vue Transparent", 4 "Vue Surface". Only the one pressed stays down.
void PressRenderButton(Workbench& wb, int index);

// The drawing switches Check1(i) after a change: camera flags (6 mirror
// highlights unless transparent, 5 fall-off and fog, 4 colour correction),
// 8 the labels, 9 the axes' colour; then a frame.
void ViewSwitchChanged(Workbench& wb, int index);

// The [IMAGES] key of the background picture of a view of the design window
// ("Photo_Profil", "Photo_Dessus", "Photo_Face", "Photo_Centrage"), by its
// place 0..3 in that order; "" for another place.
const char* PhotoKey(int place);

// A colour sample chosen by the user: the sample cell, the "Colors" key
// (settings file for the background and wire frame, project file for the
// parts) and the faces of that part's meshes at reflectivity 0.9.
void SetViewColour(Workbench& wb, Cell sample, PackedColour colour);

}  // namespace tarvokin

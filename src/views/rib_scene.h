// The 3D preview of the rib generator, drawn by the 3D engine: the ribs as
// flat plates, or the wing's skin lofted through them, in a scene of its own
// with its own orbit.
#pragma once

namespace tarvokin {

class Workbench;

// Rebuilds the scene from wb.generators.ribs and the style fields of F_RIBS
// (Option2 "Aile" / "Nervures", Check1 "Surface", Slider1 the height scale),
// keeping the orbit. Nothing is drawn until the view has a surface.
void BuildRibScene(Workbench& wb);

// Draws a frame of the scene on the view's surface.
void DrawRibFrame(Workbench& wb);

// Mouse on the view: a press remembers the place; a move with the left
// button held orbits, with the right button held moves the camera in or out.
void RibViewPress(Workbench& wb, int x, int y);
void RibViewDrag(Workbench& wb, int x, int y, bool left, bool right);
// Wheel notches (positive towards the scene).
void RibViewZoom(Workbench& wb, double notches);

}  // namespace tarvokin

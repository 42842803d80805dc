// One frame of the 3D engine: five stages in a fixed order. There is no depth
// buffer; whole triangles are culled and the rest drawn far to near.
#pragma once

#include "views/draw_surface.h"
#include "views/engine_math.h"
#include "views/engine_tables.h"

namespace tarvokin {

// Draws one frame of the scene seen by the camera. A camera index outside the
// camera table draws nothing.
void RenderScene(Engine& engine, DrawSurface& surface, int camera);

// The stages, in the order RenderScene runs them.
// 1. Rebuild dirty mesh matrices (a parent's dirty mark spreads to its
//    children in one pass in table order), then object to world vertices.
void UpdateMeshTransforms(Engine& engine);
// 2. Rebuild the camera's matrix if dirty, then world to view vertices. A
//    camera placing that cannot be inverted is the run-time division error.
void UpdateViewVertices(Engine& engine, int camera);
// 3. View to screen vertices of the visible meshes for a surface of this size;
//    a camera with Near <= 0 or Near >= Far projects nothing (code 4).
void ProjectVertices(Engine& engine, int surfaceWidth, int surfaceHeight, int camera);
// 4. Whole-triangle culling, then the far-to-near sort of the survivors.
void BuildDrawList(Engine& engine, int camera);
// 5. Part visibility, pens by render mode, shading, triangles in list order,
//    then the one-face primitives.
void ShadeAndDraw(Engine& engine, DrawSurface& surface, int camera);

// Number of faces in DrawList (positions 1 to the result).
int DrawListLength(const Engine& engine);
// Ascending sort of DrawList[lo..hi] on SortKeys, random pivot.
void SortDrawList(Engine& engine, int lo, int hi);

// Colour of a surface point with the given normal, lit by the enabled lights,
// for the face's colour and reflectivity and the camera's flags.
EngineColour Shade(Engine& engine, Vector3 point, Vector3 normal, int face, int camera);

}  // namespace tarvokin

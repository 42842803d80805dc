// Scene operations of the 3D engine: building, copying, editing and removing
// meshes, cameras and lights. An Add that cannot find room returns 0 and
// changes nothing; a bad index makes an operation do nothing.
#pragma once

#include <string>

#include "views/draw_surface.h"
#include "views/engine_math.h"
#include "views/engine_tables.h"

namespace tarvokin {

// Sets the surface to keep its drawing and measure in pixels; sets the first
// indices of the mesh, camera and light tables to 1.
void InitEngine(Engine& engine, DrawSurface& surface);
// Removes every mesh, camera and light except the one at index `keep` of each
// table (0 keeps none); what is kept moves down to index 1.
void ClearScene(Engine& engine, int keep = 0);

// New mesh with runs of vertexCount vertices and faceCount faces (first fit,
// reusing the holes of removed meshes), zeroed; 0 when the tables are full.
int AddMesh(Engine& engine, int vertexCount, int faceCount);
// Shifts the later records down by one and fixes the parents: the removed
// mesh becomes 0, later ones are decremented. Its runs become a hole.
void RemoveMesh(Engine& engine, int mesh);

// New camera: field of view 60 degrees, Near 1, Far 1600, fog 1 to 1600,
// shaded render mode, orthographic zoom 1, dirty; 0 when the table is full.
int AddCamera(Engine& engine);
void RemoveCamera(Engine& engine, int camera);
// New light: white, fall-off 1 to 1600, not a spot, enabled; 0 when full.
int AddLight(Engine& engine);
void RemoveLight(Engine& engine, int light);

// One-face primitives (their face indices are all 0, so no triangle is drawn):
// a line, a text label at a point.
int AddLine(Engine& engine, Vector3 from, Vector3 to);
int AddLabel(Engine& engine, const std::string& text, Vector3 at);
// A box of 8 vertices and 12 outward-facing triangles, a corner at the origin.
int AddBox(Engine& engine, Vector3 size);

// Copy with the same counts in a new run; face indices follow the copy.
int DuplicateMesh(Engine& engine, int mesh);
// DuplicateMesh then RemoveMesh of the original; the copy's index after the
// removal, or 0 (and the original gone) when there was no room.
int RelocateMesh(Engine& engine, int mesh);

// In-place edits of the object vertices.
void TransformMesh(Engine& engine, int mesh, const Matrix4& matrix);
void ScaleMesh(Engine& engine, int mesh, float sx, float sy, float sz);
// Moves the middle of the bounding box to the origin.
void CentreMesh(Engine& engine, int mesh);
// Per-axis extremes of the object vertices; zero for a mesh without vertices.
Vector3 MeshBoundsMax(const Engine& engine, int mesh);
Vector3 MeshBoundsMin(const Engine& engine, int mesh);

void SetMeshColour(Engine& engine, int mesh, EngineColour colour, float reflectivity);
// Deletes, last to first, the faces whose corners are not all in the mesh's
// own vertex run.
void CheckMeshFaces(Engine& engine, int mesh);
// Shifts the later faces of the owning mesh down by one and lowers its count.
void DeleteFace(Engine& engine, int face);

// Places the camera at distance from the target, looking at it along
// DirectionFromAngles(0, elevation, -azimuth).
void OrbitCamera(Engine& engine, int camera, Vector3 target, float distance, float azimuth, float elevation);
void SetFov(Engine& engine, int camera, float radians);

// Index checks of the used runs.
bool IsMesh(const Engine& engine, int mesh);
bool IsCamera(const Engine& engine, int camera);
bool IsLight(const Engine& engine, int light);

}  // namespace tarvokin

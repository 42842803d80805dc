// Lofted skins of the aircraft's parts as plain geometry, in millimetres.
//
// Axes of the model: x runs backwards from the nose along the fuselage, y is
// up, and the left wing lies towards -z (the engine looks along +z from its
// default place, so +z is the pilot's right). Every triangle is wound so that
// its normal (B - A) x (C - A) points out of the part: the engine culls whole
// triangles that face away from the camera.
#pragma once

#include <vector>

#include "airfoils/outline.h"

namespace tarvokin {

struct MeshPoint {
    double x = 0, y = 0, z = 0;
    bool operator==(const MeshPoint&) const = default;
};

// Corner indices into the mesh's own vertex list, from 0.
struct MeshTriangle {
    int a = 0, b = 0, c = 0;
};

struct SkinMesh {
    std::vector<MeshPoint> vertices;
    std::vector<MeshTriangle> faces;
};

// One lifting panel, the left one of a pair. Lengths in mm, angles in degrees.
struct PanelShape {
    double rootChord = 0, tipChord = 0;
    double length = 0;  // along the panel's own span line, root to tip
    double sweep = 0;   // how far the tip's leading edge stands behind the root's
    double rootTwist = 0, tipTwist = 0;  // positive raises the leading edge
    double dihedral = 0;                 // the tip raised above the root; 90 is a vertical panel
    // Planes of the end sections, as angles from the vertical like the
    // dihedral: where two panels of different dihedral meet, both ends lie in
    // the plane half way between them, so the skins join without a gap; at
    // the plane of symmetry it is 0. An end square to the span has the
    // panel's own dihedral.
    double rootRoll = 0, tipRoll = 0;
    MeshPoint root;  // leading edge of the root section
};

// Where a section point (x along the chord, y across it, both in unit chord)
// of the panel lies, at the fraction `u` of the span from root (0) to tip (1).
// The section turns about its leading edge by the twist; its line along the
// panel runs parallel to the span line, which rises by the dihedral, and
// meets the end planes (rootRoll, tipRoll) there.
MeshPoint PanelPoint(const PanelShape& p, double x, double y, double u);

// Open tube lofted from the root section to the tip section, two rows of
// points joined quad by quad. Both outlines must have the same count of
// points; a count below 3 gives an empty mesh.
SkinMesh BuildPanelSkin(const OutlinePoints& rootOutline, const OutlinePoints& tipOutline, const PanelShape& p);

// A cross-section of a body: z along the body, the section centred on x = 0
// and on y = yCentre.
struct BodyStation {
    double z = 0, width = 0, height = 0, yCentre = 0;
};

// Skin of a body through its stations, one row of the section a station,
// consecutive rows joined by straight lines. With `closedFront` a row
// collapsed on the mid line (x = 0) is put before the first station, and with
// `closedBack` after the last: the end caps.
SkinMesh BuildBodySkin(const OutlinePoints& section, const std::vector<BodyStation>& stations, bool closedFront,
                       bool closedBack);

// The mirror image across the plane z = 0, wound again so that it still faces out.
SkinMesh Mirrored(const SkinMesh& m);

// Rows of `rowLength` points joined into quads by the loft's rule: for rows i
// and i + 1 and points j, the triangles (i j, i+1 j, i+1 j+1) and
// (i j, i+1 j+1, i j+1). The pass after the last row reaches past the
// vertices and is dropped, as the faces reaching outside a mesh always are.
std::vector<MeshTriangle> LoftFaces(int rowLength, int rowCount);

}  // namespace tarvokin

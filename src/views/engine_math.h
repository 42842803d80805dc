// Vectors, matrices and colours of the 3D engine. Everything is 32-bit float,
// as the engine's tables are. Vectors are row vectors: v' = v x M, so a
// translation stands in the fourth row of its matrix.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/scene_types.h"

namespace tarvokin {

// ---- vectors ------------------------------------------------------------------

float Dot(Vector3 a, Vector3 b);
Vector3 Cross(Vector3 a, Vector3 b);
float Length(Vector3 a);
// A zero vector comes back unchanged.
Vector3 Normalise(Vector3 a);
float Distance(Vector3 a, Vector3 b);

// 0 when either vector is exactly zero, else the dot of the normalised vectors.
float CosAngle(Vector3 a, Vector3 b);
// The part of a along b: normalise(b) x dot(a, normalise(b)).
Vector3 Project(Vector3 a, Vector3 b);
// Mirror of the incident i on the surface of normal n; the zero vector when i
// does not come towards the surface (CosAngle(i, n) not negative).
Vector3 Reflect(Vector3 i, Vector3 n);
// (0, 0, 1) turned about X by angles.y, then about Y by angles.z; angles.x
// (the Z angle of a (Z, X, Y) triple) plays no part.
Vector3 DirectionFromAngles(Vector3 angles);

inline constexpr float kDegreesToRadians = static_cast<float>(3.14159265358979 / 180.0);

// ---- matrices -----------------------------------------------------------------

Matrix4 IdentityMatrix();
Matrix4 ZeroMatrix();
Matrix4 Transpose(const Matrix4& a);
Matrix4 operator*(const Matrix4& a, const Matrix4& b);
// v with w = 1 times the matrix, w dropped.
Vector3 operator*(Vector3 v, const Matrix4& m);
// v with w = 1 times the matrix, w kept.
Vector4 TransformVector4(Vector3 v, const Matrix4& m);
Matrix4 Translation(Vector3 v);
Matrix4 Scaling(Vector3 v);
// Axis 1 = X, 2 = Y, 3 = Z; any other axis gives the zero matrix.
Matrix4 Rotation(int axis, float angle);
// Cofactors along the first row.
float Determinant(const Matrix4& a);
// Adjugate over determinant. A determinant of exactly 0 is the run-time
// division error (RunError), as a division would be.
Matrix4 Inverse(const Matrix4& a);

// ---- colours ------------------------------------------------------------------

EngineColour ColourFromPacked(PackedColour packed);
// The decimal text of a packed colour ("65280"); unreadable text gives black.
EngineColour ColourFromString(std::string_view decimalText);
// Each component clamped to 0..255 before packing.
PackedColour ToPacked(EngineColour c);
EngineColour operator+(EngineColour a, EngineColour b);
EngineColour operator-(EngineColour a, EngineColour b);
// Truncating conversion to integers on each component.
EngineColour operator*(EngineColour c, float s);
// a + (b - a) x t on each component, the scaling truncated.
EngineColour Lerp(EngineColour a, EngineColour b, float t);

}  // namespace tarvokin

// The value types of a 3D scene: 32-bit float vectors and matrices (row
// vectors: v' = v x M, a translation in the fourth row) and colours.
#pragma once

#include <cstdint>

namespace tarvokin {

struct Vector3 {
    float x = 0, y = 0, z = 0;
    constexpr bool operator==(const Vector3&) const = default;  // exact on each component
};

struct Vector4 {
    float x = 0, y = 0, z = 0, w = 0;
    constexpr bool operator==(const Vector4&) const = default;
};

constexpr Vector3 operator+(Vector3 a, Vector3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vector3 operator-(Vector3 a, Vector3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vector3 operator*(Vector3 a, float s) { return {a.x * s, a.y * s, a.z * s}; }

// 16 floats, row major: m[row][column].
struct Matrix4 {
    float m[4][4] = {};
    constexpr bool operator==(const Matrix4&) const = default;
};

// A colour packed as the platform's colour integers are: low byte red, then
// green, then blue.
using PackedColour = std::uint32_t;

// R, G, B nominally 0 to 255; shading arithmetic may leave them outside.
struct EngineColour {
    std::int16_t R = 0, G = 0, B = 0;
    constexpr bool operator==(const EngineColour&) const = default;
};

}  // namespace tarvokin

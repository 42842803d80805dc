#include "views/engine_math.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"

namespace tarvokin {

// ---- vectors ------------------------------------------------------------------

float Dot(Vector3 a, Vector3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

Vector3 Cross(Vector3 a, Vector3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

float Length(Vector3 a) { return std::sqrt(Dot(a, a)); }

Vector3 Normalise(Vector3 a) {
    const float len = Length(a);
    if (len == 0.0f) return a;
    return {a.x / len, a.y / len, a.z / len};
}

float Distance(Vector3 a, Vector3 b) { return Length(a - b); }

float CosAngle(Vector3 a, Vector3 b) {
    if (a == Vector3{} || b == Vector3{}) return 0.0f;
    return Dot(Normalise(a), Normalise(b));
}

Vector3 Project(Vector3 a, Vector3 b) {
    const Vector3 nb = Normalise(b);
    return nb * Dot(a, nb);
}

Vector3 Reflect(Vector3 i, Vector3 n) {
    if (CosAngle(i, n) < 0.0f) return i - Project(i, n) * 2.0f;
    return {};
}

Vector3 DirectionFromAngles(Vector3 angles) {
    return Vector3{0, 0, 1} * Rotation(1, angles.y) * Rotation(2, angles.z);
}

// ---- matrices -----------------------------------------------------------------

Matrix4 IdentityMatrix() {
    Matrix4 r;
    for (int i = 0; i < 4; ++i) r.m[i][i] = 1.0f;
    return r;
}

Matrix4 ZeroMatrix() { return Matrix4{}; }

Matrix4 Transpose(const Matrix4& a) {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = a.m[j][i];
    return r;
}

Matrix4 operator*(const Matrix4& a, const Matrix4& b) {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            r.m[i][j] = a.m[i][0] * b.m[0][j] + a.m[i][1] * b.m[1][j] + a.m[i][2] * b.m[2][j] + a.m[i][3] * b.m[3][j];
    return r;
}

Vector3 operator*(Vector3 v, const Matrix4& m) {
    return {v.x * m.m[0][0] + v.y * m.m[1][0] + v.z * m.m[2][0] + m.m[3][0],
            v.x * m.m[0][1] + v.y * m.m[1][1] + v.z * m.m[2][1] + m.m[3][1],
            v.x * m.m[0][2] + v.y * m.m[1][2] + v.z * m.m[2][2] + m.m[3][2]};
}

Vector4 TransformVector4(Vector3 v, const Matrix4& m) {
    const Vector3 xyz = v * m;
    return {xyz.x, xyz.y, xyz.z, v.x * m.m[0][3] + v.y * m.m[1][3] + v.z * m.m[2][3] + m.m[3][3]};
}

Matrix4 Translation(Vector3 v) {
    Matrix4 r = IdentityMatrix();
    r.m[3][0] = v.x;
    r.m[3][1] = v.y;
    r.m[3][2] = v.z;
    return r;
}

Matrix4 Scaling(Vector3 v) {
    Matrix4 r;
    r.m[0][0] = v.x;
    r.m[1][1] = v.y;
    r.m[2][2] = v.z;
    r.m[3][3] = 1.0f;
    return r;
}

Matrix4 Rotation(int axis, float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    Matrix4 r = IdentityMatrix();
    switch (axis) {
    case 1:
        r.m[1][1] = c, r.m[1][2] = s;
        r.m[2][1] = -s, r.m[2][2] = c;
        return r;
    case 2:
        r.m[0][0] = c, r.m[0][2] = -s;
        r.m[2][0] = s, r.m[2][2] = c;
        return r;
    case 3:
        r.m[0][0] = c, r.m[0][1] = s;
        r.m[1][0] = -s, r.m[1][1] = c;
        return r;
    default:
        return ZeroMatrix();
    }
}

namespace {

// Determinant of the 3x3 left when row `row` and column `col` are struck out.
float Minor(const Matrix4& a, int row, int col) {
    float k[3][3];
    for (int i = 0, ki = 0; i < 4; ++i) {
        if (i == row) continue;
        for (int j = 0, kj = 0; j < 4; ++j) {
            if (j == col) continue;
            k[ki][kj++] = a.m[i][j];
        }
        ++ki;
    }
    return k[0][0] * (k[1][1] * k[2][2] - k[1][2] * k[2][1]) - k[0][1] * (k[1][0] * k[2][2] - k[1][2] * k[2][0]) +
           k[0][2] * (k[1][0] * k[2][1] - k[1][1] * k[2][0]);
}

float Cofactor(const Matrix4& a, int row, int col) {
    const float minor = Minor(a, row, col);
    return ((row + col) % 2 == 0) ? minor : -minor;
}

}  // namespace

float Determinant(const Matrix4& a) {
    float det = 0.0f;
    for (int j = 0; j < 4; ++j) det += a.m[0][j] * Cofactor(a, 0, j);
    return det;
}

Matrix4 Inverse(const Matrix4& a) {
    const float det = Determinant(a);
    if (det == 0.0f) throwDivisionByZero();
    Matrix4 r;
    // The adjugate is the transposed cofactor matrix.
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[j][i] = Cofactor(a, i, j) / det;
    return r;
}

// ---- colours ------------------------------------------------------------------

namespace {

std::int16_t Truncated(float v) {
    // Colours live in 16-bit integers; beyond that range (or for nan) the
    // value is held at the edge rather than wrapped.
    if (!(v == v)) return 0;
    return static_cast<std::int16_t>(std::clamp(v, -32768.0f, 32767.0f));
}

std::int16_t Summed(int a, int b) { return static_cast<std::int16_t>(std::clamp(a + b, -32768, 32767)); }

}  // namespace

EngineColour ColourFromPacked(PackedColour packed) {
    return {static_cast<std::int16_t>(packed & 0xFF), static_cast<std::int16_t>((packed >> 8) & 0xFF),
            static_cast<std::int16_t>((packed >> 16) & 0xFF)};
}

EngineColour ColourFromString(std::string_view decimalText) {
    const double value = leadingNumber(decimalText);
    if (!(value >= -2147483648.0 && value <= 4294967295.0)) return {};
    return ColourFromPacked(static_cast<PackedColour>(static_cast<std::int64_t>(value)));
}

PackedColour ToPacked(EngineColour c) {
    const auto channel = [](std::int16_t v) { return static_cast<PackedColour>(std::clamp<int>(v, 0, 255)); };
    return channel(c.R) | (channel(c.G) << 8) | (channel(c.B) << 16);
}

EngineColour operator+(EngineColour a, EngineColour b) {
    return {Summed(a.R, b.R), Summed(a.G, b.G), Summed(a.B, b.B)};
}

EngineColour operator-(EngineColour a, EngineColour b) {
    return {Summed(a.R, -b.R), Summed(a.G, -b.G), Summed(a.B, -b.B)};
}

EngineColour operator*(EngineColour c, float s) {
    return {Truncated(static_cast<float>(c.R) * s), Truncated(static_cast<float>(c.G) * s),
            Truncated(static_cast<float>(c.B) * s)};
}

EngineColour Lerp(EngineColour a, EngineColour b, float t) { return a + (b - a) * t; }

}  // namespace tarvokin

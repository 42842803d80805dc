// Vector, matrix and colour arithmetic of the 3D engine against hand values.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "core/numbers.h"
#include "views/engine_math.h"

namespace tarvokin {
namespace {

constexpr float kHalfPi = std::numbers::pi_v<float> / 2;

void ExpectNear(Vector3 got, Vector3 want, float tol = 1e-5f) {
    EXPECT_NEAR(got.x, want.x, tol);
    EXPECT_NEAR(got.y, want.y, tol);
    EXPECT_NEAR(got.z, want.z, tol);
}

TEST(EngineMath, RotationsTurnRowVectorsAsTheirRowsSay) {
    // A unit row vector times a matrix picks that matrix's row.
    ExpectNear(Vector3{1, 0, 0} * Rotation(3, kHalfPi), {0, 1, 0});
    ExpectNear(Vector3{0, 1, 0} * Rotation(3, kHalfPi), {-1, 0, 0});
    ExpectNear(Vector3{0, 1, 0} * Rotation(1, kHalfPi), {0, 0, 1});
    ExpectNear(Vector3{0, 0, 1} * Rotation(1, kHalfPi), {0, -1, 0});
    ExpectNear(Vector3{1, 0, 0} * Rotation(2, kHalfPi), {0, 0, -1});
    ExpectNear(Vector3{0, 0, 1} * Rotation(2, kHalfPi), {1, 0, 0});
    EXPECT_EQ(Rotation(0, 1.0f), ZeroMatrix());
    EXPECT_EQ(Rotation(4, 1.0f), ZeroMatrix());
}

TEST(EngineMath, TranslationSitsInTheFourthRowAndProductsApplyLeftFirst) {
    const Matrix4 t = Translation({10, 20, 30});
    EXPECT_EQ(t.m[3][0], 10);
    EXPECT_EQ((Vector3{1, 2, 3} * t), (Vector3{11, 22, 33}));
    EXPECT_EQ((Vector3{1, 2, 3} * Scaling({2, 3, 4})), (Vector3{2, 6, 12}));
    // Scale then move, against move then scale.
    EXPECT_EQ((Vector3{1, 1, 1} * (Scaling({2, 2, 2}) * Translation({5, 0, 0}))), (Vector3{7, 2, 2}));
    EXPECT_EQ((Vector3{1, 1, 1} * (Translation({5, 0, 0}) * Scaling({2, 2, 2}))), (Vector3{12, 2, 2}));
}

TEST(EngineMath, InverseUndoesAPlacingAndASingularMatrixIsADivisionError) {
    const Matrix4 placing = Scaling({2, 3, 0.5f}) * Rotation(3, 0.3f) * Rotation(1, -1.1f) * Rotation(2, 2.0f) *
                            Translation({12, -7, 140});
    EXPECT_NEAR(Determinant(placing), 3.0f, 1e-4f);
    const Matrix4 product = Inverse(placing) * placing;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) EXPECT_NEAR(product.m[i][j], i == j ? 1.0f : 0.0f, 1e-4f) << i << "," << j;
    ExpectNear(Vector3{3, 4, 5} * placing * Inverse(placing), {3, 4, 5}, 1e-4f);
    EXPECT_EQ(Determinant(Scaling({2, 3, 4})), 24.0f);
    EXPECT_THROW(Inverse(Scaling({1, 0, 1})), RunError);
}

TEST(EngineMath, VectorHelpersAndTheirZeroCases) {
    EXPECT_EQ(CosAngle({}, {1, 0, 0}), 0.0f);
    EXPECT_NEAR(CosAngle({1, 0, 0}, {1, 1, 0}), std::sqrt(0.5f), 1e-6f);
    // Coming down onto a floor it bounces up; leaving it there is nothing.
    ExpectNear(Reflect({1, -1, 0}, {0, 1, 0}), {1, 1, 0});
    EXPECT_EQ(Reflect({1, 1, 0}, {0, 1, 0}), Vector3{});
    // The first (Z) angle is ignored; X tips the look down, Y turns it.
    ExpectNear(DirectionFromAngles({1.0f, 0, 0}), {0, 0, 1});
    ExpectNear(DirectionFromAngles({0, kHalfPi, 0}), {0, -1, 0});
    ExpectNear(DirectionFromAngles({0, 0, kHalfPi}), {1, 0, 0});
}

TEST(EngineColour, PackingScalingAndLerpTruncate) {
    EXPECT_EQ(ColourFromPacked(255), (EngineColour{255, 0, 0}));
    EXPECT_EQ(ColourFromPacked(0x123456), (EngineColour{0x56, 0x34, 0x12}));
    EXPECT_EQ(ColourFromString("65280"), (EngineColour{0, 255, 0}));
    EXPECT_EQ(ColourFromString("rouge"), EngineColour{});
    EXPECT_EQ(ToPacked({0x56, 0x34, 0x12}), 0x123456u);
    EXPECT_EQ(ToPacked({300, -5, 128}), 0x8000FFu);
    EXPECT_EQ((EngineColour{100, 101, 255} * 0.5f), (EngineColour{50, 50, 127}));
    // 200 + trunc(-99 x 0.5) = 200 - 49.
    EXPECT_EQ(Lerp({200, 0, 0}, {101, 255, 0}, 0.5f), (EngineColour{151, 127, 0}));
    EXPECT_EQ(Lerp({200, 0, 0}, {101, 255, 0}, 1.0f), (EngineColour{101, 255, 0}));
}

}  // namespace
}  // namespace tarvokin

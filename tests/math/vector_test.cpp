#include "math/vector.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

void ExpectVector(Vector actual, float x, float y, float z) {
    EXPECT_FLOAT_EQ(actual.x, x);
    EXPECT_FLOAT_EQ(actual.y, y);
    EXPECT_FLOAT_EQ(actual.z, z);
}

TEST(Vector, OperatorsWorkComponentByComponent) {
    const Vector a(1.0f, 2.0f, 3.0f);
    const Vector b(4.0f, 8.0f, 2.0f);
    ExpectVector(a + b, 5, 10, 5);
    ExpectVector(a - b, -3, -6, 1);
    ExpectVector(a * b, 4, 16, 6);
    ExpectVector(b / a, 4, 4, 2.0f / 3.0f);
    ExpectVector(a * 2.0f, 2, 4, 6);
    ExpectVector(b / 2.0f, 2, 4, 1);
    ExpectVector(-a, -1, -2, -3);
}

TEST(Vector, AssignsOneValueToAllComponents) {
    Vector v;
    ExpectVector(v = 3, 3, 3, 3);
    ExpectVector(v = 0.5f, 0.5f, 0.5f, 0.5f);
}

TEST(Vector, LengthAndDistanceAgree) {
    const Vector a(1.0f, 2.0f, 3.0f);
    const Vector b(3.0f, 5.0f, 9.0f);  // 2, 3, 6 apart: a length of 7
    EXPECT_EQ((a - b).Length(), 7.0f);
    EXPECT_EQ(b.Distance(a), 7.0f);
}

TEST(Vector, NormaliseAndSetLengthKeepTheDirection) {
    Vector v(0.0f, 3.0f, 4.0f);
    v.SetLength(10.0f);
    ExpectVector(v, 0, 6, 8);
    v.SetLength(-5.0f);
    ExpectVector(v, 0, -3, -4);
    v.Normalise();
    ExpectVector(v, 0, -0.6f, -0.8f);
}

TEST(Vector, NormaliseHasNoSmallestLengthAndLeavesZeroAlone) {
    Vector tiny(1e-18f, 0.0f, 0.0f);
    tiny.Normalise();
    EXPECT_FLOAT_EQ(tiny.x, 1.0f);
    Vector zero;
    zero.Normalise();
    zero.SetLength(3.0f);
    EXPECT_TRUE(zero.IsZero());
}

TEST(Vector, IsZeroIsExactAndKnowsNegativeZero) {
    EXPECT_FALSE(Vector(1e-30f, 0.0f, 0.0f).IsZero());
    EXPECT_TRUE(Vector(-0.0f, 0.0f, -0.0f).IsZero());
}

TEST(Vector, CrossIsRightHanded) {
    ExpectVector(Vector(1, 0, 0).Cross(Vector(0, 1, 0)), 0, 0, 1);
    ExpectVector(Vector(0, 1, 0).Cross(Vector(0, 0, 1)), 1, 0, 0);
    EXPECT_EQ(Vector(1, 2, 3).Dot(Vector(4, 5, 6)), 32.0f);
}

}  // namespace

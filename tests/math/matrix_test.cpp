#include "math/matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float quarterTurn = 1.57079633f;

void ExpectNear(Vector actual, Vector expected) {
    EXPECT_LT(actual.Distance(expected), 1e-5f);
}

Vector Transformed(const Matrix& matrix, Vector point) {
    matrix.TransformPoint(point);
    return point;
}

TEST(Matrix, StepsAreAppendedToTheEnd) {
    Matrix moveThenTurn;
    moveThenTurn.Translate(1, 0, 0);
    moveThenTurn.Rotate(quarterTurn, 0, 0, 1);
    ExpectNear(Vector(moveThenTurn.m[3], moveThenTurn.m[7], moveThenTurn.m[11]), Vector(0, -1, 0));

    Matrix scaleThenMove;
    scaleThenMove.Scale(2, 3, 4);
    scaleThenMove.Translate(1, 1, 1);
    ExpectNear(Transformed(scaleThenMove, Vector(1, 1, 1)), Vector(3, 4, 5));
}

TEST(Matrix, RotateTurnsByMinusTheAngle) {
    for (const float axisLength : {1.0f, 5.0f}) {
        Matrix aboutZ;
        aboutZ.Rotate(quarterTurn, 0, 0, axisLength);
        ExpectNear(Transformed(aboutZ, Vector(1, 0, 0)), Vector(0, -1, 0));
    }
    Matrix aboutX;
    aboutX.Rotate(quarterTurn, 1, 0, 0);
    ExpectNear(Transformed(aboutX, Vector(0, 1, 0)), Vector(0, 0, -1));
    Matrix aboutY;
    aboutY.Rotate(quarterTurn, 0, 1, 0);
    ExpectNear(Transformed(aboutY, Vector(0, 0, 1)), Vector(-1, 0, 0));
}

TEST(Matrix, RotateWithoutAngleOrAxisChangesNothing) {
    Matrix matrix;
    matrix.Rotate(0.0f, 1, 0, 0);
    matrix.Rotate(1.0f, 0, 0, 0);
    EXPECT_TRUE(matrix.IsIdentity());
}

TEST(Matrix, IdentityIsComparedByValueAndExactly) {
    Matrix matrix;
    EXPECT_TRUE(matrix.IsIdentity());
    matrix.Invert();  // leaves negative zeros behind
    EXPECT_TRUE(std::signbit(matrix.m[3]));
    EXPECT_TRUE(matrix.IsIdentity());

    matrix.Translate(1, 2, 3);
    EXPECT_FALSE(matrix.IsIdentity());
    EXPECT_TRUE(matrix.IsIdentityRotation());
    EXPECT_EQ(matrix.m[3], 1.0f);
    EXPECT_EQ(matrix.m[7], 2.0f);
    EXPECT_EQ(matrix.m[11], 3.0f);

    for (int element = 0; element < 16; element++) {
        Matrix changed;
        changed.m[element] += 1e-7f;
        EXPECT_EQ(changed.IsIdentity(), changed.m[element] == Matrix().m[element]) << element;
        changed.m[element] += 1.0f;
        EXPECT_EQ(changed.IsIdentityRotation(), element % 4 == 3) << element;
    }
}

TEST(Matrix, InvertUndoesARotationOrATranslation) {
    Matrix turn;
    turn.Rotate(0.7f, 1, 2, 3);
    Matrix back = turn;
    back.Invert();
    ExpectNear(Transformed(back, Transformed(turn, Vector(1, 2, 3))), Vector(1, 2, 3));

    Matrix move;
    move.Translate(1, 2, 3);
    move.Invert();
    ExpectNear(Transformed(move, Vector(1, 2, 3)), Vector(0, 0, 0));
}

TEST(Matrix, MultiplySeparateKeepsTranslationsApart) {
    Matrix matrix;
    matrix.Translate(1, 0, 0);
    Matrix other;
    other.Rotate(quarterTurn, 0, 0, 1);
    other.m[3] = 5;
    matrix.MultiplySeparate(other);
    EXPECT_EQ(matrix.m[3], 6.0f);  // 1 + 5, not turned
    EXPECT_EQ(matrix.m[1], other.m[1]);
}

TEST(Matrix, MayBeMultipliedByItself) {
    Matrix matrix;
    matrix.Scale(2, 3, 4);
    matrix.Multiply(matrix);
    ExpectNear(Transformed(matrix, Vector(1, 1, 1)), Vector(4, 9, 16));
}

TEST(Matrix, TransposesAndIgnoresTheBottomRow) {
    Matrix matrix;
    std::generate(matrix.m, matrix.m + 16, [value = 0.0f]() mutable { return value++; });
    Matrix transposed;
    matrix.CopyTransposedTo(transposed);
    EXPECT_EQ(transposed.m[1], 4.0f);
    EXPECT_EQ(transposed.m[12], 3.0f);

    Matrix identity;
    identity.m[15] = 2.0f;
    ExpectNear(Transformed(identity, Vector(1, 2, 3)), Vector(1, 2, 3));
}

}  // namespace

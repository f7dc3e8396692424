#include "math/matrix.h"

#include <cmath>

#include "support/expect_near.h"

namespace {

constexpr float quarterTurn = 1.57079633f;

Vector Transformed(const Matrix& matrix, Vector point) {
    matrix.TransformPoint(point);
    return point;
}

TEST(Matrix, StepsAreAppendedToTheEnd) {
    Matrix moveThenTurn;
    moveThenTurn.Translate(1, 0, 0);
    moveThenTurn.Rotate(quarterTurn, 0, 0, 1);
    ExpectNear(Transformed(moveThenTurn, Vector()), Vector(0, -1, 0));

    Matrix scaleThenMove;
    scaleThenMove.Scale(2, 3, 4);
    scaleThenMove.Translate(1, 1, 1);
    ExpectNear(Transformed(scaleThenMove, Vector(1, 1, 1)), Vector(3, 4, 5));
    scaleThenMove.Multiply(scaleThenMove);
    scaleThenMove.m[15] = 2.0f;  // nobody reads the bottom row
    ExpectNear(Transformed(scaleThenMove, Vector(1, 1, 1)), Vector(7, 13, 21));
}

TEST(Matrix, RotateTurnsByMinusTheAngleAboutAnAxisOfAnyLength) {
    const Vector x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
    const struct {
        Vector axis, from, to;
    } cases[] = {{x, y, -z}, {y, z, -x}, {z, x, -y}, {z * 5.0f, x, -y}, {Vector(), x, x}};
    for (const auto& [axis, from, to] : cases) {
        Matrix matrix;
        matrix.Rotate(quarterTurn, axis.x, axis.y, axis.z);
        ExpectNear(Transformed(matrix, from), to);
    }
}

TEST(Matrix, IdentityIsComparedByValueAndExactly) {
    Matrix matrix;
    matrix.Rotate(0.0f, 1, 0, 0);
    matrix.Invert();  // leaves negative zeros behind
    EXPECT_TRUE(std::signbit(matrix.m[3]));
    EXPECT_TRUE(matrix.IsIdentity());
    for (int element = 0; element < 16; element++) {
        Matrix changed;
        changed.m[element] = std::nextafter(changed.m[element], 2.0f);
        EXPECT_FALSE(changed.IsIdentity()) << element;
        EXPECT_EQ(changed.IsIdentityRotation(), element % 4 == 3) << element;
    }
}

TEST(Matrix, InvertUndoesARotationOrATranslation) {
    Matrix turn;
    turn.Rotate(0.7f, 1, 2, 3);
    Matrix move;
    move.Translate(1, 2, 3);
    for (const Matrix& matrix : {turn, move}) {
        Matrix back = matrix;
        back.Invert();
        ExpectNear(Transformed(back, Transformed(matrix, Vector(1, 2, 3))), Vector(1, 2, 3));
    }
}

TEST(Matrix, MultiplySeparateKeepsTranslationsApart) {
    Matrix matrix;
    matrix.Translate(1, 0, 0);
    Matrix other;
    other.Rotate(quarterTurn, 0, 0, 1);
    other.m[3] = 5;
    Matrix expected = other;
    expected.m[3] = 6;  // 1 + 5, not turned
    matrix.MultiplySeparate(other);
    ExpectNear(matrix, expected);

    matrix.CopyTransposedTo(matrix);
    EXPECT_EQ(matrix.m[12], 6.0f);
    EXPECT_EQ(matrix.m[4], other.m[1]);
}

}  // namespace

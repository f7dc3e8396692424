#include "math/matrix.h"

#include <cmath>

#include "math/quaternion.h"
#include "simulation/random_numbers.h"
#include "support/expect_near.h"

namespace {

constexpr float quarterTurn = 1.57079633f;

Vector Transformed(const Matrix& matrix, Vector point) {
    matrix.TransformPoint(point);
    return point;
}

TEST(Matrix, StepsAreAppendedToTheEnd) {
    Matrix matrix;
    matrix.Scale(2, 3, 4);
    matrix.Translate(1, 2, 3);
    ExpectNear(Transformed(matrix, Vector(1, 1, 1)), Vector(3, 5, 7));
    matrix.Rotate(quarterTurn, 0, 0, 1);
    ExpectNear(Transformed(matrix, Vector(1, 1, 1)), Vector(5, -3, 7));
    matrix.Multiply(matrix);  // (5, -3, 7) goes to (11, -7, 31), and turns
    matrix.m[15] = 2.0f;      // nobody reads the bottom row
    ExpectNear(Transformed(matrix, Vector(1, 1, 1)), Vector(-7, -11, 31));
}

TEST(Matrix, RotateTurnsByMinusTheAngleAboutAnAxisOfAnyLength) {
    const Vector x(1, 0, 0), y(0, 1, 0), z(0, 0, 1), diagonal(1, 1, 1);
    const struct {
        float angle;
        Vector axis, from, to;
    } cases[] = {{quarterTurn, x, y, -z},
                 {quarterTurn, y, z, -x},
                 {quarterTurn, z, x, -y},
                 {quarterTurn, z * 5.0f, x, -y},
                 {4 * quarterTurn / 3, diagonal, x, z},
                 {4 * quarterTurn / 3, diagonal, z, y},
                 {4 * quarterTurn / 3, diagonal, y, x},
                 {quarterTurn, Vector(), x, x}};
    for (const auto& [angle, axis, from, to] : cases) {
        Matrix matrix;
        matrix.Rotate(angle, axis.x, axis.y, axis.z);
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

TEST(Matrix, InvertUndoesARotationOrATranslationAndTransposingTurnsOver) {
    Matrix turn;
    turn.Rotate(0.7f, 1, 2, 3);
    Matrix move;
    move.Translate(1, 2, 3);
    for (const Matrix& matrix : {turn, move}) {
        Matrix back = matrix;
        back.Invert();
        ExpectNear(Transformed(back, Transformed(matrix, Vector(1, 2, 3))), Vector(1, 2, 3));
    }
    move.CopyTransposedTo(move);
    EXPECT_EQ(move.m[12] + 10 * move.m[13] + 100 * move.m[14] + 1000 * move.m[3], 321.0f);
}

TEST(Matrix, MultiplySeparateAddsTranslationsWithoutTurningThem) {
    Matrix matrix;
    matrix.Rotate(0.4f, 1, 2, 3);
    Matrix other;
    other.Rotate(1.3f, -3, 1, 1);
    Matrix expected = matrix;
    expected.Multiply(other);
    for (const int row : {0, 1, 2}) {
        matrix.m[4 * row + 3] = static_cast<float>(row);
        other.m[4 * row + 3] = 10.0f;
        expected.m[4 * row + 3] = static_cast<float>(10 + row);
    }
    matrix.MultiplySeparate(other);
    ExpectNear(matrix, expected);
}

void ExpectSameRotation(const Quaternion& actual, const Quaternion& expected) {
    const float same =
        actual.x * expected.x + actual.y * expected.y + actual.z * expected.z + actual.w * expected.w;
    EXPECT_NEAR(std::fabs(same), 1.0f, 1e-5f);
}

Quaternion Turn(float angle, Vector axis) {
    Quaternion result;
    result.SetAxisAngle(angle, axis.x, axis.y, axis.z);
    return result;
}

TEST(Quaternion, DoesWhatMatricesDo) {
    RandomNumbers random(5);
    for (int round = 0; round < 300; round++) {
        const Vector axis = random.RandomVector(1.0f);
        const float angle = random.Random(0.1f, 3.1f);
        const Quaternion rotation = Turn(angle, axis);
        Matrix expected;
        expected.Rotate(angle, axis.x, axis.y, axis.z);
        Matrix actual;
        actual.Translate(1, 2, 3);
        rotation.ToMatrix(actual);
        ExpectNear(actual, expected);

        Quaternion back;
        back.SetFromMatrix(expected);
        ExpectSameRotation(back, rotation);
        // The way back gives the opposite axis.
        float sameAngle, x, y, z;
        rotation.GetAxisAngle(&sameAngle, &x, &y, &z);
        EXPECT_NEAR(sameAngle, angle, 1e-3f);
        ExpectNear(Vector(x, y, z) * axis.Length(), -axis, 1e-3f);

        const Quaternion next = Turn(1.0f, random.RandomVector(1.0f));
        Matrix nextMatrix;
        next.ToMatrix(nextMatrix);
        expected.Multiply(nextMatrix);
        Quaternion product;
        product.Multiply(next, rotation);
        product.ToMatrix(actual);
        ExpectNear(actual, expected);

        // A third of the way between two turns about one axis, also if one of them goes by its other name.
        Quaternion between;
        between.Slerp(rotation, Turn(angle + 0.9f, axis), 1.0f / 3.0f);
        ExpectSameRotation(between, Turn(angle + 0.3f, axis));
        between.Slerp(rotation, -Turn(angle + 0.9f, axis), 1.0f / 3.0f);
        ExpectSameRotation(between, Turn(angle + 0.3f, axis));

        Quaternion euler, yaw, pitch, roll;
        euler.SetFromEuler(angle, axis.x, axis.y);
        yaw.SetFromEuler(angle, 0, 0);
        pitch.SetFromEuler(0, axis.x, 0);
        roll.SetFromEuler(0, 0, axis.y);
        product.Multiply(yaw, pitch);
        product.Multiply(product, roll);
        ExpectSameRotation(euler, product);
    }
}

TEST(Quaternion, HalfTurnsDefaultsAndEqualEnds) {
    for (const Vector axis : {Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1), Vector(0, 3, 4)}) {
        Matrix halfTurn;
        Turn(2 * quarterTurn, axis).ToMatrix(halfTurn);
        Quaternion back;
        back.SetFromMatrix(halfTurn);
        ExpectSameRotation(back, Turn(2 * quarterTurn, axis));
    }
    Quaternion yaw;
    yaw.SetFromEuler(0.5f, 0, 0);
    ExpectSameRotation(yaw, Turn(-0.5f, Vector(0, 0, 1)));
    yaw.SetFromEuler(0, 0.5f, 0);
    ExpectSameRotation(yaw, Turn(-0.5f, Vector(0, 1, 0)));
    EXPECT_TRUE(Turn(2.0f, Vector()).x == 0.0f && Turn(2.0f, Vector()).w == std::cos(1.0f))
        << "an axis of no length gives no vector part";
    float angle = 1.0f;
    Vector axis;
    Quaternion().GetAxisAngle(&angle, &axis);
    EXPECT_EQ(angle, 0.0f);
    ExpectNear(axis, Vector(0, 0, 1));
    Quaternion between;
    between.Slerp(yaw, yaw, 0.3f);
    ExpectSameRotation(between, yaw);
}

}  // namespace

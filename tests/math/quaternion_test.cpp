#include "math/quaternion.h"

#include <cmath>

#include "support/expect_near.h"

namespace {

void ExpectNear(Quaternion actual, Quaternion expected) {
    ExpectNear(Vector(actual.x, actual.y, actual.z), Vector(expected.x, expected.y, expected.z));
    EXPECT_NEAR(actual.w, expected.w, 1e-5f);
}

TEST(Quaternion, DefaultIsTheIdentityRotation) {
    Matrix matrix;
    matrix.Translate(1, 2, 3);
    Quaternion().ToMatrix(matrix);
    EXPECT_TRUE(matrix.IsIdentity());

    float angle = 1.0f;
    Vector axis;
    Quaternion().GetAxisAngle(&angle, &axis);
    EXPECT_EQ(angle, 0.0f);
    EXPECT_EQ(axis.z, 1.0f);
}

TEST(Quaternion, TurnsInTheSenseOfTheMatrix) {
    Matrix expected;
    expected.Rotate(0.8f, 1, -2, 0.5f);
    Quaternion rotation;
    rotation.SetAxisAngle(0.8f, 1, -2, 0.5f);
    Matrix actual;
    rotation.ToMatrix(actual);
    ExpectNear(actual, expected);
    // An axis of no length gives no vector part.
    Quaternion none;
    none.SetAxisAngle(2.0f, Vector());
    ExpectNear(none, Quaternion(0, 0, 0, std::cos(1.0f)));
    // The way back gives the opposite axis.
    float angle, x, y, z;
    rotation.GetAxisAngle(&angle, &x, &y, &z);
    EXPECT_NEAR(angle, 0.8f, 1e-5f);
    EXPECT_NEAR(y / x, -2.0f, 1e-4f);
    EXPECT_LT(x, 0.0f);
}

TEST(Quaternion, ComesBackFromItsMatrixByEveryBranch) {
    // Half turns about each axis have a trace of -1 and take the branch of the largest element.
    const Quaternion rotations[] = {Quaternion(0.5f, -0.5f, 0.5f, 0.5f),
                                    Quaternion(1, 0, 0, 0),
                                    Quaternion(0, 1, 0, 0),
                                    Quaternion(0, 0, 1, 0),
                                    Quaternion(0.8f, 0, 0, 0.6f),
                                    Quaternion(0.1f, 0.7f, -0.7f, 0.1f)};
    for (const Quaternion& rotation : rotations) {
        Matrix matrix;
        rotation.ToMatrix(matrix);
        Quaternion back;
        back.SetFromMatrix(matrix);
        const float same =
            back.x * rotation.x + back.y * rotation.y + back.z * rotation.z + back.w * rotation.w;
        ExpectNear(same < 0.0f ? -back : back, rotation);
    }
}

TEST(Quaternion, EulerAnglesAreOneAxisEach) {
    const float s = std::sin(0.25f);
    const float c = std::cos(0.25f);
    Quaternion rotation;
    rotation.SetFromEuler(0.5f, 0, 0);
    ExpectNear(rotation, Quaternion(0, 0, s, c));
    rotation.SetFromEuler(0, 0.5f, 0);
    ExpectNear(rotation, Quaternion(0, s, 0, c));
    rotation.SetFromEuler(0, 0, 0.5f);
    ExpectNear(rotation, Quaternion(s, 0, 0, c));
}

TEST(Quaternion, MultipliesAsHamiltonDid) {
    const Quaternion i(1, 0, 0, 0);
    const Quaternion j(0, 1, 0, 0);
    Quaternion product;
    product.Multiply(i, j);
    ExpectNear(product, Quaternion(0, 0, 1, 0));
    product.Multiply(j, i);
    ExpectNear(product, Quaternion(0, 0, -1, 0));
}

TEST(Quaternion, SlerpGoesTheShorterWay) {
    Quaternion start;
    Quaternion end;
    end.SetAxisAngle(1.0f, 0, 0, 1);
    Quaternion middle;
    middle.SetAxisAngle(0.5f, 0, 0, 1);
    Quaternion result;
    result.Slerp(start, end, 0.5f);
    ExpectNear(result, middle);
    result.Slerp(start, -end, 0.5f);
    ExpectNear(result, middle);
    result.Slerp(start, start, 0.3f);
    ExpectNear(result, start);
}

}  // namespace

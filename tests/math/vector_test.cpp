#include "math/vector.h"

#include "support/expect_near.h"

namespace {

TEST(Vector, OperatorsWorkComponentByComponent) {
    const Vector a(1, 2, 3);
    const Vector b(4, 8, 2);
    ExpectNear(a + b, Vector(5, 10, 5));
    ExpectNear(a - b, Vector(-3, -6, 1));
    ExpectNear(a * b, Vector(4, 16, 6));
    ExpectNear(b / a, Vector(4, 4, 2.0f / 3.0f));
    ExpectNear(a * 2.0f, Vector(2, 4, 6));
    ExpectNear(b / 2.0f, Vector(2, 4, 1));
    ExpectNear(-a, Vector(-1, -2, -3));
    Vector v;
    ExpectNear(v = 3, Vector(3, 3, 3));
    ExpectNear(v = 0.5f, Vector(0.5f, 0.5f, 0.5f));
    EXPECT_EQ(a.Dot(b), 26.0f);
    ExpectNear(a.Cross(b), Vector(-20, 10, 0));
    EXPECT_EQ(a.Distance(Vector(3, 5, 9)), 7.0f);
}

TEST(Vector, NormaliseAndSetLengthKeepTheDirectionAndLeaveZeroAlone) {
    Vector v(0, 3, 4);
    v.SetLength(10.0f);
    ExpectNear(v, Vector(0, 6, 8));
    v.SetLength(-5.0f);
    ExpectNear(v, Vector(0, -3, -4));
    v.Normalise();
    ExpectNear(v, Vector(0, -0.6f, -0.8f));
    Vector tiny(1e-18f, 0, 0);
    EXPECT_FALSE(tiny.IsZero());
    tiny.Normalise();
    ExpectNear(tiny, Vector(1, 0, 0));
    Vector zero(-0.0f, 0, -0.0f);
    zero.Normalise();
    zero.SetLength(3.0f);
    EXPECT_TRUE(zero.IsZero());
}

}  // namespace

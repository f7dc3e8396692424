#include <cmath>

#include "support/expect_near.h"

namespace {

const Vector origin;
const Vector xAxis(1, 0, 0);
const Vector yAxis(0, 1, 0);
const Vector zAxis(0, 0, 1);
// A triangle.
const Vector a(0, 0, 0);
const Vector b(4, 0, 0);
const Vector c(0, 4, 0);

TEST(Geometry, PointLiesInFrontOfBehindOrOnAPlane) {
    const auto classify = [](float z) { return Vector(7, -3, z).ClassifyPoint(origin, zAxis); };
    EXPECT_EQ(classify(0.01f), PlaneOn);
    EXPECT_EQ(classify(-0.01f), PlaneOn);
    EXPECT_EQ(classify(std::nextafter(0.01f, 1.0f)), PlaneInFront);
    EXPECT_EQ(classify(std::nextafter(-0.01f, -1.0f)), PlaneBehind);
    // With a normal ten times as long the tolerance is a tenth.
    EXPECT_EQ(Vector(0, 0, 0.005f).ClassifyPoint(origin, Vector(0, 0, 10)), PlaneInFront);
    // Without a normal everything is on the plane.
    EXPECT_EQ(Vector(0, 0, 5).ClassifyPoint(origin, origin), PlaneOn);
}

TEST(Geometry, RayMeetsPlaneInUnitsOfItsVector) {
    const Vector start(3, 4, 1);
    EXPECT_EQ(start.IntersectRayPlane(Vector(0, 0, -2), Vector(9, 9, 0), Vector(0, 0, 5)), 0.5f);
    EXPECT_EQ(start.IntersectRayPlane(xAxis, origin, zAxis), -1.0f) << "parallel";
    EXPECT_EQ(start.IntersectRayPlane(Vector(0, 0, 0.25f), origin, zAxis), -4.0f) << "behind";
}

TEST(Geometry, LineMeetsSphereAtItsFirstCrossing) {
    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(3, 0, 0), 1.0f), 2.0f);
    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(3, 1, 0), 1.0f), 3.0f) << "grazes";
    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(3, 2, 0), 1.0f), -1.0f) << "misses";
    EXPECT_EQ(Vector(3.5f, 0, 0).IntersectRaySphere(xAxis, Vector(3, 0, 0), 1.0f), -1.5f) << "from inside";
    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(-3, 0, 0), 1.0f), -4.0f) << "behind";
    // The circle takes a vector of any length, and nobody's z.
    EXPECT_EQ(Vector(0, 0, 8).IntersectRayCircle(Vector(7, 0, 3), Vector(3, 0, -9), 1.0f), 2.0f);
}

TEST(Geometry, LineMeetsInfiniteCylinder) {
    float tIn = 5.0f;
    float tOut = 6.0f;
    // Twice the unit: half the distances.
    EXPECT_TRUE(Vector(-5, 0, 9).IntersectRayCylinder(Vector(2, 0, 0), origin, zAxis, 1.0f, tIn, tOut));
    EXPECT_FLOAT_EQ(tIn, 2.0f);
    EXPECT_FLOAT_EQ(tOut, 3.0f);
    EXPECT_FALSE(Vector(-5, 1.5f, 0).IntersectRayCylinder(xAxis, origin, zAxis, 1.0f, tIn, tOut));
    EXPECT_FLOAT_EQ(tIn, 2.0f) << "a miss writes nothing";
    // Along the axis: inside for ever, or never.
    EXPECT_TRUE(Vector(1, 0, 0).IntersectRayCylinder(zAxis, origin, zAxis, 1.0f, tIn, tOut));
    EXPECT_EQ(tIn, -INFINITY);
    EXPECT_EQ(tOut, INFINITY);
    EXPECT_FALSE(Vector(1.5f, 0, 0).IntersectRayCylinder(zAxis, origin, zAxis, 1.0f, tIn, tOut));
}

TEST(Geometry, RayMeetsWallOfUprightCylinder) {
    const auto hit = [](Vector start, Vector ray) {
        return start.IntersectRayUprightCylinder(ray, Vector(10, 0, 0), 2.0f, 3.0f);
    };
    EXPECT_FLOAT_EQ(hit(origin, Vector(0.1f, 0, 0)), 8.0f) << "a distance, whatever the vector's length";
    EXPECT_FLOAT_EQ(hit(Vector(0, 0, 3), xAxis), 8.0f) << "the height counts with its ends";
    EXPECT_EQ(hit(Vector(0, 0, 3.01f), xAxis), -1.0f) << "passes above";
    EXPECT_EQ(hit(Vector(0, 0, -3.01f), xAxis), -1.0f) << "passes below";
    EXPECT_EQ(hit(Vector(0, 2.1f, 0), xAxis), -1.0f) << "passes beside";
    EXPECT_EQ(hit(Vector(10, 1, 0), xAxis), -1.0f) << "from inside";
    EXPECT_EQ(hit(Vector(20, 0, 0), xAxis), -1.0f) << "lies behind";
    EXPECT_EQ(hit(Vector(10, 1, 9), -zAxis), -1.0f) << "down through the cap";
    EXPECT_EQ(hit(Vector(13, 0, 9), -zAxis), -1.0f) << "down beside the wall";
    EXPECT_EQ(hit(Vector(8, 0, 0), xAxis), 0.0f) << "on the wall";
    EXPECT_FLOAT_EQ(hit(Vector(7, 0, 6), Vector(1, 0, -3)), std::sqrt(10.0f)) << "through the whole height";
    // Comes in above the top and leaves through the bottom of the height: the wall's entry all the same.
    EXPECT_FLOAT_EQ(hit(Vector(4, 0, 8), Vector(1, 0, -1)), 4.0f * std::sqrt(2.0f));
}

TEST(Geometry, PlanesNarrowTheSpanOfARay) {
    const float from1[4] = {-1, 0, 0, 1};   // entered at x = 1
    const float upTo3[4] = {1, 0, 0, -3};   // left at x = 3
    const float upTo9[4] = {1, 0, 0, -9};   // left at x = 9
    const float above[4] = {0, 0, 1, 1};    // parallel to the ray, which lies outside
    const float beside[4] = {0, 0, 1, -1};  // parallel to the ray, which lies inside
    float tIn = 0.0f;
    float tOut = 8.0f;
    int in = 7;
    int out = 7;
    EXPECT_TRUE(origin.ClipRayToPlanes(xAxis, from1, upTo3, tIn, tOut, in, out));
    EXPECT_EQ(tIn, 1.0f);
    EXPECT_EQ(tOut, 3.0f);
    EXPECT_EQ(in, 1);
    EXPECT_EQ(out, 2);
    EXPECT_TRUE(origin.ClipRayToPlanes(xAxis, upTo9, beside, tIn, tOut, in, out));
    EXPECT_EQ(tOut, 3.0f);
    EXPECT_EQ(in, 0);
    EXPECT_EQ(out, 0);
    EXPECT_FALSE(origin.ClipRayToPlanes(xAxis, from1, above, tIn, tOut, in, out));
    tIn = 0.0f;
    tOut = 0.5f;
    EXPECT_FALSE(origin.ClipRayToPlanes(xAxis, beside, from1, tIn, tOut, in, out)) << "entered too late";
    tIn = 4.0f;
    tOut = 8.0f;
    EXPECT_FALSE(origin.ClipRayToPlanes(xAxis, upTo3, beside, tIn, tOut, in, out)) << "left too early";
}

TEST(Geometry, PointInTriangleBySumOfAngles) {
    EXPECT_TRUE(Vector(1, 1, 0).IsPointInTriangle(a, b, c));
    EXPECT_TRUE(Vector(1, 1, 0).IsPointInTriangle(c, b, a)) << "whichever way it faces";
    EXPECT_TRUE(Vector(2, 0, 0).IsPointInTriangle(a, b, c)) << "on an edge";
    EXPECT_TRUE(Vector(2, -0.004f, 0).IsPointInTriangle(a, b, c)) << "within the tolerance of an edge";
    EXPECT_FALSE(Vector(2, -0.006f, 0).IsPointInTriangle(a, b, c));
    EXPECT_FALSE(a.IsPointInTriangle(a, b, c)) << "a corner";
    EXPECT_FALSE(Vector(3, 3, 0).IsPointInTriangle(a, b, c));
    EXPECT_FALSE(Vector(1, 1, 1).IsPointInTriangle(a, b, c)) << "above it";
    EXPECT_FALSE(Vector(NAN, 1, 0).IsPointInTriangle(a, b, c));
}

TEST(Geometry, NearestPointsOfSegmentsAndEdges) {
    ExpectNear(Vector(-1, 3, 0).ClosestPointOnSegment(a, b), Vector(0, 0, 0));
    ExpectNear(Vector(1, 3, 5).ClosestPointOnSegment(a, b), Vector(1, 0, 0));
    ExpectNear(Vector(9, 3, 0).ClosestPointOnSegment(a, b), Vector(4, 0, 0));
    ExpectNear(Vector(9, 3, 0).ClosestPointOnSegment(c, c), Vector(0, 4, 0));

    ExpectNear(Vector(3, -1, 0).ClosestPointOnTriangleEdges(a, b, c), Vector(3, 0, 0));
    ExpectNear(Vector(3, 3, 0).ClosestPointOnTriangleEdges(a, b, c), Vector(2, 2, 0));
    ExpectNear(Vector(-2, 3, 0).ClosestPointOnTriangleEdges(a, b, c), Vector(0, 3, 0));

    const auto expectEdge = [](Vector point, Vector from, Vector to) {
        Vector start;
        Vector end;
        point.ClosestTriangleEdge(a, b, c, &start, &end);
        ExpectNear(start, from);
        ExpectNear(end, to);
    };
    expectEdge(Vector(3, 3, 0), b, c);
    expectEdge(Vector(-2, 3, 0), c, a);
    expectEdge(Vector(9, 0, 0), a, b);  // beyond corner b both its edges are equally near: the earlier one
}

TEST(Geometry, ProjectionGoesAlongTheNormalFromEitherSide) {
    ExpectNear(Vector(1, 2, -3).ProjectOntoPlane(zAxis, Vector(9, 9, 0)), Vector(1, 2, 0));
    ExpectNear(Vector(1, 2, 3).ProjectOntoPlane(zAxis, Vector(9, 9, 0)), Vector(1, 2, 6));
    ExpectNear(Vector(1, 2, -3).ProjectOntoPlane(Vector(0, 0, 2), origin), Vector(1, 2, 3));
}

TEST(Geometry, DistanceLimitIsInclusive) {
    EXPECT_TRUE(Vector(1, 2, 3).IsWithinDistance(Vector(1, 6, 6), 5.0f));
    EXPECT_FALSE(Vector(1, 2, 3).IsWithinDistance(Vector(1, 6, 6), 4.99f));
    EXPECT_TRUE(Vector(0, 0, 90).IsWithinDistanceXY(Vector(3, 4, -90), 5.0f));
    EXPECT_FALSE(Vector(0, 0, 90).IsWithinDistanceXY(Vector(3, 4, -90), 4.99f));
}

}  // namespace

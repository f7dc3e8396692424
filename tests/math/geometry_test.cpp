#include <cmath>

#include "support/expect_near.h"

namespace {

const Vector origin;
const Vector xAxis(1, 0, 0);
const Vector zAxis(0, 0, 1);
// A triangle.
const Vector a(0, 0, 0);
const Vector b(4, 0, 0);
const Vector c(0, 4, 0);

TEST(Vector, LengthsAreSetAlongTheDirectionAndZeroStays) {
    Vector v(0, 3, 4);
    v.SetLength(-10.0f);
    ExpectNear(v, Vector(0, -6, -8));
    v.Normalise();
    ExpectNear(v, Vector(0, -0.6f, -0.8f));
    Vector tiny(1e-18f, 0, 0);
    tiny.Normalise();
    ExpectNear(tiny, xAxis);
    Vector zero(-0.0f, 0, -0.0f);
    zero.Normalise();
    zero.SetLength(3.0f);
    EXPECT_TRUE(zero.IsZero());
}

TEST(Geometry, PointLiesInFrontOfBehindOrOnAPlane) {
    const auto classify = [](float z) { return Vector(7, -3, z).ClassifyPoint(origin, zAxis); };
    EXPECT_EQ(classify(0.01f), PlaneOn);
    EXPECT_EQ(classify(-0.01f), PlaneOn);
    EXPECT_EQ(classify(std::nextafter(0.01f, 1.0f)), PlaneInFront);
    EXPECT_EQ(classify(std::nextafter(-0.01f, -1.0f)), PlaneBehind);
    EXPECT_EQ(Vector(0, 0, 0.005f).ClassifyPoint(origin, Vector(0, 0, 10)), PlaneInFront);
}

TEST(Geometry, RaysMeetPlanesSpheresAndCircles) {
    const Vector start(3, 4, 1);
    EXPECT_EQ(start.IntersectRayPlane(Vector(0, 0, -2), Vector(9, 9, 0), Vector(0, 0, 5)), 0.5f);
    EXPECT_EQ(start.IntersectRayPlane(xAxis, origin, zAxis), -1.0f) << "parallel";
    EXPECT_EQ(start.IntersectRayPlane(Vector(0, 0, 0.25f), origin, zAxis), -4.0f) << "behind";

    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(3, 0, 0), 1.0f), 2.0f);
    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(3, 1, 0), 1.0f), 3.0f) << "grazes";
    EXPECT_EQ(origin.IntersectRaySphere(xAxis, Vector(3, 1.1f, 0), 1.0f), -1.0f) << "misses";
    EXPECT_EQ(Vector(3.5f, 0, 0).IntersectRaySphere(xAxis, Vector(3, 0, 0), 1.0f), -1.5f) << "from inside";
    EXPECT_FLOAT_EQ(origin.IntersectRaySphere(xAxis, Vector(9, 3, 0), 5.0f), 5.0f)
        << "9 less the 4 of 3, 4, 5";
    // The circle takes a vector of any length, and nobody's z.
    EXPECT_EQ(Vector(0, 0, 8).IntersectRayCircle(Vector(7, 0, 3), Vector(3, 0, -9), 1.0f), 2.0f);
}

TEST(Geometry, LineMeetsInfiniteCylinder) {
    float tIn = 5.0f;
    float tOut = 6.0f;
    // Twice the unit and 3 beside the axis of 5: from 4 before it to 4 behind, half of these.
    EXPECT_TRUE(Vector(-14, 3, 9).IntersectRayCylinder(Vector(2, 0, 0), origin, zAxis, 5.0f, tIn, tOut));
    EXPECT_FLOAT_EQ(tIn, 5.0f);
    EXPECT_FLOAT_EQ(tOut, 9.0f);
    EXPECT_FALSE(Vector(-14, 5.1f, 0).IntersectRayCylinder(xAxis, origin, zAxis, 5.0f, tIn, tOut));
    EXPECT_FLOAT_EQ(tIn, 5.0f) << "a miss writes nothing";
    // Along the axis: inside for ever, or never.
    EXPECT_TRUE(Vector(2, 0, 7).IntersectRayCylinder(zAxis, xAxis, zAxis, 1.0f, tIn, tOut));
    EXPECT_EQ(tIn, -INFINITY);
    EXPECT_EQ(tOut, INFINITY);
    EXPECT_FALSE(Vector(1.1f, 0, 7).IntersectRayCylinder(zAxis, origin, zAxis, 1.0f, tIn, tOut));
}

TEST(Geometry, RayMeetsWallOfUprightCylinder) {
    const struct {
        const char* what;
        Vector start, ray;
        float distance;
    } cases[] = {
        {"a distance, whatever the vector's length", {0, 0, 1}, {0.1f, 0, 0}, 8},
        {"at the height of the upper end", {0, 0, 4}, xAxis, 8},
        {"above it", {0, 0, 4.01f}, xAxis, -1},
        {"at the height of the lower end", {0, 0, -2}, xAxis, 8},
        {"below it", {0, 0, -2.01f}, xAxis, -1},
        {"beside", {0, 2.1f, 0}, xAxis, -1},
        {"from inside", {10, 1, 0}, xAxis, -1},
        {"behind", {20, 0, 0}, xAxis, -1},
        {"on the wall", {8, 0, 0}, xAxis, 0},
        {"down through the cap", {10, 1, 9}, {0, 0, -1}, -1},
        {"down through the whole height", {7, 0, 7}, {1, 0, -3}, std::sqrt(10.0f)},
        {"in above the upper end, out below it", {4, 0, 9}, {1, 0, -1}, 4 * std::sqrt(2.0f)},
        {"in below the lower end, out above it", {4, 0, -7}, {1, 0, 1}, 4 * std::sqrt(2.0f)},
    };
    for (const auto& [what, start, ray, distance] : cases) {
        EXPECT_FLOAT_EQ(start.IntersectRayUprightCylinder(ray, Vector(10, 0, 1), 2.0f, 3.0f), distance)
            << what;
    }
}

TEST(Geometry, PlanesNarrowTheSpanOfARay) {
    using Plane = float[4];
    const Plane from1{-1, 0, 0, 1}, upTo3{1, 0, 0, -3}, upTo9{1, 0, 0, -9};
    const Plane outside{0, 0, 1, 0}, inside{0, 0, 1, -1};  // parallel to the ray
    const struct {
        const Plane &first, &second;
        float from, to;
        bool remains;
        float in, out;
        int surfaceIn, surfaceOut;
    } cases[] = {
        {from1, upTo3, 0, 8, true, 1, 3, 1, 2},    {upTo3, from1, 0, 8, true, 1, 3, 2, 1},
        {upTo9, inside, 0, 8, true, 0, 8, 0, 0},   {from1, inside, 2, 8, true, 2, 8, 0, 0},
        {from1, outside, 0, 8, false, 0, 8, 1, 0}, {inside, from1, 0, 0.5f, false, 0, 0.5f, 0, 0},
        {upTo3, inside, 4, 8, false, 4, 8, 0, 0},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(&expected - cases);
        float in = expected.from;
        float out = expected.to;
        int surfaceIn = 7;
        int surfaceOut = 7;
        EXPECT_EQ(
            origin.ClipRayToPlanes(xAxis, expected.first, expected.second, in, out, surfaceIn, surfaceOut),
            expected.remains);
        EXPECT_EQ(std::pair(in, out), std::pair(expected.in, expected.out));
        EXPECT_EQ(std::pair(surfaceIn, surfaceOut), std::pair(expected.surfaceIn, expected.surfaceOut));
    }
}

TEST(Geometry, PointInTriangleBySumOfAngles) {
    EXPECT_TRUE(Vector(1, 1, 0).IsPointInTriangle(a, b, c));
    EXPECT_TRUE(Vector(1, 1, 0).IsPointInTriangle(c, b, a)) << "whichever way it faces";
    EXPECT_TRUE(Vector(2, 0, 0).IsPointInTriangle(a, b, c)) << "on an edge";
    // Twice 0.005 short of a full circle is the tolerance.
    EXPECT_TRUE(Vector(2, -0.0048f, 0).IsPointInTriangle(a, b, c));
    EXPECT_FALSE(Vector(2, -0.0052f, 0).IsPointInTriangle(a, b, c));
    EXPECT_FALSE(a.IsPointInTriangle(a, b, c)) << "a corner";
    EXPECT_FALSE(Vector(3, 3, 0).IsPointInTriangle(a, b, c));
    EXPECT_FALSE(Vector(1, 1, 1).IsPointInTriangle(a, b, c)) << "above it";
    EXPECT_FALSE(Vector(NAN, 1, 0).IsPointInTriangle(a, b, c));
}

TEST(Geometry, NearestPointsOfSegmentsAndEdges) {
    const std::pair<Vector, Vector> onSegment[] = {{{-1, 3, 0}, a}, {{1, 3, 5}, xAxis}, {{4.5f, 3, 0}, b}};
    for (const auto& [point, nearest] : onSegment) {
        ExpectNear(point.ClosestPointOnSegment(a, b), nearest);
    }
    ExpectNear(Vector(9, 3, 0).ClosestPointOnSegment(c, c), c);

    const struct {
        Vector point, nearest, edgeStart, edgeEnd;
    } cases[] = {{{3, -1, 0}, {3, 0, 0}, a, b},
                 {{3, 3, 0}, {2, 2, 0}, b, c},
                 {{-2, 3, 0}, {0, 3, 0}, c, a},
                 // Beyond a corner both its edges are equally near: the earlier one.
                 {{9, 0, 0}, b, a, b},
                 {{0, 9, 0}, c, b, c}};
    for (const auto& [point, nearest, edgeStart, edgeEnd] : cases) {
        ExpectNear(point.ClosestPointOnTriangleEdges(a, b, c), nearest);
        Vector start;
        Vector end;
        point.ClosestTriangleEdge(a, b, c, &start, &end);
        ExpectNear(start, edgeStart);
        ExpectNear(end, edgeEnd);
    }
}

TEST(Geometry, ProjectionGoesAlongTheNormalFromEitherSide) {
    ExpectNear(Vector(1, 2, -3).ProjectOntoPlane(zAxis, Vector(9, 9, 1)), Vector(1, 2, 1));
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

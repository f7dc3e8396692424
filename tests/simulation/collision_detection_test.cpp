#include <cmath>
#include <limits>

#include "simulation/test_world.h"

namespace {

/// A unit sphere in a world that is its own ellipsoid space.
struct Sphere {
    Object object;

    explicit Sphere(Vector centre) {
        object.MakeCollider();
        object.collider->radii = Vector(1, 1, 1);
        object.SetVertex(centre, 0);
        object.collider->sweepOrigin = centre;
    }
    /// The distance found, or -1.0.
    float Sweep(const Object& obstacle, Vector sweep) {
        object.collider->sweepVelocity = sweep;
        object.collider->foundCollision = 0;
        object.collider->airborne = 1;
        object.collider->nearestDistance = -1.0f;
        object.CollideWithObject(obstacle);
        EXPECT_EQ(object.collider->foundCollision != 0, object.collider->nearestDistance != -1.0f);
        EXPECT_EQ(object.collider->airborne, 1 - object.collider->foundCollision);
        return object.collider->nearestDistance;
    }
};

/// The triangle (-20, -20), (20, -20), (0, 20) at z = 0, facing up.
Object Ground() {
    Object object;
    const Vector corners[3] = {Vector(-20, -20, 0), Vector(20, -20, 0), Vector(0, 20, 0)};
    MakeMesh(object, corners, 3);
    return object;
}

TEST(CollisionDetection, SphereFallsOntoAFace) {
    Sphere sphere(Vector(1, 2, 1.5f));
    EXPECT_FLOAT_EQ(sphere.Sweep(Ground(), Vector(0, 0, -1)), 0.5f);
    ExpectNear(sphere.object.collider->nearestSpherePoint, Vector(1, 2, 0.5f));
    ExpectNear(sphere.object.collider->nearestContactPoint, Vector(1, 2, 0));
    EXPECT_EQ(sphere.object.collider->edgeContact, 0);
    EXPECT_FLOAT_EQ(sphere.Sweep(Ground(), Vector(0, 0, -0.5f)), 0.5f) << "a sweep that just gets there";
    EXPECT_EQ(sphere.Sweep(Ground(), Vector(0, 0, -0.49f)), -1.0f) << "one that doesn't";
    EXPECT_EQ(sphere.Sweep(Ground(), Vector(1, 0, 0)), -1.0f) << "one along the face";
}

TEST(CollisionDetection, SunkenSphereReportsHowDeepItIs) {
    Sphere sphere(Vector(0, 0, 0.8f));
    EXPECT_FLOAT_EQ(sphere.Sweep(Ground(), Vector(0.5f, 0, 0)), 0.2f);
    ExpectNear(sphere.object.collider->nearestContactPoint, Vector(0, 0, 0));
    EXPECT_EQ(sphere.Sweep(Ground(), Vector(0.1f, 0, 0)), -1.0f) << "deeper than the sweep is long";
}

TEST(CollisionDetection, FaceFromBehindIsMetOnlyByTheFarSide) {
    Sphere sphere(Vector(0, 0, -0.5f));
    EXPECT_EQ(sphere.Sweep(Ground(), Vector(0, 0, 1.4f)), -1.0f);
    EXPECT_FLOAT_EQ(sphere.Sweep(Ground(), Vector(0, 0, 1.6f)), 1.5f);
}

TEST(CollisionDetection, EdgeIsMetOnThePlaneOfTravel) {
    // Falls half a unit outside the edge along y = -20.
    Sphere sphere(Vector(0, -20.5f, 1.5f));
    const float distance = 1.5f - std::sqrt(0.75f);
    EXPECT_NEAR(sphere.Sweep(Ground(), Vector(0, 0, -1)), distance, 1e-5f);
    EXPECT_EQ(sphere.object.collider->edgeContact, 1);
    ExpectNear(sphere.object.collider->nearestContactPoint, Vector(0, -20, 0), 1e-3f);
    ExpectNear(sphere.object.collider->nearestSpherePoint, Vector(0, -20, distance), 1e-3f);

    // From 0.99 on the path clears the edge, although the sphere is a unit wide.
    EXPECT_GT(Sphere(Vector(0, -20.98f, 1.1f)).Sweep(Ground(), Vector(0, 0, -1.2f)), 0.0f);
    EXPECT_EQ(Sphere(Vector(0, -20.995f, 1.1f)).Sweep(Ground(), Vector(0, 0, -1.2f)), -1.0f);
}

TEST(CollisionDetection, FallAlongAnUprightEdgeMeetsItsStart) {
    // An upright face whose nearest edge is the vertical one from (0, 0, 0) up to (0, 0, 10).
    Object face;
    const Vector corners[3] = {Vector(0, 0, 0), Vector(10, 0, 0), Vector(0, 0, 10)};
    MakeMesh(face, corners, 3);
    Sphere sphere(Vector(-0.5f, 0, 11));
    sphere.object.collider->edgeContact = 0;
    // The edge runs from c to a, so its start is the upper end.
    EXPECT_NEAR(sphere.Sweep(face, Vector(0, 0, -1)), 1.0f - std::sqrt(0.75f), 1e-5f);
    ExpectNear(sphere.object.collider->nearestContactPoint, Vector(0, 0, 10));
}

TEST(CollisionDetection, FirstOfEqualDistancesStands) {
    Sphere sphere(Vector(0, 0, 1.5f));
    Object first = Ground();
    Object second = Ground();
    second.SetVertex(Vector(-30, -20, 0), 0);
    const float distance = sphere.Sweep(first, Vector(0, 0, -1));
    sphere.object.collider->nearestContactPoint = Vector(7, 7, 7);
    sphere.object.CollideWithObject(second);
    EXPECT_EQ(sphere.object.collider->nearestContactPoint.x, 7.0f) << "the same distance changes nothing";
    sphere.object.collider->nearestDistance = std::nextafter(distance, 1.0f);
    sphere.object.CollideWithObject(second);
    EXPECT_EQ(sphere.object.collider->nearestContactPoint.x, 0.0f) << "the least nearer one does";
}

TEST(CollisionDetection, BoundOfTheObstacleMixesUnits) {
    Sphere sphere(Vector(0, 0, 1.5f));
    Object ground = Ground();
    ground.SetVertex(Vector(5, 0, 1.5f), ground.centreVertex);
    // 5.0 from centre to centre: travel 1.0, as it stands, and 1.0 for the sphere leave 3.0.
    ground.radius = 3.0f;
    EXPECT_EQ(sphere.Sweep(ground, Vector(0, 0, -1)), -1.0f) << "at equality there is no test";
    ground.radius = 3.001f;
    EXPECT_GT(sphere.Sweep(ground, Vector(0, 0, -1)), 0.0f);

    // The same world with a body ten times as large: travel still counts as 1.0, and the body as 10.0.
    sphere.object.collider->radii = Vector(10, 10, 10);
    sphere.object.SetVertex(Vector(0, 0, 15), 0);
    ground.SetVertex(Vector(50, 0, 15), ground.centreVertex);
    ground.radius = 39.0f;
    EXPECT_EQ(sphere.Sweep(ground, Vector(0, 0, -1)), -1.0f);
    ground.radius = 39.01f;
    EXPECT_GT(sphere.Sweep(ground, Vector(0, 0, -1)), 0.0f);
}

TEST(CollisionDetection, DegenerateFaces) {
    Sphere sphere(Vector(0, 0, 1.5f));
    Object object;
    const Vector twoEqual[3] = {Vector(-5, 0, 0), Vector(-5, 0, 0), Vector(5, 0, 0)};
    MakeMesh(object, twoEqual, 3);
    EXPECT_EQ(sphere.Sweep(object, Vector(0, 0, -1)), -1.0f);
    // A line of three corners has no plane, only edges.
    const Vector line[3] = {Vector(-5, 0.25f, 0), Vector(0, 0.25f, 0), Vector(5, 0.25f, 0)};
    MakeMesh(object, line, 3);
    EXPECT_NEAR(sphere.Sweep(object, Vector(0, 0, -1)), 1.5f - std::sqrt(1.0f - 0.0625f), 1e-5f);
    EXPECT_EQ(sphere.object.collider->edgeContact, 1);
    // No faces, and no vertices either.
    object.ResizeFaces(0);
    EXPECT_EQ(sphere.Sweep(object, Vector(0, 0, -1)), -1.0f);
    object.ResizeVertices(0);
    EXPECT_EQ(sphere.Sweep(object, Vector(0, 0, -1)), -1.0f);
}

/// Two bodies of the standard size; the distance that the first finds in its own ellipsoid space.
float SweepBodies(Vector from, Vector to, Vector worldSweep, Vector* contact = nullptr) {
    Object first;
    Object second;
    first.MakeCollider();
    second.MakeCollider();
    first.SetVertex(from, 0);
    second.SetVertex(to, 0);
    Collider& body = *first.collider;
    body.sweepOrigin = from / body.radii;
    body.sweepVelocity = worldSweep / body.radii;
    body.nearestDistance = -1.0f;
    first.CollideWithObject(second);
    if (contact) *contact = body.nearestContactPoint;
    return body.nearestDistance;
}

TEST(CollisionDetection, BodiesStopEachOtherTwoUnitsApart) {
    Vector contact;
    // 10 world units apart are 5.0, and the wall stands 1.0 before the axis.
    EXPECT_FLOAT_EQ(SweepBodies(Vector(0, 0, 5), Vector(10, 0, 5), Vector(9, 0, 0), &contact), 4.0f);
    ExpectNear(contact, Vector(4, 0, 1));
    EXPECT_EQ(SweepBodies(Vector(0, 0, 5), Vector(10, 0, 5), Vector(7.9f, 0, 0)), -1.0f) << "too short";
    EXPECT_EQ(SweepBodies(Vector(0, 0, 5), Vector(10, 2.1f, 5), Vector(20, 0, 0)), -1.0f) << "beside";
    EXPECT_GT(SweepBodies(Vector(0, 0, 14.9f), Vector(10, 0, 5), Vector(9, 0, 0)), 0.0f);
    EXPECT_EQ(SweepBodies(Vector(0, 0, 15.1f), Vector(10, 0, 5), Vector(9, 0, 0)), -1.0f) << "above";
    EXPECT_EQ(SweepBodies(Vector(0, 0, 20), Vector(0, 0, 5), Vector(0, 0, -15)), -1.0f) << "from above";
    EXPECT_EQ(SweepBodies(Vector(9, 0, 5), Vector(10, 0, 5), Vector(3, 0, 0)), -1.0f) << "from inside";
}

TEST(CollisionDetection, BodyIsNeverHitOnItsTriangles) {
    Sphere sphere(Vector(0, 0, 1.5f));
    Object ground = Ground();
    EXPECT_GT(sphere.Sweep(ground, Vector(0, 0, -1)), 0.0f);
    ground.MakeCollider();
    EXPECT_EQ(sphere.Sweep(ground, Vector(0, 0, -1)), -1.0f);
}

}  // namespace

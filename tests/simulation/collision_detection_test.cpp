#include <cmath>

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

/// At z = 0, facing up.
Object Ground() {
    Object object;
    MakeMesh(object, {{-20, -20, 0}, {20, -20, 0}, {0, 20, 0}});
    return object;
}

TEST(CollisionDetection, FirstOfEqualDistancesStands) {
    Sphere sphere(Vector(0, 0, 1.5f));
    Collider& found = *sphere.object.collider;
    const float distance = sphere.Sweep(Ground(), Vector(0, 0, -1));
    found.nearestContactPoint = Vector(7, 7, 7);
    sphere.object.CollideWithObject(Ground());
    EXPECT_EQ(found.nearestContactPoint.x, 7.0f) << "the same distance changes nothing";
    found.nearestDistance = std::nextafter(distance, 1.0f);
    sphere.object.CollideWithObject(Ground());
    EXPECT_EQ(found.nearestContactPoint.x, 0.0f) << "the least nearer one does";
}

TEST(CollisionDetection, BoundOfTheObstacleMixesUnits) {
    // 50 from centre to centre: the travel of 1.0, not scaled, and 10 for the body leave 39.
    Sphere sphere(Vector(0, 0, 1.5f));
    sphere.object.collider->radii = Vector(10, 10, 10);
    sphere.object.SetVertex(Vector(0, 0, 15), 0);
    Object ground = Ground();
    ground.SetVertex(Vector(50, 0, 15), ground.centreVertex);
    ground.radius = 39.0f;
    EXPECT_EQ(sphere.Sweep(ground, Vector(0, 0, -1)), -1.0f) << "at equality there is no test";
    ground.radius = 39.01f;
    EXPECT_GT(sphere.Sweep(ground, Vector(0, 0, -1)), 0.0f);
}

TEST(CollisionDetection, BodiesStopEachOtherTwoUnitsApart) {
    // 10 world units apart are 5.0, and the other one's wall stands 1.0 before its axis.
    const struct {
        const char* what;
        Vector from;
        Vector to;
        Vector sweep;
        bool meets;
    } cases[] = {{"head on", {0, 0, 5}, {10, 0, 5}, {9, 0, 0}, true},
                 {"too short", {0, 0, 5}, {10, 0, 5}, {7.9f, 0, 0}, false},
                 {"beside", {0, 0, 5}, {10, 2.1f, 5}, {20, 0, 0}, false},
                 {"just under the top", {0, 0, 14.9f}, {10, 0, 5}, {9, 0, 0}, true},
                 {"above", {0, 0, 15.1f}, {10, 0, 5}, {9, 0, 0}, false},
                 {"from above", {0, 0, 20}, {0, 0, 5}, {0, 0, -15}, false},
                 {"from inside", {9, 0, 5}, {10, 0, 5}, {3, 0, 0}, false}};
    for (const auto& [what, from, to, sweep, meets] : cases) {
        SCOPED_TRACE(what);
        Object first;
        Object second;
        first.MakeCollider();
        second.MakeCollider();
        second.SetVertex(to, 0);
        Collider& body = *first.collider;
        body.sweepOrigin = from / body.radii;
        body.sweepVelocity = sweep / body.radii;
        first.CollideWithObject(second);
        EXPECT_EQ(body.foundCollision != 0, meets);
        if (!meets) {
            continue;
        }
        EXPECT_FLOAT_EQ(body.nearestDistance, 4.0f);
        ExpectNear(body.nearestContactPoint, Vector(4, 0, from.z / 5));
    }
}

}  // namespace

#include "simulation/test_world.h"

namespace {

/// A body at a height where nothing is in its way; a height of 6 is a unit above the floor's contact.
struct BodyWorld {
    Scene scene;
    LoggedScene logged{scene};
    const std::int32_t body = AddBody(scene, Vector());

    Vector Move(Vector from, Vector displacement) {
        return scene.MoveWithCollision(body, from, displacement);
    }
    Collider& BodyCollider() { return *scene.objects[body].collider; }
};

const Vector aboveFloor(0, 0, 6);
const Vector high(0, 0, 50);
const Vector fall(0, 0, -3);

TEST(CollisionResponse, FreeMoveFallsShortByTheClearance) {
    BodyWorld world;
    Collider& collider = world.BodyCollider();
    collider.recursionDepth = 7;
    collider.safePosition = Vector(1, 2, 3);
    collider.airborne = 0;
    EXPECT_TRUE((world.Move(high, Vector(0.01f, 0, 0)) - high).IsZero())
        << "0.005 is too short to be a move";
    EXPECT_EQ(collider.airborne, 1);
    EXPECT_EQ(collider.recursionDepth, 7);
    // A level without a contact ends the count, but the safe position is taken only where it starts.
    ExpectNear(world.Move(high, Vector(2, 0, 0)), high + Vector(1.98f, 0, 0));
    EXPECT_EQ(collider.recursionDepth, 0);
    ExpectNear(collider.safePosition, Vector(1, 2, 3));
    ExpectNear(world.Move(high, Vector(0, 0, -5)), high + Vector(0, 0, -4.95f));
    ExpectNear(collider.safePosition, Vector(0, 0, 10));
}

TEST(CollisionResponse, FallEndsShortOfTheFloorForAllBodiesButNotOnPassableOnes) {
    BodyWorld world;
    const std::int32_t floor = AddFloor(world.scene);
    Object& body = world.scene.objects[world.body];
    EXPECT_NEAR(world.Move(aboveFloor, fall).z, 5.05f, 1e-3f);
    EXPECT_EQ(body.collider->airborne, 0);
    EXPECT_EQ(body.collider->recursionDepth, 0);
    body.physics = nullptr;
    body.attributes[collidableAttribute] = 0;
    EXPECT_NEAR(world.Move(aboveFloor, fall).z, 5.05f, 1e-3f) << "others pass it, but it collides";
    world.scene.objects[floor].attributes[collidableAttribute] = 0;
    EXPECT_NEAR(world.Move(aboveFloor, fall).z, 3.05f, 1e-3f);
}

TEST(CollisionResponse, BounceTakesTheNormalAsItComes) {
    const struct {
        float bounce;
        Vector normal;
        Vector before;
        Vector after;
    } cases[] = {{0.0f, {0, 0, 1}, {1, 0, -1}, {1, 0, 0}},
                 {1.0f, {0, 0, 1}, {1, 0, -1}, {1, 0, 1}},
                 {1.0f, {0, 0, 1}, {1, 0, 1}, {1, 0, -1}},   // leaving the plane already
                 {0.5f, {0, 0, 2}, {1, 0, -1}, {1, 0, 5}}};  // -1 + 2 * (2 * 1.5)
    for (const auto& [bounce, normal, before, after] : cases) {
        Physics physics;
        physics.velocity = before;
        physics.bounce = bounce;
        physics.Bounce(normal);
        ExpectNear(physics.velocity, after);
    }
}

TEST(CollisionResponse, FrictionActsOncePerMoveWithAContact) {
    BodyWorld world;
    AddFloor(world.scene);
    Physics& physics = *world.scene.objects[world.body].physics;
    physics.friction = 0.25f;
    physics.velocity = Vector(1, 0, 0);
    world.Move(high, fall);
    ExpectNear(physics.velocity, Vector(1, 0, 0));
    world.Move(aboveFloor, fall);
    ExpectNear(physics.velocity, Vector(0.75f, 0, 0));
}

TEST(CollisionResponse, SixteenthContactInARowSendsTheBodyToItsSafePosition) {
    BodyWorld world;
    AddFloor(world.scene);
    Collider& collider = world.BodyCollider();
    collider.recursionDepth = 14;
    world.Move(aboveFloor, fall);
    EXPECT_EQ(world.logged.Rescues(), 0) << "the 15th contact in a row is no more than one";

    collider.recursionDepth = 15;
    collider.safePosition = Vector(10, 20, 30);
    ExpectNear(world.Move(aboveFloor, fall), Vector(20, 40, 150.05f), 1e-4f);
    EXPECT_EQ(collider.recursionDepth, 0);
    EXPECT_EQ(collider.airborne, 0);
    EXPECT_EQ(world.logged.Rescues(), 1);
}

}  // namespace

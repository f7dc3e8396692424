#include "simulation/test_world.h"

namespace {

TEST(CollisionResponse, FreeMoveFallsShortByTheClearance) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 50));
    const auto moved = [&scene, body](Vector displacement) {
        return scene.MoveWithCollision(body, Vector(0, 0, 50), displacement) - Vector(0, 0, 50);
    };
    ExpectNear(moved(Vector(2, 0, 0)), Vector(1.98f, 0, 0));
    ExpectNear(moved(Vector(0, 0, -5)), Vector(0, 0, -4.95f));
    ExpectNear(moved(Vector(0.03f, 0, 0)), Vector(0.01f, 0, 0));
    EXPECT_TRUE(moved(Vector(0.01f, 0, 0)).IsZero()) << "0.005 is too short to be a move";
    EXPECT_EQ(scene.objects[body].collider->airborne, 1);
}

TEST(CollisionResponse, MoveTooShortLeavesAllButAirborneAlone) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 50));
    Collider& collider = *scene.objects[body].collider;
    collider.airborne = 0;
    collider.recursionDepth = 7;
    collider.safePosition = Vector(1, 2, 3);
    scene.MoveWithCollision(body, Vector(0, 0, 50), Vector(0.01f, 0, 0));
    EXPECT_EQ(collider.airborne, 1);
    EXPECT_EQ(collider.recursionDepth, 7);
    ExpectNear(collider.safePosition, Vector(1, 2, 3));
    // A level without a contact ends the count, but the safe position is taken only where it starts.
    scene.MoveWithCollision(body, Vector(0, 0, 50), Vector(1, 0, 0));
    EXPECT_EQ(collider.recursionDepth, 0);
    ExpectNear(collider.safePosition, Vector(1, 2, 3));
    scene.MoveWithCollision(body, Vector(0, 0, 50), Vector(1, 0, 0));
    ExpectNear(collider.safePosition, Vector(0, 0, 10));
}

TEST(CollisionResponse, FallEndsShortOfTheFloor) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 6));
    AddFloor(scene, 0.0f);
    const Vector reached = scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3));
    EXPECT_NEAR(reached.z, 5.05f, 1e-3f);
    EXPECT_EQ(scene.objects[body].collider->airborne, 0);
    EXPECT_EQ(scene.objects[body].collider->recursionDepth, 0);
}

TEST(CollisionResponse, BodySlidesAlongAWall) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 50));
    AddWall(scene, 3.0f);
    // Two units to the wall's contact, and the wish to go far beyond it.
    const Vector reached = scene.MoveWithCollision(body, Vector(0, 0, 50), Vector(4, 4, 0));
    EXPECT_NEAR(reached.x, 0.945f, 0.005f) << "stays in front of the wall, a little pushed off";
    EXPECT_NEAR(reached.y, 4.0f, 0.05f) << "and keeps the part along it";
}

TEST(CollisionResponse, BounceTakesTheNormalAsItComes) {
    Physics physics;
    physics.velocity = Vector(1, 0, -1);
    physics.bounce = 0.0f;
    physics.Bounce(Vector(0, 0, 1));
    ExpectNear(physics.velocity, Vector(1, 0, 0));

    physics.velocity = Vector(1, 0, -1);
    physics.bounce = 1.0f;
    physics.Bounce(Vector(0, 0, 1));
    ExpectNear(physics.velocity, Vector(1, 0, 1));
    physics.Bounce(Vector(0, 0, 1));
    ExpectNear(physics.velocity, Vector(1, 0, -1));

    physics.bounce = 0.5f;
    physics.Bounce(Vector(0, 0, 2));  // -1 + 2 * (2 * 1.5)
    ExpectNear(physics.velocity, Vector(1, 0, 5));
}

TEST(CollisionResponse, FrictionActsOncePerMoveWithAContact) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 6));
    AddFloor(scene, 0.0f);
    Vector& velocity = scene.objects[body].physics->velocity;
    velocity = Vector(1, 0, 0);
    scene.MoveWithCollision(body, Vector(0, 0, 60), Vector(0, 0, -3));
    ExpectNear(velocity, Vector(1, 0, 0));
    scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3));
    ExpectNear(velocity, Vector(0.5f, 0, 0));
    scene.objects[body].physics->friction = 1.0f;
    velocity = Vector(1, 2, -3);
    scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3));
    EXPECT_TRUE(velocity.IsZero());
}

TEST(CollisionResponse, NoColliderLetsOthersPassAndStillCollides) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 6));
    const std::int32_t floor = AddFloor(scene, 0.0f);
    scene.objects[body].attributes[collidableAttribute] = 0;
    EXPECT_NEAR(scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3)).z, 5.05f, 1e-3f);
    scene.objects[floor].attributes[collidableAttribute] = 0;
    EXPECT_NEAR(scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3)).z, 3.05f, 1e-3f);
}

TEST(CollisionResponse, ColliderWithoutPhysicsStopsToo) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 6));
    AddFloor(scene, 0.0f);
    scene.objects[body].physics = nullptr;
    EXPECT_NEAR(scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3)).z, 5.05f, 1e-3f);
}

TEST(CollisionResponse, SixteenthContactInARowSendsTheBodyToItsSafePosition) {
    Scene scene;
    LoggedScene logged(scene);
    const std::int32_t body = AddBody(scene, Vector(0, 0, 6));
    AddFloor(scene, 0.0f);
    Collider& collider = *scene.objects[body].collider;
    collider.recursionDepth = 14;
    scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3));
    EXPECT_EQ(collider.recursionDepth, 0);
    EXPECT_EQ(logged.CountLines(limitLine), 0) << "the 15th contact in a row is no more than one";

    collider.recursionDepth = 15;
    collider.safePosition = Vector(10, 20, 30);
    const Vector reached = scene.MoveWithCollision(body, Vector(0, 0, 6), Vector(0, 0, -3));
    ExpectNear(reached, Vector(20, 40, 150.05f));
    EXPECT_EQ(collider.recursionDepth, 0);
    EXPECT_EQ(collider.airborne, 0);
    EXPECT_EQ(logged.CountLines(limitLine), 1);
}

TEST(CollisionResponse, BodyPushedIntoANarrowGapEndsAtItsSafePosition) {
    // Two walls that lean together along y = 0: a body pressed between them has no way out along either.
    Scene scene;
    LoggedScene logged(scene);
    const std::int32_t body = AddBody(scene, Vector(-20, 0, 0));
    for (const float y : {-20.0f, 20.0f}) {
        const Vector low(-100, y, -100);
        const Vector high(-100, y, 100);
        const Vector foot(0, 0, -100);
        const Vector top(0, 0, 100);
        if (y < 0.0f) {
            AddMesh(scene, {foot, low, high, foot, high, top});
        } else {
            AddMesh(scene, {foot, high, low, foot, top, high});
        }
    }
    Vector position(-20, 0, 0);
    int moves = 0;
    while (logged.CountLines(limitLine) == 0 && moves++ < 200) {
        position = scene.MoveWithCollision(body, position, Vector(1, 0.1f, -0.2f));
        ASSERT_LT(position.x, 0.0f);
    }
    EXPECT_EQ(logged.CountLines(limitLine), 1);
    const Collider& collider = *scene.objects[body].collider;
    EXPECT_EQ(collider.recursionDepth, 0);
    ExpectNear(position / collider.radii, collider.safePosition + Vector(0, 0, 0.01f), 1e-6f);
}

TEST(CollisionResponse, BodiesLeaningOnEachOtherCountContactsOn) {
    // A contact with a cylinder lies on the path of the centre: no slide comes of it, so the next level is
    // too short to be one, and the count stays.
    Scene scene;
    LoggedScene logged(scene);
    const std::int32_t body = AddBody(scene, Vector(0, 0, 0));
    AddBody(scene, Vector(2.1f, 0, 0));
    Vector position;
    for (int move = 1; move <= 15; move++) {
        position = scene.MoveWithCollision(body, position, Vector(1, 0, 0));
        EXPECT_EQ(scene.objects[body].collider->recursionDepth, move);
        EXPECT_NEAR(position.x, 0.08f, 0.03f);
    }
    EXPECT_EQ(logged.CountLines(limitLine), 0);
    const float z = position.z;
    position = scene.MoveWithCollision(body, position, Vector(1, 0, 0));
    EXPECT_EQ(scene.objects[body].collider->recursionDepth, 0);
    EXPECT_EQ(logged.CountLines(limitLine), 1);
    EXPECT_NEAR(position.z, z + 0.05f, 1e-4f);
}

}  // namespace

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "end_to_end/demo_world.h"

// Walks through the demo worlds without a window: thousands of frames of scripted and of random input. No
// OpenGL context is current, so what loading sends to OpenGL goes nowhere.

namespace {

constexpr float terraceHeight = 8.0f;
constexpr float lowestGround = -0.7f;  ///< the hollow in the grass

float Distance(Vector a, Vector b) {
    return (a - b).Length();
}

/// Tries the four quarters, three seconds in all.
bool GetsAway(DemoWorld& world) {
    const Vector before = world.Place(0);
    for (int quarter = 0; quarter < 4; quarter++) {
        world.control.TurnPlayer(world.scene, turnRight, std::numbers::pi_v<float> / 2.0f, 0);
        for (int i = 0; i < 60; i++) {
            world.Step(0, moveForward);
            if (Distance(world.Place(0), before) > 1.0f) return true;
        }
    }
    return false;
}

}  // namespace

TEST(DemoWalk, AStandingHeroStandsStill) {
    DemoWorld world("single", 1);
    world.Rest(0, 60);
    const Vector before = world.Place(0);
    world.Rest(0, 600);
    EXPECT_LT(Distance(world.Place(0), before), 0.01f);
    EXPECT_NEAR(world.FootHeight(0), 0.0f, 0.05f);
}

TEST(DemoWalk, TheHeroReachesEveryPartOfTheCourtyard) {
    DemoWorld world("single", 1);
    world.Rest(0, 10);
    const auto walkTo = [&world](float x, float y, float height) {
        if (!world.Walk(0, x, y)) return;
        EXPECT_NEAR(world.FootHeight(0), height, 0.25f) << "at " << x << ", " << y;
    };
    walkTo(13.0f, -12.0f, 0.0f);  // under the arch
    walkTo(13.0f, 10.0f, 0.0f);
    walkTo(-3.0f, 30.0f, 0.0f);
    walkTo(20.0f, 29.0f, terraceHeight);  // up the stairs
    walkTo(36.0f, 20.0f, terraceHeight);
    walkTo(37.0f, -14.0f, 0.0f);  // down the ramp
    walkTo(37.0f, 20.0f, terraceHeight);
    walkTo(20.0f, 29.0f, terraceHeight);
    walkTo(-3.0f, 30.0f, 0.0f);  // down the stairs
    walkTo(-16.0f, 27.0f, 0.0f);
    walkTo(-27.0f, 27.0f, 0.0f);  // through the curtain into the chamber
    walkTo(-27.0f, 33.0f, 0.0f);
    walkTo(-27.0f, 27.0f, 0.0f);
    walkTo(-18.0f, 27.0f, 0.0f);
    walkTo(-20.0f, 7.0f, 2.1f);  // over a mound
    walkTo(-38.0f, 7.0f, 0.5f);  // the floor of the loggia
    walkTo(-38.0f, -20.0f, 0.5f);
    walkTo(-22.0f, -24.0f, 2.5f);
    walkTo(-22.0f, -7.0f, -0.6f);  // through the hollow
    walkTo(13.0f, -25.0f, 0.0f);
}

TEST(DemoWalk, TheGateIsClosed) {
    DemoWorld world("single", 1);
    world.Rest(0, 10);
    for (int i = 0; i < 400; i++) {
        world.Face(0, 13.0f, -60.0f);
        world.Step(0, moveForward);
    }
    EXPECT_LT(world.Place(0).y, -34.0f);
    EXPECT_GT(world.Place(0).y, -37.0f);
}

TEST(DemoWalk, RandomInputNeverLeavesTheCourtyardAndNeverSticks) {
    DemoWorld world("single", 1);
    std::mt19937 random(1);
    Vector lastTurn = world.Place(0);
    int blocked = 0;
    for (int round = 0; round < 600; round++) {
        const int move = static_cast<int>(random() % 8);
        const float turn = (static_cast<float>(random() % 200) - 100.0f) / 1000.0f;
        for (int i = 0; i < 75; i++) {
            if (i < 20) world.control.TurnPlayer(world.scene, turnRight, turn, 0);
            world.Step(0, move < 6 ? moveForward : move == 6 ? moveBackward : moveSideways);
            const Vector place = world.Place(0);
            ASSERT_TRUE(std::isfinite(place.x) && std::isfinite(place.y) && std::isfinite(place.z));
            ASSERT_GT(place.z, lowestGround + standing - 0.3f) << "at " << place.x << ", " << place.y;
            ASSERT_LT(std::fabs(place.x), 42.0f);
            ASSERT_LT(std::fabs(place.y + 0.5f), 36.5f);
        }
        // Whoever has run against something gets away from it by turning.
        if (Distance(world.Place(0), lastTurn) < 0.5f) {
            blocked++;
            EXPECT_TRUE(GetsAway(world)) << "at " << lastTurn.x << ", " << lastTurn.y << ", " << lastTurn.z;
        }
        lastTurn = world.Place(0);
    }
    EXPECT_GT(blocked, 0) << "the walk never met an obstacle";
}

TEST(DemoWalk, CratesAndBallsFallAndComeToRestOnTheGround) {
    DemoWorld world("single", 1);
    std::vector<int> bodies;
    for (int i = 0; i < world.scene.objectCount; i++) {
        if (world.scene.objects[i].physics && i != world.scene.players[0].playerObject) bodies.push_back(i);
    }
    EXPECT_EQ(bodies.size(), 9u);
    const auto places = [&] {
        std::vector<Vector> result;
        for (const int body : bodies) {
            const Object& object = world.scene.objects[body];
            result.push_back(DemoWorld::Marker(object, object.centreVertex));
        }
        return result;
    };
    const std::vector<Vector> start = places();
    world.Rest(0, 2500);
    const std::vector<Vector> landed = places();
    world.Rest(0, 500);
    const std::vector<Vector> rested = places();
    for (std::size_t i = 0; i < bodies.size(); i++) {
        const std::string& name = world.scene.objects[bodies[i]].name;
        EXPECT_LT(landed[i].z, start[i].z - 3.0f) << name << " hasn't fallen";
        EXPECT_LT(Distance(landed[i], rested[i]), 0.1f) << name << " hasn't come to rest";
        EXPECT_GT(rested[i].z, lowestGround + standing - 0.1f) << name << " has sunk";
    }
}

TEST(DemoWalk, LimbsSwingWhileTheHeroWalksAndHangStillWhenItStops) {
    DemoWorld world("single", 1);
    world.Rest(0, 30);
    Object& leg = world.scene.objects[world.scene.FindObject("LeftLeg0")];
    // How far forward the foot is, in the hero's own directions: vertex 0 is the lowest of the leg.
    const auto forward = [&] {
        const Object& body = world.Body(0);
        const Vector centre = DemoWorld::Marker(body, body.centreVertex);
        const Vector backward = DemoWorld::Marker(body, body.yAxisVertex) - centre;
        return -(DemoWorld::Marker(leg, 0) - centre).Dot(backward);
    };
    const float atRest = forward();
    float farthest = 0.0f;
    for (int i = 0; i < 170; i++) {
        if (i > 100) world.control.TurnPlayer(world.scene, turnRight, 0.03f, 0);
        world.Step(0, moveForward);
        farthest = std::max(farthest, std::fabs(forward() - atRest));
    }
    EXPECT_GT(farthest, 1.0f);
    world.control.TurnPlayer(world.scene, turnRight, 0.1f, 0);
    world.Rest(0, 2);
    EXPECT_NEAR(forward(), atRest, 0.01f);
}

TEST(DemoWalk, TwoHeroesStopEachOtherAndPartAgain) {
    DemoWorld world("split", 4);
    world.Rest(0, 10);
    ASSERT_GT(Distance(world.Place(0), world.Place(1)), 10.0f);
    for (int i = 0; i < 500; i++) {
        world.Face(0, world.Place(1).x, world.Place(1).y);
        world.Step(0, moveForward);
    }
    const Vector apart = world.Place(0) - world.Place(1);
    EXPECT_GT(std::hypot(apart.x, apart.y), 1.8f);
    EXPECT_LT(std::hypot(apart.x, apart.y), 2.5f);
    world.Walk(0, 13.0f, -20.0f);
}

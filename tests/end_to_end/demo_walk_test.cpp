#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "end_to_end/demo_world.h"

// Walks through the demo worlds without a window. No OpenGL context is current, so what loading sends to
// OpenGL goes nowhere.

namespace {

constexpr float terraceHeight = 8.0f;
constexpr float lowestGround = -0.7f;  ///< the hollow in the grass

}  // namespace

TEST(DemoWalk, TheHeroReachesEveryPartOfTheCourtyard) {
    DemoWorld world("single", 1);
    world.Rest(0, 10);
    const auto walkTo = [&world](float x, float y, float height) {
        if (world.Walk(0, x, y)) {
            EXPECT_NEAR(world.FootHeight(0), height, 0.25f) << "at " << x << ", " << y;
        }
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
    // The gate is closed.
    for (int i = 0; i < 300; i++) {
        world.Face(0, 13.0f, -60.0f);
        world.Step(0, moveForward);
    }
    EXPECT_LT(world.Place(0).y, -34.0f);
    EXPECT_GT(world.Place(0).y, -37.0f);
    const Vector stopped = world.Place(0);
    world.Rest(0, 100);
    EXPECT_LT(world.Place(0).Distance(stopped), 0.1f) << "a standing hero stands still";
}

TEST(DemoWalk, TwoHeroesStopEachOtherAndPartAgain) {
    DemoWorld world("split", 4);
    world.Rest(0, 10);
    ASSERT_GT(world.Place(0).Distance(world.Place(1)), 10.0f);
    for (int i = 0; i < 500; i++) {
        world.Face(0, world.Place(1).x, world.Place(1).y);
        world.Step(0, moveForward);
    }
    const Vector apart = world.Place(0) - world.Place(1);
    EXPECT_GT(std::hypot(apart.x, apart.y), 1.8f);
    EXPECT_LT(std::hypot(apart.x, apart.y), 2.5f);
    world.Walk(0, 13.0f, -20.0f);
}

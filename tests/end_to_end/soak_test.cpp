#include <gtest/gtest.h>
#include <malloc.h>

#include <cmath>
#include <random>
#include <string>

#include "scene/scene.h"
#include "services/log.h"
#include "simulation/player_control.h"
#include "support/temporary_folder.h"

// A long play: the demo world for many frames, both of its players driven at random.

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true;  // slower, and its allocator can't be asked
#else
constexpr bool sanitized = false;
#endif
constexpr int frameCount = sanitized ? 2000 : 20000;
constexpr int settled = frameCount / 2;

/// The courtyard for two players, loaded without a window.
struct DemoWorld {
    Scene scene;
    PlayerControl control;

    explicit DemoWorld(Log* log) {
        const std::filesystem::path before = std::filesystem::current_path();
        std::filesystem::current_path(DEMO_FOLDER "/split");
        scene.AddPlayers(2);
        EXPECT_TRUE(scene.LoadMesh("data\\courtyard.bin"));
        std::filesystem::current_path(before);
        scene.SetLog(log);
    }
};

/// Within the walls of the courtyard, and not below its deepest hollow.
void ExpectBodiesInTheWorld(const DemoWorld& world, int frame) {
    for (std::int32_t i = 0; i < world.scene.objectCount; i++) {
        const Object& object = world.scene.objects[i];
        Vector centre;
        object.GetVertex(centre, object.centreVertex);
        const bool inside =
            std::fabs(centre.x) < 42.0f && std::fabs(centre.y + 0.5f) < 36.5f && centre.z > -2.0f;
        ASSERT_TRUE(object.collider == nullptr || inside) << object.name << " in frame " << frame;
    }
}

/// Each player keeps an action for a while, turns and looks about.
void Drive(DemoWorld& world, std::mt19937& random, std::int32_t player, int& action) {
    if (random() % 40 == 0) {
        action = static_cast<int>(random() % 5) - 1;
    }
    for (const int move : {moveForward, moveBackward, moveSideways}) {
        if (move == action) {
            world.control.MovePlayer(world.scene, move, 1.0f, player);
        } else {
            world.control.StopPlayerAction(world.scene, player, move);
        }
    }
    const auto angle = static_cast<float>(random() % 100) * 0.001f - 0.05f;
    world.control.TurnPlayer(world.scene, turnRight, angle, player);
    world.control.TurnPlayer(world.scene, lookUp, angle, player);
}

}  // namespace

TEST(Soak, LongPlayNeitherDriftsNorLeaks) {
    TemporaryFolder folder;
    Log log;
    DemoWorld world(&log);
    std::mt19937 random(11);
    int actions[2] = {-1, -1};
    std::size_t memory = 0;
    for (int frame = 0; frame < frameCount && !testing::Test::HasFailure(); frame++) {
        for (std::int32_t player = 0; player < 2; player++) {
            Drive(world, random, player, actions[player]);
        }
        world.scene.StepWorld();
        if (frame % 100 == 0) {
            ExpectBodiesInTheWorld(world, frame);
        }
        if (frame == settled) {
            memory = mallinfo2().uordblks;
        }
    }
    if (!sanitized) {
        // What collision keeps of a mesh that is met late is little. A leak would add more than this a
        // frame.
        EXPECT_LT(mallinfo2().uordblks, memory + 4 * (frameCount - settled));
    }
    const std::string told = ReadWholeFile(folder.path / "defaultlog.txt");
    // Bodies that press on one another run into the limit of contacts now and then; nothing else is
    // reported.
    const auto count = [&told](const std::string& text) {
        int found = 0;
        for (std::size_t at = 0; (at = told.find(text, at)) != std::string::npos; at++) {
            found++;
        }
        return found;
    };
    EXPECT_EQ(count("\n"), 2 + count("Critical collision recursion")) << told.substr(0, 2000);
    EXPECT_LT(count("\n"), frameCount);
}

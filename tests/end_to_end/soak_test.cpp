#include <gtest/gtest.h>
#include <malloc.h>

#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "end_to_end/demo_world.h"
#include "services/log.h"
#include "support/temporary_folder.h"

// Hours of play: the demo world for many frames, all of its players driven at random.

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true;  // slower, and its allocator can't be asked
#else
constexpr bool sanitized = false;
#endif
constexpr int frameCount = sanitized ? 10000 : 100000;
constexpr int settled = 1000;
constexpr float lowestBody = -2.0f;  ///< below the deepest hollow of the ground

/// What is left after a run: the bytes of all vertices and normals.
std::string WorldBytes(const Scene& scene) {
    std::string bytes;
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        const std::size_t size = sizeof(float) * static_cast<std::size_t>(object.vertexValueCount);
        bytes.append(reinterpret_cast<const char*>(object.vertices.get()), size);
        bytes.append(reinterpret_cast<const char*>(object.normals.get()), size);
    }
    return bytes;
}

void ExpectBodiesInTheWorld(const DemoWorld& world, int frame) {
    for (std::int32_t i = 0; i < world.scene.objectCount; i++) {
        const Object& object = world.scene.objects[i];
        if (object.collider == nullptr) continue;
        const Vector centre = DemoWorld::Marker(object, object.centreVertex);
        ASSERT_TRUE(std::isfinite(centre.x) && std::isfinite(centre.y)) << object.name << " in " << frame;
        ASSERT_GT(centre.z, lowestBody) << object.name << " in frame " << frame;
    }
}

/// Each player keeps an action for a while, turns and looks about.
void Drive(DemoWorld& world, std::mt19937& random, std::int32_t player, int& action) {
    if (random() % 40 == 0) action = static_cast<int>(random() % 5) - 1;
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

struct SoakResult {
    std::string bytes;
    std::string log;
};

SoakResult Soak() {
    TemporaryFolder folder;
    Log log;
    DemoWorld world("split", 2);
    world.scene.SetLog(&log);
    std::mt19937 random(11);
    int actions[2] = {-1, -1};
    std::size_t memory = 0;
    for (int frame = 0; frame < frameCount && !testing::Test::HasFailure(); frame++) {
        for (std::int32_t player = 0; player < 2; player++) {
            Drive(world, random, player, actions[player]);
        }
        world.scene.StepWorld();
        if (frame % 100 == 0) ExpectBodiesInTheWorld(world, frame);
        if (frame == settled) memory = mallinfo2().uordblks;
    }
    if (!sanitized) {
        EXPECT_LE(mallinfo2().uordblks, memory);
    }
    return {WorldBytes(world.scene), ReadWholeFile(folder.path / "defaultlog.txt")};
}

}  // namespace

TEST(Soak, HoursOfPlayNeitherDriftNorLeakAndRepeatBitForBit) {
    const SoakResult first = Soak();
    // Bodies that press on one another run into the limit of contacts now and then; nothing else is told.
    std::size_t lines = 0;
    for (std::size_t at = 0; (at = first.log.find('\n', at)) != std::string::npos; at++) {
        lines++;
    }
    std::size_t limits = 0;
    for (std::size_t at = 0; (at = first.log.find("Critical collision recursion", at)) != std::string::npos;
         at++) {
        limits++;
    }
    EXPECT_EQ(lines, 2 + limits) << first.log.substr(0, 2000);
    EXPECT_LT(limits, static_cast<std::size_t>(frameCount));
    const SoakResult second = Soak();
    EXPECT_TRUE(first.bytes == second.bytes);
}

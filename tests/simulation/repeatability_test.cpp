#include <cstring>
#include <span>

#include "simulation/player_control.h"
#include "simulation/random_numbers.h"
#include "simulation/test_world.h"

namespace {

struct Outcome {
    std::uint32_t hash = 0x811C9DC5u;  ///< FNV-1a over the bytes of all vertices and normals
    long contacts = 0;                 ///< frames of a body with a contact
    float farthest = 0.0f;             ///< way of the first body

    void Add(const std::unique_ptr<float[]>& values, std::int32_t count) {
        std::uint8_t bytes[sizeof(float)];
        for (std::int32_t i = 0; i < count; i++) {
            std::memcpy(bytes, &values[i], sizeof bytes);
            for (const std::uint8_t byte : bytes) {
                hash = (hash ^ byte) * 0x01000193u;
            }
        }
    }
};

/// Ten bodies on hills, three of them players with a device each and a camera that swings as they walk.
Outcome Play(int frames) {
    RandomNumbers random(7);
    Scene scene;
    PlayerControl control;
    scene.AddPlayers(3);
    scene.AddGroups(3);
    for (std::int32_t i = 0; i < 10; i++) {
        const Vector place = random.RandomVector(40.0f) * Vector(1, 1, 0) + Vector(0, 0, 30);
        AddBody(scene, place);
        scene.objects[i].physics->bounce = random.Random(0, 1);
        scene.objects[i].physics->friction = random.Random(0, 0.3f);
    }
    for (std::int32_t i = 0; i < 3; i++) {
        const std::int32_t camera = AddMarkers(scene, CentreOf(scene.objects[i]) + Vector(0, 0, 4));
        scene.players[i].playerObject = scene.objects[i].groupParent = scene.players[i].controller = i;
        scene.players[i].cameraObject = camera;
        scene.players[i].maxSpeed = 0.4f;
        scene.groups[i].Add(camera);
        for (const std::int32_t id : {i, camera}) {
            AddKeyTracks(scene.objects[id], 3, 5, Vector(0, 0.02f, 0), 0.03f, Vector(1, 0, 0));
        }
    }
    float heights[11][11];
    for (float& height : std::span(&heights[0][0], 121)) {
        height = random.Random(0, 8);
    }
    for (int x = 0; x < 10; x++) {
        for (int y = 0; y < 10; y++) {
            const auto corner = [&heights](int i, int j) {
                return Vector(static_cast<float>(20 * i - 100), static_cast<float>(20 * j - 100),
                              heights[i][j]);
            };
            const Vector a = corner(x, y);
            const Vector c = corner(x + 1, y + 1);
            scene.AddObjects(1);
            MakeMesh(scene.objects[scene.objectCount - 1],
                     {a, corner(x + 1, y), c, a, c, corner(x, y + 1)});
        }
    }

    Outcome run;
    std::uint8_t keys[256] = {};
    JOYINFOEX joystick;
    Vector turn;
    const Vector start = CentreOf(scene.objects[0]);
    for (int frame = 0; frame < frames; frame++) {
        if (frame % 20 == 0) {
            for (const std::uint8_t key : scene.players[0].keys) {
                keys[key] = random.Chance(3) ? 1 : 0;
            }
            joystick.dwButtons = random.generator() % 4;
            turn = random.RandomVector(0.1f);
        }
        for (std::int32_t player = 0; player < 3; player++) {
            control.ControlByKeyboard(scene, player, keys);
            control.ControlByMouse(scene, player, turn, keys + 0x25);
            control.ControlByJoystick(scene, player, turn, joystick);
        }
        scene.StepWorld();
        for (std::int32_t i = 0; i < 10; i++) {
            run.contacts += 1 - scene.objects[i].collider->airborne;
        }
        run.farthest = std::max(run.farthest, start.Distance(CentreOf(scene.objects[0])));
    }
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        run.Add(scene.objects[i].vertices, scene.objects[i].vertexValueCount);
        run.Add(scene.objects[i].normals, scene.objects[i].vertexValueCount);
    }
    return run;
}

TEST(Repeatability, ThousandsOfFramesEndInTheSameBytes) {
    const Outcome run = Play(3000);
    EXPECT_GT(run.contacts, 3000) << "bodies stand on something most of the time";
    EXPECT_GT(run.farthest, 20.0f) << "and the players get about";
    EXPECT_TRUE(std::isfinite(run.farthest));
    // The same in every build and with every compiler.
    EXPECT_EQ(run.hash, 3021392839u);
}

}  // namespace

#include <cstring>

#include "simulation/random_worlds.h"

namespace {

/// FNV-1a over the bytes of all vertices and normals.
std::uint64_t HashOfVertices(const Scene& scene) {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        for (const float* array : {object.vertices.get(), object.normals.get()}) {
            for (std::int32_t value = 0; value < object.vertexValueCount; value++) {
                std::uint32_t bits;
                std::memcpy(&bits, &array[value], sizeof bits);
                for (int byte = 0; byte < 4; byte++) {
                    hash = (hash ^ (bits >> (8 * byte) & 0xFF)) * 0x100000001B3u;
                }
            }
        }
    }
    return hash;
}

struct Outcome {
    std::uint64_t hash = 0;
    long contacts = 0;      ///< frames of a body with a contact
    float farthest = 0.0f;  ///< way of the first player's body
    bool allFinite = true;
};

/// Four players, driven by all three devices from a script, and six more bodies, on hills with boxes.
Outcome Play(int frames) {
    RandomWorld world(7);
    Scene& scene = world.scene;
    world.AddTerrain(10, 20.0f, 8.0f);
    for (int i = 0; i < 12; i++) {
        const Vector half = world.RandomVector(3.0f) + Vector(4, 4, 6);
        Vector centre = world.RandomVector(50.0f);
        centre.z = 5.0f;
        world.AddBox(centre, half);
    }
    constexpr std::int32_t playerCount = 4;
    scene.AddPlayers(playerCount);
    scene.AddGroups(playerCount);
    for (std::int32_t i = 0; i < playerCount; i++) {
        const Vector place(static_cast<float>(i) * 6.0f, 0.0f, 20.0f);
        const std::int32_t body = AddBody(scene, place);
        const std::int32_t camera = AddMarkers(scene, place + Vector(0, 0, 4));
        Player& player = scene.players[i];
        player.playerObject = body;
        player.cameraObject = camera;
        player.controller = i % 3;
        player.maxSpeed = 0.4f;
        scene.objects[body].groupParent = i;
        scene.groups[i].Add(camera);
        if (i % 2 == 0) scene.groups[i].Add(body);
        AddKeyTracks(scene.objects[body], 3, 5, Vector(0, 0, 0.01f), 0.02f);
        AddKeyTracks(scene.objects[camera], 3, 7, Vector(0, 0.02f, 0), 0.03f, Vector(1, 0, 0));
    }
    for (int i = 0; i < 6; i++) {
        Vector place = world.RandomVector(40.0f);
        place.z = world.Random(20, 40);
        const std::int32_t body = AddBody(scene, place);
        scene.objects[body].physics->velocity = world.RandomVector(0.5f);
        scene.objects[body].physics->bounce = world.Random(0, 1);
        scene.objects[body].physics->friction = world.Random(0, 0.3f);
    }

    Outcome run;
    std::uint8_t keys[256] = {};
    std::uint8_t buttons[3] = {};
    JOYINFOEX joystick;
    Vector mouse;
    Vector stick;
    const Vector start = CentreOf(scene.objects[scene.players[0].playerObject]);
    for (int frame = 0; frame < frames; frame++) {
        if (frame % 20 == 0) {
            for (const std::uint8_t key : scene.players[0].keys)
                keys[key] = world.Chance(3);
            for (std::uint8_t& button : buttons)
                button = world.Chance(2);
            joystick.dwButtons = world.Pick(4);
            mouse = world.RandomVector(0.1f);
            stick = world.Chance(2) ? Vector() : world.RandomVector(0.1f);
        }
        for (std::int32_t player = 0; player < playerCount; player++) {
            world.control.ControlByKeyboard(scene, player, keys);
            world.control.ControlByMouse(scene, player, mouse, buttons);
            world.control.ControlByJoystick(scene, player, stick, joystick);
        }
        scene.StepWorld();
        for (std::int32_t i = 0; i < scene.objectCount; i++) {
            const Object& object = scene.objects[i];
            if (!object.collider) continue;
            run.contacts += 1 - object.collider->airborne;
            run.allFinite = run.allFinite && std::isfinite(CentreOf(object).Length());
        }
        run.farthest =
            std::max(run.farthest, start.Distance(CentreOf(scene.objects[scene.players[0].playerObject])));
    }
    run.hash = HashOfVertices(scene);
    return run;
}

TEST(Repeatability, ThousandsOfFramesEndInTheSameBytes) {
    const Outcome run = Play(3000);
    EXPECT_TRUE(run.allFinite);
    EXPECT_GT(run.contacts, 3000) << "bodies stand on something most of the time";
    EXPECT_GT(run.farthest, 20.0f) << "and the players get about";
    // The same in every build and with every compiler.
    EXPECT_EQ(run.hash, 0x3D2BC6E0CA7BB50Eu);
    EXPECT_EQ(Play(300).hash, Play(300).hash);
}

}  // namespace

#include <limits>

#include "simulation/random_worlds.h"

// Worlds that nobody would build, for the sanitizers to watch. Indices of faces and markers are right, as
// loading makes sure; all else may be anything.

namespace {

struct WildWorld : RandomWorld {
    using RandomWorld::RandomWorld;

    float Wild() {
        constexpr float odd[] = {0.0f,   -0.0f, 1e-45f,   1e-30f,    -1e-6f, 1e10f,
                                 -1e20f, 3e38f, INFINITY, -INFINITY, NAN};
        return Chance(6) ? odd[Pick(std::size(odd))] : Random(-10, 10);
    }
    Vector WildVector() {
        const float x = Wild();
        const float y = Wild();
        return Vector(x, y, Wild());
    }
    /// Mostly an index below the count, now and then none.
    std::int32_t Index(std::int32_t count) {
        if (Chance(8)) return static_cast<std::int32_t>(generator());
        if (count == 0 || Chance(8)) return -1;
        return static_cast<std::int32_t>(Pick(static_cast<std::uint32_t>(count)));
    }
    void FillObject(Object& object, bool tame) {
        const std::int32_t vertices = Chance(8) ? 0 : 1 + static_cast<std::int32_t>(Pick(12));
        const std::int32_t faces = vertices == 0 ? 0 : static_cast<std::int32_t>(Pick(20));
        object.ResizeVertices(vertices);
        object.ResizeFaces(faces);
        const auto marker = [this, vertices] {
            return vertices == 0 ? 0
                                 : static_cast<std::int32_t>(Pick(static_cast<std::uint32_t>(vertices)));
        };
        for (std::int32_t i = 0; i < vertices; i++) {
            object.SetVertex(tame ? RandomVector(8) : WildVector(), i);
        }
        for (std::int32_t i = 0; i < 3 * faces; i++)
            object.faces[i] = marker();
        if (Chance(10)) object.faceValueCount -= std::min(faces, 1);  // leftover indices
        object.centreVertex = marker();
        object.xAxisVertex = marker();
        object.yAxisVertex = marker();
        object.zAxisVertex = marker();
        object.spareVertex = marker();
        object.ComputeRadius();
        if (Chance(2)) object.MakeCollider();
        if (object.collider && Chance(4)) object.collider->radii = WildVector();
        if (Chance(2)) object.MakePhysics();
        if (object.physics && !tame) {
            object.physics->velocity = WildVector();
            object.physics->bounce = Wild();
            object.physics->friction = Wild();
        }
        if (Chance(3)) {
            object.ResizeKeyTracks(static_cast<std::int32_t>(Pick(4)));
            for (std::int32_t t = 0; t < object.keyTrackCount; t++) {
                KeyTrack& track = object.keyTracks[t];
                track.Resize(static_cast<std::int32_t>(Pick(4)));
                for (std::int32_t key = 0; key < track.keyCount; key++) {
                    track.keyTranslations[key] = WildVector();
                    track.keyAxes[key] = WildVector();
                    track.keyAngles[key] = Wild();
                }
            }
        }
        if (Chance(2)) object.groupParent = Index(scene.groupCount);
        object.activeKeyTrack = Index(object.keyTrackCount);
        if (Chance(5)) object.attributes[collidableAttribute] = 0;
        if (Chance(5)) object.attributes[spawnStateAttribute] = justSpawned;
        if (Chance(3)) object.transform.Translate(Wild(), Wild(), Wild());
        if (Chance(3)) object.transform.Rotate(Wild(), Wild(), Wild(), Wild());
    }
};

TEST(RandomWorlds, NothingCrashesOrHangs) {
    for (std::uint32_t seed = 1; seed <= 3000; seed++) {
        WildWorld world(seed);
        Scene& scene = world.scene;
        const bool tame = world.Chance(2);
        scene.AddGroups(static_cast<std::int32_t>(world.Pick(5)));
        scene.AddPlayers(static_cast<std::int32_t>(world.Pick(4)));
        scene.AddObjects(static_cast<std::int32_t>(world.Pick(9)));
        for (std::int32_t group = 0; group < scene.groupCount; group++) {
            for (std::uint32_t i = world.Pick(60); i > 0; i--)
                scene.groups[group].Add(world.Index(scene.objectCount));
        }
        for (std::int32_t i = 0; i < scene.objectCount; i++)
            world.FillObject(scene.objects[i], tame);
        for (std::int32_t i = 0; i < scene.playerCount; i++) {
            Player& player = scene.players[i];
            player.playerObject = world.Index(scene.objectCount);
            player.cameraObject = world.Index(scene.objectCount);
            player.controller = static_cast<std::int32_t>(world.Pick(4));
            player.headLimit = world.Wild();
        }
        for (int frame = 0; frame < 5; frame++) {
            std::uint8_t keys[256];
            for (std::uint8_t& key : keys)
                key = world.Chance(2);
            JOYINFOEX joystick;
            joystick.dwButtons = world.Pick(8);
            const Vector delta = world.WildVector();
            for (std::int32_t player = -1; player <= scene.playerCount; player++) {
                world.control.ControlByKeyboard(scene, player, keys);
                world.control.ControlByMouse(scene, player, delta, keys);
                world.control.ControlByJoystick(scene, player, delta, joystick);
            }
            scene.StepWorld();
        }
        for (std::int32_t i = 0; i < scene.objectCount; i++) {
            ASSERT_TRUE(scene.objects[i].transform.IsIdentity()) << seed;
            ASSERT_EQ(scene.objects[i].activeKeyTrack, -1) << seed;
            if (scene.objects[i].collider) {
                ASSERT_LE(scene.objects[i].collider->recursionDepth, 15) << seed;
            }
        }
    }
}

}  // namespace

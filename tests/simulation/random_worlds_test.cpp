#include "simulation/player_control.h"
#include "simulation/random_numbers.h"
#include "simulation/test_world.h"

// Worlds that nobody would build, for the sanitizers to watch. Indices of faces and markers are right, as
// loading makes sure; all else may be anything.

namespace {

struct WildWorld : RandomNumbers {
    Scene scene;
    const bool tame = Chance(2);

    float Wild() {
        constexpr float odd[11] = {0.0f,   -0.0f, 1e-45f,   1e-30f,    -1e-6f, 1e10f,
                                   -1e20f, 3e38f, INFINITY, -INFINITY, NAN};
        return Chance(6) ? odd[Pick(11)] : Random(-10, 10);
    }
    Vector WildVector() {
        const float x = Wild();
        const float y = Wild();
        return Vector(x, y, Wild());
    }
    /// Mostly an index below the count, now and then none.
    std::int32_t Index(std::int32_t count) {
        if (Chance(8)) return static_cast<std::int32_t>(generator());
        return count == 0 || Chance(8) ? -1 : Pick(count);
    }
    void FillObject(Object& object) {
        const std::int32_t vertices = Chance(8) ? 0 : 1 + Pick(12);
        const std::int32_t faces = vertices == 0 ? 0 : Pick(20);
        object.ResizeVertices(vertices);
        object.ResizeFaces(faces);
        const auto vertex = [this, vertices] { return vertices == 0 ? 0 : Pick(vertices); };
        for (std::int32_t i = 0; i < vertices; i++)
            object.SetVertex(tame ? RandomVector(8) : WildVector(), i);
        std::generate_n(object.faces.get(), 3 * faces, vertex);
        if (Chance(10)) object.faceValueCount -= std::min(faces, 1);  // leftover indices
        for (std::int32_t* marker : {&object.centreVertex, &object.xAxisVertex, &object.yAxisVertex,
                                     &object.zAxisVertex, &object.spareVertex})
            *marker = vertex();
        object.ComputeRadius();
        if (Chance(2)) object.MakeCollider();
        if (object.collider && Chance(4)) object.collider->radii = WildVector();
        if (Chance(2)) object.MakePhysics();
        if (object.physics && !tame) {
            object.physics->velocity = WildVector();
            object.physics->bounce = Wild();
            object.physics->friction = Wild();
        }
        if (Chance(3)) AddKeyTracks(object, Pick(4), Pick(4), WildVector(), Wild(), WildVector());
        if (Chance(2)) object.groupParent = Index(scene.groupCount);
        object.activeKeyTrack = Index(object.keyTrackCount);
        if (Chance(5)) object.attributes[collidableAttribute] = 0;
        if (Chance(5)) object.attributes[spawnStateAttribute] = justSpawned;
        if (Chance(3)) object.transform.Translate(Wild(), Wild(), Wild());
        if (Chance(3)) object.transform.Rotate(Wild(), Wild(), Wild(), Wild());
    }
    explicit WildWorld(std::uint32_t seed) : RandomNumbers(seed) {
        scene.AddGroups(Pick(5));
        scene.AddPlayers(Pick(4));
        scene.AddObjects(Pick(9));
        for (std::int32_t group = 0; group < scene.groupCount; group++) {
            for (std::int32_t i = Pick(60); i > 0; i--)
                scene.groups[group].Add(Index(scene.objectCount));
        }
        for (std::int32_t i = 0; i < scene.objectCount; i++)
            FillObject(scene.objects[i]);
        for (std::int32_t i = 0; i < scene.playerCount; i++) {
            Player& player = scene.players[i];
            player.playerObject = Index(scene.objectCount);
            player.cameraObject = Index(scene.objectCount);
            player.controller = Pick(4);
            player.headLimit = Wild();
        }
    }
    void Frame() {
        PlayerControl control;
        std::uint8_t keys[256];
        std::generate_n(keys, 256, [this] { return Chance(2); });
        JOYINFOEX joystick;
        joystick.dwButtons = generator() % 8;
        const Vector delta = WildVector();
        for (std::int32_t player = -1; player <= scene.playerCount; player++) {
            control.ControlByKeyboard(scene, player, keys);
            control.ControlByMouse(scene, player, delta, keys);
            control.ControlByJoystick(scene, player, delta, joystick);
        }
        scene.StepWorld();
    }
};

TEST(RandomWorlds, NothingCrashesOrHangs) {
    for (std::uint32_t seed = 1; seed <= 3000; seed++) {
        WildWorld world(seed);
        for (int frame = 0; frame < 5; frame++)
            world.Frame();
        for (std::int32_t i = 0; i < world.scene.objectCount; i++) {
            const Object& object = world.scene.objects[i];
            ASSERT_TRUE(object.transform.IsIdentity()) << seed;
            ASSERT_EQ(object.activeKeyTrack, -1) << seed;
            ASSERT_TRUE(!object.collider || object.collider->recursionDepth <= 15) << seed;
        }
    }
}

}  // namespace

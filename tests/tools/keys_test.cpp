#include "check_scene/keys.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "common/windowless.h"
#include "loading/attribute_file.h"
#include "support/temporary_folder.h"

// What the checker knows of each key is what the engine does with it.

namespace {

/// The bytes of all that keys with numbers can change, after the engine has read the text in its place.
std::string StateAfter(KeyPlace place, const std::string& text) {
    Windowless world;
    Scene& scene = world.scene;
    scene.AddPlayers(3);
    scene.AddObjects(4);
    Object& thing = scene.objects[0];
    thing.name = "Thing";
    thing.MakePhysics();
    for (std::int32_t i = 0; i < 3; i++) {
        scene.players[i].playerObject = i + 1;
    }
    WriteWholeFile("world.atr",
                   place == KeyPlace::Settings ? text : "Thing {" + text + "} GLOBALS {" + text + "}");
    TextureIndex textures;
    AttributeFile file("world.atr", textures);
    EXPECT_TRUE(place == KeyPlace::Settings ? world.engine.ReadSettings("world.atr")
                : place == KeyPlace::Object ? ApplyObjectAttributes(scene, file, 0)
                                            : ApplyGlobalAttributes(scene, file));
    std::string state;
    const auto add = [&state](const auto&... values) {
        (state.append(reinterpret_cast<const char*>(&values), sizeof values), ...);
    };
    const Engine& engine = world.engine;
    add(engine.windowRect, engine.colourBits, engine.mouseSensitivity, engine.joystickSensitivity);
    add(engine.nearPlane, engine.farPlane, world.timer.referenceSpeed, world.timer.framePeriod);
    add(scene.playerCount, thing.groupParent, thing.physics->gravity, thing.physics->bounce,
        thing.physics->friction);
    for (std::int32_t i = 0; i < 3; i++) {
        const Player& player = scene.players[i];
        add(player.headLimit, player.cameraObject, player.playerObject, player.eyeVertex,
            player.lookVertex);
        add(player.controller, player.keys, player.viewportX, player.viewportY, player.viewportWidth);
        add(player.viewportHeight, scene.objects[i + 1].attributes[spawnStateAttribute]);
    }
    for (std::int32_t i = 0; i < scene.groupCount; i++) {
        add(scene.groups[i].ids[0]);
    }
    for (std::int32_t i = 0; i < scene.lightCount; i++) {
        add(scene.lights[i]);
    }
    return state;
}

/// The key with 1, 3, 5 and so on, one of them replaced.
std::string Use(const Key& key, std::size_t replaced = 99, const std::string& number = "") {
    std::string text = key.name;
    for (std::size_t i = 0; i < 26; i++) {
        text += " " + (i == replaced ? number : std::to_string(2 * i + 1));
    }
    return text + "\n";
}

TEST(Keys, TakeTheNumbersThatTheCheckerKnowsAndRepeatAsItSays) {
    const TemporaryFolder folder;
    for (const KeyPlace place : {KeyPlace::Settings, KeyPlace::Object, KeyPlace::Globals}) {
        const auto state = [place](const std::string& text) { return StateAfter(place, text); };
        for (const Key& key : KeysOf(place)) {
            SCOPED_TRACE(key.name);
            if (key.takesName) {
                continue;
            }
            const std::string plain = state(Use(key));
            std::size_t taken = 0;
            for (std::size_t i = 0; i < 26; i++) {
                taken = state(Use(key, i, "2")) != plain ? i + 1 : taken;
            }
            EXPECT_EQ(taken, key.arguments.size());
            for (std::size_t i = 1; i < key.arguments.size(); i++) {
                // As floats, the two are the same.
                const bool isWhole = state(Use(key, i, "16777217")) != state(Use(key, i, "16777216"));
                EXPECT_TRUE(isWhole == key.arguments[i].isWhole || key.arguments[i].what.ends_with("alpha"))
                    << i;
            }
            const std::string other = Use(key, 0, "2");
            const bool countsForItsNumber = state(Use(key) + other) != state(other);
            EXPECT_EQ(countsForItsNumber, key.repeat != Repeat::LastWins);
            if (key.arguments.size() > 1) {
                const bool addsUp = state(Use(key, 1, "2") + Use(key)) != plain;
                EXPECT_EQ(addsUp, key.repeat == Repeat::Allowed || key.repeat == Repeat::AddsUp);
            }
        }
    }
}

}  // namespace

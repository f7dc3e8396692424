#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"

// The input of the fuzzer of scenes: the length of the attribute text in two bytes, the text, and the bytes
// of the scene.

struct SceneInput {
    std::string text;
    std::string scene;
};

inline SceneInput SplitSceneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return {};
    }
    const std::size_t textSize = std::min<std::size_t>(data[0] + 256u * data[1], size - 2);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    return {bytes.substr(2, textSize), bytes.substr(2 + textSize)};
}

inline std::string JoinSceneInput(const SceneInput& input) {
    const std::size_t textSize = std::min<std::size_t>(input.text.size(), 65535);
    std::string bytes;
    bytes += static_cast<char>(textSize & 255);
    bytes += static_cast<char>(textSize >> 8);
    return bytes + input.text.substr(0, textSize) + input.scene;
}

inline const std::string heroBlock =
    "Hero {\n*PLAYEROBJECT 0\n*CAMERAOBJECT 0 0 1\n*COLLIDER\n*PHYSICS 1.0 0.5 0.5\n*GROUPPARENT 0\n}\n";
inline const std::string otherBlocks =
    "Box\n\n{ *GROUPMEMBER 0 *TEXTURE wall.tga }\nStart { *PLAYERSPAWNPOINT 0 *INVISIBLE *NOCOLLIDER }\n"
    "GLOBALS { *TEXTURE sky.tga *LIGHT 0.2 0.2 0.2 1  1 1 1 1  1 1 1 1  0 0 50 1  0 0 -1  0 180  1 0 0 }\n";

inline engine::SceneObject HeroObject() {
    engine::SceneObject hero = engine::MakeBox("Hero", {-2, -2, 1}, {2, 2, 11});
    AddMarkers(hero, {0, 0, 6});
    hero.keyTracks = {{{{0.1f, 0, 0}, {1, 0, 0}, 0.1f, {}}, {{-0.1f, 0, 0}, {1, 0, 0}, -0.1f, {}}}, {}};
    return hero;
}

inline engine::SceneObject FloorObject() {
    engine::SceneObject floor = engine::MakeGrid("Floor", {-20, -20, 0}, {40, 0, 0}, {0, 40, 0}, 2, 2);
    AddMarkers(floor, {0, 0, 0});
    return floor;
}

/// A scene in which everything stands that there is: a player, textures, groups, key tracks, a light.
inline SceneInput ValidSceneInput() {
    engine::SceneObject box = engine::MakeBox("Box", {3, 3, 0}, {4, 4, 1}, 1.0f);
    AddMarkers(box, {3.5f, 3.5f, 0.5f});
    const engine::SceneObject start = engine::MakeCamera("Start", {5, 5, 6}, {5, 5, 7});
    return {heroBlock + otherBlocks,
            engine::SceneFileBytes({HeroObject(), FloorObject(), box, box, start})};
}

#include "blocks.h"
#include "courtyard.h"
#include "scene_writer/shapes.h"

namespace {

constexpr float thickness = 3.0f;
constexpr float cell = 3.6f;
constexpr Float3 brickTint{1.0f, 0.96f, 0.92f};
constexpr Float3 copingTint{0.95f, 0.9f, 0.8f};

/// A piece of the wall with its coping; `inside` is the side that players see.
void AddPiece(World& world, const std::string& name, Float3 low, Float3 high, Side inside) {
    SceneObject wall = MakeBlock("Wall" + name, low, high, cell, inside);
    Append(wall, MakeBlock("", low, high, 100.0f, upright & ~inside));
    world.AddPainted(wall, brickTint, "brick.rgb", 12.0f);
    world.AddPainted(MakeBlock("Coping" + name, {low.x - 0.4f, low.y - 0.4f, high.z},
                               {high.x + 0.4f, high.y + 0.4f, high.z + 0.8f}, 6.0f),
                     copingTint, "ashlar.rgb", 10.0f);
}

void AddGate(World& world) {
    ArchShape shape;
    shape.middle = 13.0f;
    shape.front = southWall - thickness - 0.5f;
    shape.back = southWall + 0.5f;
    shape.height = wallHeight + 1.5f;
    world.AddPainted(MakeArch("Gate", shape), copingTint, "ashlar.rgb", 10.0f);

    // Nothing is seen of it, and nobody leaves. It casts no shadow, either.
    SceneObject barrier =
        MakeBlock("Barrier", {8.0f, southWall - thickness, 0.0f}, {18.0f, southWall - 1.0f, 14.0f}, 5.0f);
    world.Add(barrier, Role::Outside, {"*INVISIBLE"});
}

}  // namespace

void AddWalls(World& world) {
    const float low = southWall - thickness;
    const float high = northWall + thickness;
    for (int i = 0; i < 4; i++) {
        const std::string number(1, static_cast<char>('A' + i));
        const float from = low + (high - low) * static_cast<float>(i) / 4.0f;
        const float to = low + (high - low) * static_cast<float>(i + 1) / 4.0f;
        AddPiece(world, "West" + number, {westWall - thickness, from, 0.0f}, {westWall, to, wallHeight},
                 east);
        AddPiece(world, "East" + number, {eastWall, from, 0.0f}, {eastWall + thickness, to, wallHeight},
                 west);
        const float left = westWall + (eastWall - westWall) * static_cast<float>(i) / 4.0f;
        const float right = westWall + (eastWall - westWall) * static_cast<float>(i + 1) / 4.0f;
        AddPiece(world, "North" + number, {left, northWall, 0.0f}, {right, high, wallHeight}, south);
    }
    const float height = wallHeight;
    AddPiece(world, "SouthA", {westWall, low, 0.0f}, {-26.0f, southWall, height}, north);
    AddPiece(world, "SouthB", {-26.0f, low, 0.0f}, {-10.0f, southWall, height}, north);
    AddPiece(world, "SouthC", {-10.0f, low, 0.0f}, {5.0f, southWall, height}, north);
    AddPiece(world, "SouthD", {21.0f, low, 0.0f}, {eastWall, southWall, height}, north);
    AddGate(world);
}

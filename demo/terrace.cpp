#include <utility>

#include "blocks.h"
#include "courtyard.h"
#include "scene_writer/shapes.h"

namespace {

constexpr float terraceWest = 18.0f;
constexpr float terraceSouth = 16.0f;
constexpr Float3 sandstone{0.98f, 0.9f, 0.76f};
constexpr Float3 paving{1.0f, 0.95f, 0.85f};

void AddStone(World& world, SceneObject stone) {
    world.AddPainted(std::move(stone), sandstone, "ashlar.rgb", 10.0f);
}

void AddPlatform(World& world) {
    world.AddPainted(MakeBlock("TerraceFloor", {terraceWest, terraceSouth, 0.0f},
                               {eastWall, northWall, terraceHeight}, 2.4f, top),
                     paving, "cobbles.rgb", 12.0f);
    AddStone(world, MakeBlock("TerraceSides", {terraceWest, terraceSouth, 0.0f},
                              {eastWall, northWall, terraceHeight}, 2.6f, south | west));
    // Open where the stairs and the ramp arrive.
    const float rail = terraceHeight + 2.6f;
    AddStone(world, MakeParapet("ParapetSouth", {terraceWest, terraceSouth, terraceHeight},
                                {31.0f, terraceSouth + 1.2f, rail}));
    AddStone(world, MakeParapet("ParapetWest", {terraceWest, terraceSouth + 1.2f, terraceHeight},
                                {terraceWest + 1.2f, 23.5f, rail}));
}

/// Low, deep steps: a body climbs what meets it well below its middle.
void AddStairs(World& world) {
    constexpr int steps = 12;
    constexpr float depth = 1.5f;
    constexpr float rise = terraceHeight / steps;
    constexpr float foot = terraceWest - steps * depth;
    SceneObject stairs;
    stairs.name = "Stairs";
    for (int step = 0; step < steps; step++) {
        const float front = foot + static_cast<float>(step) * depth;
        const float height = static_cast<float>(step + 1) * rise;
        // The lower part of each step is inside the one before it.
        Append(stairs, MakeBlock("", {front, 24.0f, height - rise}, {front + depth, northWall, height},
                                 3.0f, west | top));
        Append(stairs,
               MakeBlock("", {front, 24.0f, 0.0f}, {front + depth, northWall, height}, 3.0f, south));
    }
    AddStone(world, stairs);
}

void AddRamp(World& world) {
    constexpr float foot = -12.0f;
    constexpr float west = 32.0f;
    constexpr int cells = 12;
    world.AddPainted(engine::MakeGrid("Ramp", {west, foot, 0.0f}, {eastWall - west, 0.0f, 0.0f},
                                      {0.0f, terraceSouth - foot, terraceHeight}, 4, cells),
                     paving, "cobbles.rgb", 12.0f);

    SceneObject side =
        MakeBlock("RampSide", {west, foot, 0.0f}, {eastWall, terraceSouth, 1.0f}, 2.4f, Side::west);
    for (Float3& vertex : side.vertices) {
        if (vertex.z > 0.0f) {
            vertex.z = terraceHeight * (vertex.y - foot) / (terraceSouth - foot);
        }
    }
    // At its foot the last cell has become a triangle.
    std::erase_if(side.faces, [&side](engine::Int3 face) {
        const Float3 a = side.vertices[face.a];
        return Length(Cross(side.vertices[face.b] - a, side.vertices[face.c] - a)) < 1e-4f;
    });
    AddStone(world, side);
}

}  // namespace

void AddTerrace(World& world) {
    AddPlatform(world);
    AddStairs(world);
    AddRamp(world);
}

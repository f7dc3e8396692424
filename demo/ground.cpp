#include <array>

#include "courtyard.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"

namespace {

struct Mound {
    float x = 0.0f;
    float y = 0.0f;
    float radius = 0.0f;
    float height = 0.0f;  ///< negative for a hollow
};

// Each lies within one patch of grass: the patches meet on flat ground, so that no seam shows.
constexpr std::array<Mound, 7> mounds{{{-22.0f, -24.0f, 9.5f, 2.6f},
                                       {-2.0f, -25.0f, 9.0f, 1.5f},
                                       {-20.0f, 7.0f, 8.5f, 2.2f},
                                       {-22.0f, -7.0f, 4.5f, -0.7f},
                                       {-5.0f, 10.0f, 5.5f, 0.9f},
                                       {25.0f, -25.0f, 6.5f, 2.0f},
                                       {25.0f, 2.0f, 6.5f, 1.3f}}};

void AddPatch(World& world, const std::string& name, float west, float south, float east, float north,
              float cell, const std::string& texture, float tile) {
    const Float3 u{east - west, 0.0f, 0.0f};
    const Float3 v{0.0f, north - south, 0.0f};
    SceneObject patch =
        engine::MakeGrid(name, {west, south, 0.0f}, u, v, static_cast<int>(std::lround(u.x / cell)),
                         static_cast<int>(std::lround(v.y / cell)));
    for (Float3& vertex : patch.vertices) {
        vertex.z = GroundHeight(vertex.x, vertex.y);
    }
    ProjectTexture(patch, tile);
    world.AddTextured(patch, Role::Fixed, texture);
}

}  // namespace

float GroundHeight(float x, float y) {
    float height = 0.0f;
    for (const Mound& mound : mounds) {
        const float distance = std::hypot(x - mound.x, y - mound.y) / mound.radius;
        if (distance >= 1.0f) {
            continue;
        }
        const float bell = 1.0f - distance * distance;
        height += mound.height * bell * bell;
    }
    return height;
}

void AddGround(World& world) {
    const auto grass = [&world](const std::string& name, float west, float south, float east, float north) {
        AddPatch(world, "Grass" + name, west, south, east, north, 2.4f, "grass.tga", 12.0f);
    };
    grass("A", -32.0f, southWall, -12.0f, -12.0f);
    grass("B", -12.0f, southWall, 8.0f, -12.0f);
    grass("C", -32.0f, -12.0f, -12.0f, 16.0f);
    grass("D", -12.0f, -12.0f, 8.0f, 16.0f);
    grass("E", -22.0f, 16.0f, 0.0f, northWall);
    grass("F", 0.0f, 16.0f, 8.0f, 24.0f);
    grass("G", 18.0f, southWall, 32.0f, -12.0f);
    grass("H", 32.0f, southWall, eastWall, -12.0f);
    grass("I", 18.0f, -12.0f, 32.0f, 16.0f);
    // The path goes on through the gate, and beyond it in the landscape.
    const auto path = [&world](const std::string& name, float south, float north) {
        AddPatch(world, "Path" + name, 8.0f, south, 18.0f, north, 2.0f, "cobbles.rgb", 10.0f);
    };
    path("A", southWall - 4.0f, -24.0f);
    path("B", -24.0f, -2.0f);
    path("C", -2.0f, 24.0f);
}

#include <array>

#include "courtyard.h"
#include "noise.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"

// The engine puts twenty sprites between (-9, -9, 0) and (0, 0, 9) in every world. They have no texture of
// their own and show the one that was drawn last: here that is the foliage, whose alpha channel cuts a leaf
// out of it. So a tree stands in their midst, and they are its falling leaves.

namespace {

constexpr Float3 treePlace{-4.5f, -4.5f, 0.0f};

void AddRing(World& world) {
    const SceneObject ring = engine::MakeLathe(
        "Ring", treePlace,
        {{7.7f, 0.0f}, {7.7f, 1.5f}, {7.7f, 1.5f}, {6.7f, 1.5f}, {6.7f, 1.5f}, {6.7f, 0.0f}}, 24);
    world.AddPainted(ring, {0.98f, 0.92f, 0.82f}, "plaster.rgb", 8.0f);

    SceneObject soil = engine::MakeLathe("Soil", treePlace, {{6.8f, 0.4f}, {3.5f, 0.6f}, {0.0f, 0.7f}}, 24);
    for (std::size_t i = 0; i < soil.vertices.size(); i++) {
        const float grain = Random(static_cast<int>(i), 0, 51);
        soil.colours.push_back(Mixed({0.34f, 0.42f, 0.18f}, {0.5f, 0.42f, 0.2f}, grain));
    }
    world.Add(soil, Role::Fixed, {"*NOCOLLIDER"});
}

void AddTrunk(World& world) {
    SceneObject trunk = engine::MakeLathe(
        "Trunk", treePlace,
        {{2.2f, 0.0f}, {1.5f, 1.2f}, {1.2f, 3.5f}, {1.1f, 7.0f}, {0.9f, 11.0f}, {0.5f, 15.0f}}, 9, 1.0f);
    for (Float3& vertex : trunk.vertices) {
        vertex.x += 0.5f * std::sin(vertex.z * 0.35f);
    }
    ScaleTexture(trunk, 1.0f, 2.0f);
    Paint(trunk, {0.8f, 0.72f, 0.62f});
    world.AddTextured(trunk, Role::Fixed, "planks.rgb");
}

void AddFoliage(World& world) {
    struct Clump {
        Float3 place;
        float radius;
    };
    constexpr std::array<Clump, 6> clumps{{{{0.0f, 0.0f, 15.5f}, 5.2f},
                                           {{4.6f, 0.8f, 12.8f}, 3.9f},
                                           {{-4.4f, 1.6f, 13.2f}, 4.0f},
                                           {{0.8f, 4.6f, 12.6f}, 3.8f},
                                           {{-0.8f, -4.6f, 12.9f}, 4.0f},
                                           {{0.5f, 0.0f, 19.2f}, 3.6f}}};
    SceneObject foliage;
    foliage.name = "Foliage";
    for (std::size_t i = 0; i < clumps.size(); i++) {
        const Float3 centre = treePlace + clumps[i].place;
        SceneObject clump = engine::MakeBall("", centre, clumps[i].radius, 6, 10, 4.0f);
        clump.colours.clear();
        for (std::size_t j = 0; j < clump.vertices.size(); j++) {
            Float3& vertex = clump.vertices[j];
            const Float3 outward = vertex - centre;
            const float rough = Noise(vertex.x * 0.7f + 40.0f, vertex.y * 0.7f + vertex.z + 40.0f, 64, 52);
            vertex = centre + outward * (0.8f + 0.4f * rough);
            // Darker below, where little light comes through.
            const float light = 0.75f + 0.25f * outward.z / clumps[i].radius;
            clump.colours.push_back(Float3{1.0f, 1.0f, 0.9f} * light);
        }
        Append(foliage, clump);
    }
    world.AddTextured(foliage, Role::Fixed, "leaf.tga", {"*NOCOLLIDER"});
}

}  // namespace

void AddGarden(World& world) {
    AddRing(world);
    AddTrunk(world);
    AddFoliage(world);
}

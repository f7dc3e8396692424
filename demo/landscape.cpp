#include <algorithm>

#include "courtyard.h"
#include "lights.h"
#include "noise.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"
#include "shadows.h"

namespace {

/// The vertex colour that gives `wanted` on the screen under the lights that reach everything.
Float3 Unlit(Float3 wanted, Float3 normal) {
    Float3 light = Ambient();
    for (const engine::SceneLight& source : {Sun(), Sky(), Ground()}) {
        light = light + Falling(source, normal);
    }
    return VertexColour(wanted, light);
}

/// A shallow dome, down to the horizon. All of it faces down enough to be lit from there.
void AddSky(World& world) {
    constexpr float reach = 640.0f;
    constexpr float height = 150.0f;
    std::vector<engine::LathePoint> profile;
    for (const float share : {1.0f, 0.9f, 0.75f, 0.6f, 0.45f, 0.3f, 0.15f, 0.0f}) {
        profile.push_back({reach * share, height * (1.0f - share * share)});
    }
    SceneObject sky = engine::MakeLathe("SkyDome", {0.0f, 0.0f, -8.0f}, profile, 24);
    for (engine::Int3& face : sky.faces) {
        std::swap(face.b, face.c);  // it is seen from within
    }
    const std::vector<Float3> normals = VertexNormals(sky);
    for (std::size_t i = 0; i < sky.vertices.size(); i++) {
        const Float3 vertex = sky.vertices[i];
        const float steepness = vertex.z / std::max(1.0f, std::hypot(vertex.x, vertex.y));
        const Float3 clear = Mixed({0.62f, 0.66f, 0.72f}, {0.2f, 0.38f, 0.68f},
                                   std::sqrt(std::clamp(steepness, 0.0f, 1.0f)));
        const float cloud = Clouds(vertex.x * 0.009f + 64.0f, vertex.y * 0.009f + 64.0f, 32, 61);
        const Float3 wanted =
            Mixed(clear, {0.66f, 0.67f, 0.7f}, std::clamp((cloud - 0.5f) * 3.5f, 0.0f, 0.8f));
        sky.colours.push_back(Unlit(wanted, normals[i]));
    }
    world.Add(sky, Role::Outside, {"*NOCOLLIDER"});
}

/// Height beyond the gate: level where the path leaves, then hills.
float HillHeight(float x, float y) {
    const float away = southWall - 4.0f - y;
    return Noise(x * 0.02f + 10.0f, y * 0.02f + 10.0f, 64, 62) * std::max(0.0f, away - 12.0f) * 0.24f;
}

void AddMeadow(World& world) {
    SceneObject meadow = engine::MakeGrid("Meadow", {-150.0f, -250.0f, 0.0f}, {320.0f, 0.0f, 0.0f},
                                          {0.0f, 250.0f + southWall - 4.0f, 0.0f}, 16, 14);
    for (Float3& vertex : meadow.vertices) {
        vertex.z = HillHeight(vertex.x, vertex.y) - 0.1f;
        const float haze = std::clamp((southWall - vertex.y) / 200.0f, 0.0f, 1.0f);
        meadow.colours.push_back(Mixed({0.8f, 0.85f, 0.7f}, {0.85f, 0.95f, 1.0f}, haze));
    }
    ProjectTexture(meadow, 24.0f);
    world.AddTextured(meadow, Role::Outside, "grass.tga", {"*NOCOLLIDER"});

    // The path goes on, in a bend. Where the meadow lies higher it covers it.
    SceneObject track =
        engine::MakeGrid("Track", {8.0f, -80.0f, 0.0f}, {10.0f, 0.0f, 0.0f}, {0.0f, 40.0f, 0.0f}, 3, 14);
    for (Float3& vertex : track.vertices) {
        const float away = southWall - 4.0f - vertex.y;
        vertex.x += away * away * 0.012f;
        vertex.z = HillHeight(vertex.x, vertex.y) + 0.12f;
    }
    ProjectTexture(track, 10.0f);
    world.AddTextured(track, Role::Outside, "cobbles.rgb", {"*NOCOLLIDER"});
}

/// Trees in the distance: two balls and a stem each.
void AddGrove(World& world) {
    SceneObject grove;
    grove.name = "Grove";
    for (int i = 0; i < 9; i++) {
        const float x = -45.0f + 14.0f * static_cast<float>(i) + 8.0f * Random(i, 0, 63);
        const float y = -75.0f - 60.0f * Random(i, 1, 63);
        const float size = 1.0f + 0.5f * Random(i, 2, 63);
        const Float3 foot{x, y, HillHeight(x, y) - 0.5f};
        SceneObject stem =
            engine::MakeLathe("", foot, {{0.8f * size, 0.0f}, {0.5f * size, 8.0f * size}}, 5, 1.0f);
        Paint(stem, {0.6f, 0.4f, 0.3f});
        Append(grove, stem);
        for (const Float3 place : {Float3{0.0f, 0.0f, 9.0f}, Float3{1.0f, 1.0f, 12.5f}}) {
            SceneObject crown = engine::MakeBall("", foot + place * size,
                                                 (place.z < 10.0f ? 4.2f : 3.0f) * size, 5, 7, 2.0f);
            Paint(crown, {0.95f, 1.0f, 0.85f});
            Append(grove, crown);
        }
    }
    world.AddTextured(grove, Role::Outside, "leaf.tga", {"*NOCOLLIDER"});
}

}  // namespace

void AddLandscape(World& world) {
    AddSky(world);
    AddMeadow(world);
    AddGrove(world);
}

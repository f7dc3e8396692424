#include <algorithm>

#include "courtyard.h"
#include "float3.h"
#include "lights.h"
#include "noise.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"
#include "shadows.h"

namespace {

Float3 Colour(Float4 value) {
    return {value.x, value.y, value.z};
}

/// The vertex colour that gives `wanted` on the screen under the lights that reach everything.
Float3 Unlit(Float3 wanted, Float3 normal) {
    Float3 light = Float3{globalAmbient, globalAmbient, globalAmbient} + Colour(Sun().ambient);
    for (const SceneLight& source : {Sun(), Sky()}) {
        light = light + Colour(source.diffuse) * std::max(0.0f, Dot(normal, Normalised(Colour(source.position))));
    }
    const Float3 colour = wanted / light;
    return {std::min(colour.x, 1.0f), std::min(colour.y, 1.0f), std::min(colour.z, 1.0f)};
}

void AddSky(World& world) {
    constexpr float radius = 300.0f;
    SceneObject sky = MakeBall("SkyDome", {0.0f, 0.0f, -30.0f}, radius, 20, 28);
    // It is seen from within; what lies below the ground is left out.
    std::erase_if(sky.faces, [&sky](Int3 face) { return sky.vertices[face.a].z < -80.0f; });
    for (Int3& face : sky.faces) {
        std::swap(face.b, face.c);
    }
    const std::vector<Float3> normals = VertexNormals(sky);
    for (std::size_t i = 0; i < sky.vertices.size(); i++) {
        const Float3 vertex = sky.vertices[i];
        const float height = std::clamp((vertex.z + 10.0f) / radius, 0.0f, 1.0f);
        const Float3 clear = Mixed({0.55f, 0.63f, 0.7f}, {0.2f, 0.36f, 0.62f}, std::sqrt(height));
        const float cloud = Clouds(vertex.x * 0.025f + 64.0f, vertex.y * 0.025f + 64.0f, 32, 61);
        const Float3 wanted = Mixed(clear, {0.68f, 0.69f, 0.7f}, std::clamp((cloud - 0.5f) * 3.5f, 0.0f, 0.8f));
        sky.colours.push_back(Unlit(wanted, normals[i]));
    }
    world.Add(sky, Role::Outside, {"*NOCOLLIDER"});
}

/// Meadows and hills beyond the gate.
void AddMeadow(World& world) {
    SceneObject meadow = MakeGrid("Meadow", {-140.0f, -240.0f, 0.0f}, {300.0f, 0.0f, 0.0f},
                                  {0.0f, 240.0f + southWall - 4.0f, 0.0f}, 20, 14);
    for (Float3& vertex : meadow.vertices) {
        const float away = southWall - 4.0f - vertex.y;
        const float hills = Noise(vertex.x * 0.02f + 10.0f, vertex.y * 0.02f + 10.0f, 64, 62);
        vertex.z = -0.05f + hills * std::max(0.0f, away - 20.0f) * 0.22f;
        meadow.colours.push_back(Mixed({0.8f, 0.85f, 0.7f}, {0.75f, 0.95f, 1.0f}, std::min(1.0f, away / 180.0f)));
    }
    ProjectTexture(meadow, 24.0f);
    world.AddTextured(meadow, Role::Outside, "grass.tga", {"*NOCOLLIDER"});
}

}  // namespace

void AddLandscape(World& world) {
    AddSky(world);
    AddMeadow(world);
}

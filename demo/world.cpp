#include "world.h"

#include <algorithm>
#include <utility>

#include "lights.h"
#include "scene_writer/scene_parts.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"

namespace {

/// The middle of the box around the mesh: the engine measures its reach from there, so it is at its least.
Float3 Middle(const SceneObject& mesh) {
    Float3 low = mesh.vertices.front();
    Float3 high = low;
    for (const Float3 vertex : mesh.vertices) {
        low = {std::min(low.x, vertex.x), std::min(low.y, vertex.y), std::min(low.z, vertex.z)};
        high = {std::max(high.x, vertex.x), std::max(high.y, vertex.y), std::max(high.z, vertex.z)};
    }
    return Mixed(low, high, 0.5f);
}

}  // namespace

void World::Add(SceneObject mesh, Role role, std::vector<std::string> attributes) {
    objects.push_back({std::move(mesh), role, std::move(attributes)});
}

void World::AddTextured(SceneObject mesh, Role role, const std::string& texture,
                        std::vector<std::string> attributes) {
    attributes.insert(attributes.begin(), "*TEXTURE data\\" + texture);
    Add(std::move(mesh), role, std::move(attributes));
}

void World::AddPainted(SceneObject mesh, Float3 colour, const std::string& texture, float tile) {
    Paint(mesh, colour);
    ProjectTexture(mesh, tile);
    AddTextured(std::move(mesh), Role::Fixed, texture);
}

void WriteWorld(const World& world, const std::string& folder) {
    engine::SceneParts parts;
    for (const WorldObject& object : world.objects) {
        if (object.role == Role::Moving) {
            parts.Add(object.mesh, object.attributes);
        } else {
            parts.Add(object.mesh, Middle(object.mesh), object.attributes);
        }
    }
    parts.Write(folder + "/data/courtyard.bin", Lights());
}

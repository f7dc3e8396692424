#include "world.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "lights.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/bytes.h"
#include "scene_writer/shapes.h"

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

/// The engine finds a block by the first place where the name stands before a brace, so no name may be
/// the end of another.
void CheckName(const World& world, const std::string& name) {
    for (const WorldObject& other : world.objects) {
        if (other.mesh.name.ends_with(name)) {
            throw std::runtime_error(name + " is the end of the name " + other.mesh.name);
        }
        if (name.ends_with(other.mesh.name)) {
            throw std::runtime_error(other.mesh.name + " is the end of the name " + name);
        }
    }
}

}  // namespace

void World::Add(SceneObject mesh, Role role, std::vector<std::string> attributes) {
    CheckName(*this, mesh.name);
    objects.push_back({std::move(mesh), role, std::move(attributes)});
}

void World::AddTextured(SceneObject mesh, Role role, const std::string& texture,
                        std::vector<std::string> attributes) {
    attributes.insert(attributes.begin(), "*TEXTURE data\\" + texture);
    Add(std::move(mesh), role, std::move(attributes));
}

void WriteWorld(const World& world, const std::string& folder) {
    std::vector<SceneObject> meshes;
    std::string attributes = engine::AttributeBlock("GLOBALS", LightLines());
    for (const WorldObject& object : world.objects) {
        meshes.push_back(object.mesh);
        if (object.role != Role::Moving) {
            AddMarkers(meshes.back(), Middle(object.mesh));
        }
        attributes += engine::AttributeBlock(object.mesh.name, object.attributes);
    }
    WriteSceneFile(folder + "/data/courtyard.bin", meshes);
    engine::WriteBytes(folder + "/data/courtyard.atr", attributes);
}

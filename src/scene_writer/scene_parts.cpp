#include "scene_writer/scene_parts.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

#include "scene_writer/bytes.h"
#include "scene_writer/refusal.h"
#include "scene_writer/shapes.h"

namespace engine {

namespace {

constexpr float bodyReach = 5.0f;  ///< of each body below its centre, however large its mesh is
constexpr float bodyTolerance = 0.5f;

/// A block is the first place where the name stands before a brace, be it at the end of a longer word.
void DemandBlock(const std::vector<SceneObject>& earlier, const SceneObject& object) {
    for (const SceneObject& other : earlier) {
        if (other.name.ends_with(object.name)) {
            Refuse(Named(object), "it would be given the block of " + Named(other) +
                                      ": choose names of which none is the end of another");
        }
    }
}

bool HasKey(const std::vector<std::string>& keys, const std::string& key) {
    return std::ranges::any_of(
        keys, [&key](const std::string& line) { return line.find(key) != std::string::npos; });
}

float Gravity(const std::vector<std::string>& keys) {
    const std::string key = "*PHYSICS";
    float gravity = 0.0f;
    for (const std::string& line : keys) {
        const std::size_t place = line.find(key);
        if (place != std::string::npos) {
            gravity = std::strtof(line.c_str() + place + key.size(), nullptr);
        }
    }
    return gravity;
}

/// How far the triangles reach down from the centre.
float Reach(const SceneObject& object) {
    const float centre = object.vertices[static_cast<std::size_t>(object.centreVertex)].z;
    float reach = -std::numeric_limits<float>::infinity();
    for (const Int3& face : object.faces) {
        for (const std::int32_t corner : {face.a, face.b, face.c}) {
            reach = std::max(reach, centre - object.vertices[static_cast<std::size_t>(corner)].z);
        }
    }
    return reach;
}

void DemandBody(const SceneObject& object, const std::vector<std::string>& keys) {
    if (object.faces.empty() || !HasKey(keys, "*COLLIDER") || Gravity(keys) == 0.0f) {
        return;
    }
    const float reach = Reach(object);
    // The legs of a leader may be other objects.
    const bool floats = reach < bodyReach - bodyTolerance && !HasKey(keys, "*GROUPPARENT");
    if (floats || reach > bodyReach + bodyTolerance) {
        Refuse(Named(object), "it would " + std::string(floats ? "float" : "sink") +
                                  ": the centre of a body belongs 5 above its lowest point, and stands " +
                                  std::to_string(reach) + " above");
    }
}

}  // namespace

void SceneParts::Add(SceneObject object, Float3 centre, const std::vector<std::string>& keys) {
    AddMarkers(object, centre);
    Add(std::move(object), keys);
}

void SceneParts::Add(SceneObject object, const std::vector<std::string>& keys) {
    DemandWritable(object);
    DemandBlock(objects, object);
    DemandBody(object, keys);
    attributes += AttributeBlock(object.name, keys);
    objects.push_back(std::move(object));
}

void SceneParts::Add(const SceneParts& parts) {
    for (const SceneObject& object : parts.objects) {
        DemandBlock(objects, object);
    }
    objects.insert(objects.end(), parts.objects.begin(), parts.objects.end());
    attributes += parts.attributes;
}

void SceneParts::Write(const std::string& path, const std::vector<SceneLight>& lights) const {
    const std::string ending = ".bin";
    if (!path.ends_with(ending)) {
        Refuse(path, "a scene file's name ends in .bin");
    }
    std::vector<std::string> lines;
    lines.reserve(lights.size());
    for (const SceneLight& light : lights) {
        lines.push_back(LightLine(light));
    }
    WriteSceneFile(path, objects);
    WriteBytes(path.substr(0, path.size() - ending.size()) + ".atr",
               attributes + AttributeBlock("GLOBALS", lines));
}

}  // namespace engine

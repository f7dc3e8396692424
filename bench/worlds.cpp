#include "worlds.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "scene_writer/attribute_text.h"
#include "scene_writer/bytes.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"

namespace {

engine::SceneObject Ground(const std::string& name, float x, float y, float side, std::int64_t triangles,
                           float tiles) {
    const int cells =
        std::max(1, static_cast<int>(std::lround(std::sqrt(static_cast<double>(triangles) / 2))));
    engine::SceneObject ground =
        engine::MakeGrid(name, {x, y, 0}, {side, 0, 0}, {0, side, 0}, cells, cells, tiles);
    for (engine::Float3& vertex : ground.vertices) {
        vertex.z = 0.1f * std::sin(vertex.x) * std::cos(vertex.y);
    }
    AddMarkers(ground, {x + side / 2, y + side / 2, 0});
    return ground;
}

/// Writes the scene unless it has been written before.
/// @param make gives the objects and fills in the text of the attribute file
template <typename Make>
SceneFiles WriteOnce(const std::string& stem, Make make) {
    static std::map<std::string, SceneFiles> written;
    const auto [entry, isNew] = written.try_emplace(stem);
    SceneFiles& files = entry->second;
    if (isNew) {
        files.mesh = stem + ".bin";
        files.attributes = stem + ".atr";
        std::string attributes;
        const std::vector<engine::SceneObject> objects = make(attributes);
        engine::WriteBytes(files.mesh, SceneFileBytes(objects));
        engine::WriteBytes(files.attributes, attributes);
        files.objects = static_cast<std::int64_t>(objects.size());
        for (const engine::SceneObject& object : objects) {
            files.triangles += static_cast<std::int64_t>(object.faces.size());
        }
    }
    return files;
}

}  // namespace

SceneFiles WriteGround(std::int64_t triangles, float tiles) {
    const std::string stem = (tiles == 0.0f ? "plain" : "textured") + std::to_string(triangles);
    return WriteOnce(stem, [&](std::string& attributes) {
        attributes = engine::AttributeBlock("Ground", {"*NOCOLLIDER"});
        return std::vector<engine::SceneObject>{Ground("Ground", 0, 0, 1000, triangles, tiles)};
    });
}

SceneFiles WriteBoxes(std::int64_t objects, const BoxKind& kind) {
    const std::string stem = std::string(kind.equalNames ? "equal" : "different") +
                             (kind.blocks ? "" : "bare") + (kind.textured ? "" : "plain") +
                             std::to_string(objects) + "x" + std::to_string(kind.fillerBytes);
    return WriteOnce(stem, [&](std::string& attributes) {
        const std::string filler(static_cast<std::size_t>(kind.fillerBytes), 'x');
        std::vector<engine::SceneObject> boxes;
        for (std::int64_t i = 0; i < objects; i++) {
            const float x = 3.0f * static_cast<float>(i);
            boxes.push_back(engine::MakeBox(kind.equalNames ? "Box" : "Box" + std::to_string(i), {x, 0, 0},
                                            {x + 1, 1, 1}, kind.textured ? 1.0f : 0.0f));
            AddMarkers(boxes.back(), {x + 0.5f, 0.5f, 0.5f});
            // In the scene equal names are told apart by numbers from 1 up.
            const std::string unique = kind.equalNames && i == 0 ? "Box" : "Box" + std::to_string(i);
            if (kind.blocks) {
                attributes += engine::AttributeBlock(unique, {filler, "*PHYSICS 1 0.5 0.5"});
            }
        }
        return boxes;
    });
}

SceneFiles WriteKeyTracks(std::int64_t keys) {
    return WriteOnce("keys" + std::to_string(keys), [&](std::string&) {
        engine::SceneObject box = engine::MakeBox("Box", {0, 0, 0}, {1, 1, 1});
        AddMarkers(box, {0.5f, 0.5f, 0.5f});
        const engine::SceneKey key{{0.1f, 0, 0}, {0, 0, 1}, 0.01f, {}};
        box.keyTracks.assign(static_cast<std::size_t>(keys) / 100, engine::SceneKeyTrack(100, key));
        return std::vector<engine::SceneObject>{box};
    });
}

void MakeWorld(Scene& scene, std::int64_t bodies, std::int64_t triangles, std::int64_t patches,
               float height, float spacing) {
    const int across = std::max(1, static_cast<int>(std::lround(std::sqrt(static_cast<double>(patches)))));
    const int bodiesAcross =
        std::max(1, static_cast<int>(std::ceil(std::sqrt(static_cast<double>(bodies)))));
    const float side = spacing * static_cast<float>(bodiesAcross);
    const float patchSide = side / static_cast<float>(across);
    std::vector<engine::SceneObject> objects;
    for (int y = 0; y < across; y++) {
        for (int x = 0; x < across; x++) {
            objects.push_back(Ground("Ground", static_cast<float>(x) * patchSide,
                                     static_cast<float>(y) * patchSide, patchSide,
                                     triangles / (across * across), 0));
        }
    }
    std::string attributes;
    for (std::int64_t i = 0; i < bodies; i++) {
        const float x = spacing * (static_cast<float>(i % bodiesAcross) + 0.5f);
        const float y = spacing * (static_cast<float>(i / bodiesAcross) + 0.5f);
        const std::string name = "Body" + std::to_string(i);
        objects.push_back(engine::MakeBox(name, {x - 1, y - 1, height - 1}, {x + 1, y + 1, height + 1}));
        AddMarkers(objects.back(), {x, y, height});
        attributes += engine::AttributeBlock(name, {"*COLLIDER", "*PHYSICS 1 0 0.5"});
    }
    WriteSceneFile("world.bin", objects);
    engine::WriteBytes("world.atr", attributes);
    scene.LoadMesh("world.bin");
}

void AddBoxes(Scene& scene, std::int64_t count, float x) {
    const auto across = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(count))));
    std::vector<engine::SceneObject> boxes;
    for (std::int64_t i = 0; i < count; i++) {
        const float left = x + 8.0f * static_cast<float>(i % across);
        const float front = 8.0f * static_cast<float>(i / across);
        boxes.push_back(
            engine::MakeBox("Box" + std::to_string(i), {left, front, 0}, {left + 4, front + 4, 4}));
        AddMarkers(boxes.back(), {left + 2, front + 2, 2});
    }
    WriteSceneFile("boxes.bin", boxes);
    engine::WriteBytes("boxes.atr", "");
    scene.LoadMesh("boxes.bin");
}

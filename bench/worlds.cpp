#include "worlds.h"

#include <cmath>

#include "scene_writer/attribute_text.h"
#include "scene_writer/bytes.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"

namespace {

SceneObject Ground(const std::string& name, float x, float y, float side, std::int64_t triangles,
                   float tiles) {
    const int cells =
        std::max(1, static_cast<int>(std::lround(std::sqrt(static_cast<double>(triangles) / 2))));
    SceneObject ground = MakeGrid(name, {x, y, 0}, {side, 0, 0}, {0, side, 0}, cells, cells, tiles);
    for (Float3& vertex : ground.vertices) {
        vertex.z = 0.1f * std::sin(vertex.x) * std::cos(vertex.y);
    }
    AddMarkers(ground, {x + side / 2, y + side / 2, 0});
    return ground;
}

}  // namespace

std::string WriteGround(std::int64_t triangles) {
    const std::string stem = "ground" + std::to_string(triangles);
    WriteSceneFile(stem + ".bin", {Ground("Ground", 0, 0, 1000, triangles, 8)});
    WriteBytes(stem + ".atr", AttributeBlock("Ground", {"*NOCOLLIDER"}));
    return stem + ".bin";
}

std::string WriteBoxes(std::int64_t objects, bool equalNames, std::int64_t fillerBytes) {
    const std::string stem =
        (equalNames ? "equal" : "different") + std::to_string(objects) + "x" + std::to_string(fillerBytes);
    const std::string filler(static_cast<std::size_t>(fillerBytes), 'x');
    std::vector<SceneObject> boxes;
    std::string attributes;
    for (std::int64_t i = 0; i < objects; i++) {
        const float x = 3.0f * static_cast<float>(i);
        boxes.push_back(
            MakeBox(equalNames ? "Box" : "Box" + std::to_string(i), {x, 0, 0}, {x + 1, 1, 1}, 1));
        AddMarkers(boxes.back(), {x + 0.5f, 0.5f, 0.5f});
        // In the scene equal names are told apart by numbers from 1 up.
        const std::string unique = equalNames && i == 0 ? "Box" : "Box" + std::to_string(i);
        attributes += AttributeBlock(unique, {filler, "*PHYSICS 1 0.5 0.5"});
    }
    WriteSceneFile(stem + ".bin", boxes);
    WriteBytes(stem + ".atr", attributes);
    return stem + ".bin";
}

void MakeWorld(Scene& scene, std::int64_t bodies, std::int64_t triangles, std::int64_t patches,
               float height) {
    const int across = std::max(1, static_cast<int>(std::lround(std::sqrt(static_cast<double>(patches)))));
    const int bodiesAcross =
        std::max(1, static_cast<int>(std::ceil(std::sqrt(static_cast<double>(bodies)))));
    const float side = 20.0f * static_cast<float>(bodiesAcross);
    const float patchSide = side / static_cast<float>(across);
    std::vector<SceneObject> objects;
    for (int y = 0; y < across; y++) {
        for (int x = 0; x < across; x++) {
            objects.push_back(Ground("Ground", static_cast<float>(x) * patchSide,
                                     static_cast<float>(y) * patchSide, patchSide,
                                     triangles / (across * across), 0));
        }
    }
    std::string attributes;
    for (std::int64_t i = 0; i < bodies; i++) {
        const float x = 20.0f * (static_cast<float>(i % bodiesAcross) + 0.5f);
        const float y = 20.0f * (static_cast<float>(i / bodiesAcross) + 0.5f);
        const std::string name = "Body" + std::to_string(i);
        objects.push_back(MakeBox(name, {x - 1, y - 1, height - 1}, {x + 1, y + 1, height + 1}));
        AddMarkers(objects.back(), {x, y, height});
        attributes += AttributeBlock(name, {"*COLLIDER", "*PHYSICS 1 0 0.5"});
    }
    WriteSceneFile("world.bin", objects);
    WriteBytes("world.atr", attributes);
    scene.LoadMesh("world.bin");
}

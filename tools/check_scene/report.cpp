#include "check_scene/report.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <ostream>
#include <set>
#include <vector>

#include "app/world_loading.h"
#include "check_scene/mesh_facts.h"
#include "check_scene/stand_ins.h"
#include "engine/engine.h"
#include "engine/singletons.h"
#include "scene/scene.h"
#include "services/timer.h"

namespace {

std::string NameOf(const Scene& scene, std::int32_t id) {
    return id >= 0 && id < scene.objectCount ? scene.objects[id].name : "none";
}

/// Each image counts once, however many textures share it.
std::int64_t TextureBytes() {
    std::int64_t bytes = 0;
    for (const KeptImage& image : theReports.images) {
        if (image.pixels != nullptr) {
            bytes += std::int64_t{image.width} * image.height * image.bytesPerPixel;
        }
    }
    return bytes;
}

std::string Size(std::int64_t bytes) {
    return bytes < 1048576 ? Shown(std::round(static_cast<double>(bytes) / 1024.0)) + " KiB"
                           : Shown(std::round(static_cast<double>(bytes) / 104857.6) / 10.0) + " MiB";
}

/// One for each object that isn't invisible, and one for each sprite; for each player that sees.
std::int64_t DrawCalls(const Scene& scene) {
    std::int64_t calls = startSpriteCount;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        calls += scene.objects[id].attributes[invisibleAttribute] == 1 ? 0 : 1;
    }
    return calls;
}

void PrintSettings(std::ostream& out, const World& world) {
    const Engine& engine = *world.engine;
    out << "Window " << engine.windowRect.right << " x " << engine.windowRect.bottom << ", "
        << int{engine.colourBits} << " bits" << (engine.fullScreen ? ", full screen" : "")
        << "; a frame lasts " << theTimer->framePeriod << " ms; drawn from " << Shown(engine.nearPlane)
        << " to " << Shown(engine.farPlane) << "\n";
}

void PrintPlayer(std::ostream& out, const Scene& scene, std::int32_t index) {
    const Player& player = scene.players[index];
    const char* const devices[] = {"keyboard", "mouse", "joystick"};
    const bool hasDevice = player.controller >= 0 && player.controller < 3;
    out << "Player " << index << ": by " << (hasDevice ? devices[player.controller] : "no device")
        << ", moves " << NameOf(scene, player.playerObject) << ", sees through "
        << NameOf(scene, player.cameraObject) << " from vertex " << player.eyeVertex << " to "
        << player.lookVertex << ", in " << player.viewportWidth << " x " << player.viewportHeight << " at "
        << player.viewportX << ", " << player.viewportY << "\n";
}

std::string Keys(const Block& block) {
    std::string keys;
    for (const KeyUse& use : block.keys) {
        if (use.key == nullptr) {
            continue;
        }
        keys += (keys.empty() ? "" : ", ") + use.key->name.substr(1);
        for (const NumberRead& number : use.numbers) {
            keys += " " + Shown(number.value);
        }
        keys += use.name.empty() ? "" : " " + use.name;
    }
    return keys;
}

void PrintObject(std::ostream& out, const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    out << "Object " << id << " " << object.name << ": " << object.faceValueCount / 3 << " triangles, "
        << object.vertexValueCount / 3 << " vertices";
    if (object.texVertexValueCount > 0) {
        out << ", " << object.texVertexValueCount / 3 << " texture vertices";
    }
    if (object.faceValueCount > 0) {
        const MeshFacts facts(object);
        out << ", from " << ShownPoint(facts.low) << " to " << ShownPoint(facts.high);
    }
    if (object.vertexValueCount > 0) {
        Vector centre;
        object.GetVertex(centre, object.centreVertex);
        out << ", radius " << Shown(std::round(object.radius * 1000.0f) / 1000.0f) << " about "
            << ShownPoint(centre);
    }
    out << "\n    markers: centre " << object.centreVertex << ", axes " << object.xAxisVertex << " "
        << object.yAxisVertex << " " << object.zAxisVertex << ", spare " << object.spareVertex << "\n";
    if (const Block* block = world.BlockOf(id)) {
        out << "    block in line " << world.SourceOf(id).attributes.LineOf(block->headBegin) << ": "
            << Keys(*block) << "\n";
    }
    for (std::int32_t i = 0; i < object.keyTrackCount; i++) {
        out << "    key track " << i << ": " << Counted(object.keyTracks[i].keyCount, "key") << "\n";
    }
}

void PrintLight(std::ostream& out, const Light& light, std::int32_t index) {
    out << "Light " << index << ": " << (light.position[3] == 0.0f ? "from the direction " : "at ")
        << ShownPoint(Vector(light.position[0], light.position[1], light.position[2])) << ", diffuse "
        << ShownPoint(Vector(light.diffuse[0], light.diffuse[1], light.diffuse[2]));
    if (light.spotCutoff <= 90.0f) {
        out << ", a spot of " << Shown(light.spotCutoff) << " degrees towards "
            << ShownPoint(Vector(light.spotDirection[0], light.spotDirection[1], light.spotDirection[2]));
    }
    out << "\n";
}

void PrintGroup(std::ostream& out, const Scene& scene, std::int32_t group) {
    std::string parent = "no parent";
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        if (scene.objects[id].groupParent == group) {
            parent = scene.objects[id].name;
        }
    }
    out << "Group " << group << ": " << parent << " leads";
    for (std::int32_t slot = 0; slot < scene.groups[group].capacity; slot++) {
        if (scene.groups[group].ids[slot] != -1) {
            out << " " << NameOf(scene, scene.groups[group].ids[slot]);
        }
    }
    out << "\n";
}

}  // namespace

void PrintCost(std::ostream& out, const World& world) {
    const Scene& scene = *world.scene;
    std::int64_t triangles = 0;
    std::vector<std::int32_t> ids(static_cast<std::size_t>(scene.objectCount));
    std::iota(ids.begin(), ids.end(), 0);
    for (const std::int32_t id : ids) {
        triangles += scene.objects[id].faceValueCount / 3;
    }
    std::set<std::string> names;
    for (const KeptImage& image : theReports.images) {
        names.insert(image.path);
    }
    const std::int64_t calls = DrawCalls(scene);
    out << Counted(scene.objectCount, "object") << ", " << Counted(triangles, "triangle") << ", "
        << Counted(static_cast<std::int64_t>(names.size()), "texture") << " (" << Size(TextureBytes())
        << "), " << Counted(scene.lightCount, "light") << ", " << Counted(scene.playerCount, "player")
        << "; " << Counted(calls, "draw call") << " a frame for each player\n";
    const auto most = static_cast<std::ptrdiff_t>(std::min<std::size_t>(ids.size(), 5));
    std::ranges::partial_sort(ids, ids.begin() + most, [&](std::int32_t left, std::int32_t right) {
        return scene.objects[left].faceValueCount > scene.objects[right].faceValueCount;
    });
    const char* separator = "most triangles: ";
    for (std::ptrdiff_t i = 0; i < most; i++) {
        const Object& object = scene.objects[ids[static_cast<std::size_t>(i)]];
        out << separator << object.name << " " << object.faceValueCount / 3;
        separator = ", ";
    }
    if (most > 0) {
        out << "\n";
    }
}

void PrintWorld(std::ostream& out, const World& world) {
    const Scene& scene = *world.scene;
    PrintSettings(out, world);
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        PrintPlayer(out, scene, i);
    }
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        PrintObject(out, world, id);
    }
    for (const KeptImage& image : theReports.images) {
        out << "Texture " << image.path << ": ";
        if (image.pixels == nullptr) {
            out << "no image\n";
        } else {
            out << image.width << " x " << image.height
                << (image.bytesPerPixel == 4 ? ", with alpha\n" : "\n");
        }
    }
    for (std::int32_t i = 0; i < scene.lightCount; i++) {
        PrintLight(out, scene.lights[i], i);
    }
    for (std::int32_t group = 0; group < scene.groupCount; group++) {
        PrintGroup(out, scene, group);
    }
}

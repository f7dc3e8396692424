#include "check_scene/report.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
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

using Json = nlohmann::ordered_json;

std::string NameOf(const Scene& scene, std::int32_t id) {
    return id >= 0 && id < scene.objectCount ? Utf8(scene.objects[id].name) : "none";
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

double Rounded(float value) {
    return std::round(double{value} * 100.0) / 100.0;
}

Json Point(Vector point) {
    return {Rounded(point.x), Rounded(point.y), Rounded(point.z)};
}

Json Point(const float* values) {
    return Point(Vector(values[0], values[1], values[2]));
}

/// Each key that counts, with its arguments.
Json Keys(const std::vector<KeyUse>& uses) {
    Json keys = Json::array();
    for (const KeyUse& use : uses) {
        if (use.key == nullptr) {
            continue;
        }
        std::string text = use.key->name.substr(1);
        for (const NumberRead& number : use.numbers) {
            text += " " + Shown(number.value);
        }
        keys.push_back(Utf8(text + (use.name.empty() ? "" : " " + use.name)));
    }
    return keys;
}

Json Settings(const World& world) {
    const Engine& engine = *world.engine;
    return {{"window", {engine.windowRect.right, engine.windowRect.bottom}},
            {"bits", engine.colourBits},
            {"full screen", engine.fullScreen},
            {"milliseconds a frame", theTimer->framePeriod},
            {"near plane", Rounded(engine.nearPlane)},
            {"far plane", Rounded(engine.farPlane)},
            {"keys", Keys(world.settingsKeys)}};
}

Json OnePlayer(const Scene& scene, std::int32_t index) {
    const Player& player = scene.players[index];
    const char* const devices[] = {"keyboard", "mouse", "joystick"};
    const bool hasDevice = player.controller >= 0 && player.controller < 3;
    return {
        {"device", hasDevice ? devices[player.controller] : "none"},
        {"moves", NameOf(scene, player.playerObject)},
        {"camera", NameOf(scene, player.cameraObject)},
        {"eye vertex", player.eyeVertex},
        {"look vertex", player.lookVertex},
        {"viewport", {player.viewportX, player.viewportY, player.viewportWidth, player.viewportHeight}}};
}

Json OneObject(const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    Json listed = {{"name", NameOf(*world.scene, id)},
                   {"triangles", object.faceValueCount / 3},
                   {"vertices", object.vertexValueCount / 3},
                   {"texture vertices", object.texVertexValueCount / 3}};
    if (object.faceValueCount > 0) {
        const MeshFacts facts(object);
        listed["low"] = Point(facts.low);
        listed["high"] = Point(facts.high);
    }
    if (object.vertexValueCount > 0) {
        listed["radius"] = Rounded(object.radius);
        listed["centre"] = Point(CentreOf(object));
    }
    listed["markers"] = {object.centreVertex, object.xAxisVertex, object.yAxisVertex, object.zAxisVertex,
                         object.spareVertex};
    if (const Block* block = world.BlockOf(id)) {
        listed["line"] = world.SourceOf(id).attributes.LineOf(block->headBegin);
        listed["keys"] = Keys(block->keys);
    }
    for (std::int32_t i = 0; i < object.keyTrackCount; i++) {
        listed["key tracks"].push_back(object.keyTracks[i].keyCount);
    }
    return listed;
}

Json OneTexture(const KeptImage& image) {
    Json listed = {{"name", Utf8(image.path)}};
    if (image.pixels != nullptr) {
        listed["size"] = {image.width, image.height};
        listed["alpha"] = image.bytesPerPixel == 4;
    }
    return listed;
}

Json OneLight(const Light& light) {
    Json listed = {{light.position[3] == 0.0f ? "direction" : "position", Point(light.position)},
                   {"diffuse", Point(light.diffuse)}};
    if (light.spotCutoff <= 90.0f) {
        listed["spot"] = light.spotCutoff;
        listed["towards"] = Point(light.spotDirection);
    }
    return listed;
}

Json OneGroup(const Scene& scene, std::int32_t group) {
    Json listed = {{"leader", "none"}, {"members", Json::array()}};
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        if (scene.objects[id].groupParent == group) {
            listed["leader"] = NameOf(scene, id);
        }
    }
    for (std::int32_t slot = 0; slot < scene.groups[group].capacity; slot++) {
        if (scene.groups[group].ids[slot] != -1) {
            listed["members"].push_back(NameOf(scene, scene.groups[group].ids[slot]));
        }
    }
    return listed;
}

/// Within a line: lists in parentheses, numbers short.
std::string TextOf(const Json& value) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_number_float()) {
        return Shown(value.get<double>());
    }
    if (!value.is_array()) {
        return value.dump();
    }
    std::string text;
    for (const Json& part : value) {
        text += (text.empty() ? "(" : ", ") + TextOf(part);
    }
    return text.empty() ? "()" : text + ")";
}

void PrintThing(std::ostream& out, const std::string& title, const Json& thing) {
    const char* separator = ": ";
    out << title;
    for (const auto& [name, value] : thing.items()) {
        out << separator << name << ' ' << TextOf(value);
        separator = ", ";
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
        out << separator << Utf8(object.name) << " " << object.faceValueCount / 3;
        separator = ", ";
    }
    if (most > 0) {
        out << "\n";
    }
}

Json JsonOf(const World& world) {
    const Scene& scene = *world.scene;
    Json listing = {{"settings", Settings(world)}};
    const auto add = [&](const char* kind, std::int32_t count, const auto& listed) {
        listing[kind] = Json::array();
        for (std::int32_t i = 0; i < count; i++) {
            listing[kind].push_back(listed(i));
        }
    };
    add("players", scene.playerCount, [&](std::int32_t i) { return OnePlayer(scene, i); });
    add("objects", scene.objectCount, [&](std::int32_t i) { return OneObject(world, i); });
    add("textures", static_cast<std::int32_t>(theReports.images.size()),
        [&](std::int32_t i) { return OneTexture(theReports.images[static_cast<std::size_t>(i)]); });
    add("lights", scene.lightCount, [&](std::int32_t i) { return OneLight(scene.lights[i]); });
    add("groups", scene.groupCount, [&](std::int32_t i) { return OneGroup(scene, i); });
    return listing;
}

void PrintListing(std::ostream& out, const Json& listing) {
    for (const auto& [kind, things] : listing.items()) {
        if (things.is_object()) {
            PrintThing(out, kind, things);
            continue;
        }
        const std::string one = kind.substr(0, kind.size() - 1);  // "object 2" of the objects
        for (std::size_t i = 0; i < things.size(); i++) {
            PrintThing(out, one + " " + std::to_string(i), things[i]);
        }
    }
}

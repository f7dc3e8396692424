#include <cmath>
#include <string>

#include "check_scene/checks.h"
#include "check_scene/drop.h"
#include "scene/scene.h"

// Spawn points: whether they find their player, and where the player comes to stand.

namespace {

/// The object that bears the player's spawn point; -1 if none does.
std::int32_t SpawnObject(const World& world, std::int32_t player) {
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        if (world.KeyOf(id, "*PLAYERSPAWNPOINT", player) != nullptr) {
            return id;
        }
    }
    return -1;
}

void CheckDrop(Findings& findings, const World& world, std::int32_t player, const Place& place) {
    const Scene& scene = *world.scene;
    const std::int32_t body = scene.players[player].playerObject;
    const Drop drop = DropBody(scene, body);
    const std::string name = "player " + std::to_string(player);
    const std::string start = name + " starts at " + ShownPoint(drop.start);
    constexpr float farAbove = 20.0f;
    if (!drop.obstacle.empty()) {
        std::string text = start + ", inside object \"" + drop.obstacle + "\"";
        text +=
            drop.fallsForEver ? ", and falls through" : ", and comes to rest at " + ShownPoint(drop.rest);
        findings.Error(place, text + "; the start is the body's middle and belongs 5.05 above the floor");
    } else if (!drop.floor.empty()) {
        findings.Error(place, start + " and " + (drop.fallsForEver ? "falls for ever" : "finds no hold") +
                                  ": object \"" + drop.floor +
                                  "\" lies below, but its triangles look down; list their corners "
                                  "counter-clockwise as seen from above");
    } else if (drop.fallsForEver) {
        findings.Error(place, start + " and falls for ever: there is no floor below");
    } else if (drop.start.z - drop.rest.z > farAbove) {
        findings.Warn(place, start + " and falls " + Shown(std::round(drop.start.z - drop.rest.z)) +
                                 " units, to " + ShownPoint(drop.rest));
    }
}

void CheckStart(Findings& findings, const World& world, std::int32_t player) {
    const Scene& scene = *world.scene;
    const std::int32_t body = scene.players[player].playerObject;
    const std::int32_t spawn = SpawnObject(world, player);
    const std::string name = "player " + std::to_string(player);
    if (spawn == -1) {
        Vector place;
        scene.objects[body].GetVertex(place, scene.objects[body].centreVertex);
        findings.Warn(world.At(body, "*PLAYEROBJECT", player),
                      name + " has no *PLAYERSPAWNPOINT and starts where the object was modelled, at " +
                          ShownPoint(place));
    } else if (spawn <= body) {
        findings.Error(world.At(spawn, "*PLAYERSPAWNPOINT", player),
                       "*PLAYERSPAWNPOINT finds no " + name + " yet: " + Named(scene.objects[spawn]) +
                           " has to come behind " + Named(scene.objects[body]) + " in the scene file");
    } else if (!scene.objects[spawn].HasVertex(0)) {
        findings.Error(world.At(spawn, "*PLAYERSPAWNPOINT", player),
                       Named(scene.objects[spawn]) + " has no vertex, and a spawn point is its vertex 0");
    }
    const ObjectSource& source = world.Of(body);
    if (scene.objects[body].collider != nullptr && scene.objects[body].physics != nullptr &&
        !source.meshDropped && scene.objects[body].vertexValueCount > 0) {
        CheckDrop(findings, world, player,
                  spawn == -1 ? world.At(body, "*PLAYEROBJECT", player)
                              : world.At(spawn, "*PLAYERSPAWNPOINT", player));
    }
}

}  // namespace

void CheckSpawnPoints(Findings& findings, const World& world) {
    for (std::int32_t player = 0; player < world.scene->playerCount; player++) {
        const std::int32_t body = world.scene->players[player].playerObject;
        if (body != -1) {
            CheckStart(findings, world, player);
        }
    }
}

#include <cmath>
#include <string>
#include <vector>

#include "check_scene/checks.h"
#include "check_scene/drop.h"
#include "scene/scene.h"

// Spawn points: whether they find their player, and where the player comes to stand.

namespace {

/// The objects that bear the player's spawn point.
std::vector<std::int32_t> SpawnObjects(const World& world, std::int32_t player) {
    std::vector<std::int32_t> objects;
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        if (world.KeyOf(id, "*PLAYERSPAWNPOINT", player) != nullptr) {
            objects.push_back(id);
        }
    }
    return objects;
}

/// Drops the body from where the player starts.
/// @param hasSpawn false for a player who starts where the object was modelled: that is judged more
/// strictly,
///        since it is seldom intended
void CheckDrop(Findings& findings, const World& world, std::int32_t player, const Place& place,
               bool hasSpawn) {
    const Drop drop = DropBody(*world.scene, world.scene->players[player].playerObject);
    std::string start = "player " + std::to_string(player);
    start += hasSpawn ? " starts" : " has no *PLAYERSPAWNPOINT and starts where the object was modelled,";
    start += " at " + ShownPoint(drop.start);
    const float farAbove = hasSpawn ? 20.0f : 1.0f;
    if (!drop.obstacle.empty()) {
        std::string text = start + ", inside object \"" + drop.obstacle + "\"";
        text +=
            drop.fallsForEver ? ", and falls through" : ", and comes to rest at " + ShownPoint(drop.rest);
        findings.Error("spawn-in-solid", place,
                       text + "; the start is the body's middle and belongs 5.05 above the floor");
    } else if (!drop.floor.empty()) {
        findings.Error("spawn-floor-inverted", place,
                       start + " and " + (drop.fallsForEver ? "falls for ever" : "finds no hold") +
                           ": object \"" + drop.floor +
                           "\" lies below, but its triangles look down; list their corners "
                           "counter-clockwise as seen from above");
    } else if (drop.fallsForEver) {
        findings.Error("spawn-above-nothing", place,
                       start + " and falls for ever: there is no floor below");
    } else if (drop.start.z - drop.rest.z > farAbove) {
        findings.Warn("spawn-falls", place,
                      start + " and falls " + Shown(std::round(drop.start.z - drop.rest.z)) +
                          " units, to " + ShownPoint(drop.rest));
    }
}

void CheckSpawn(Findings& findings, const World& world, std::int32_t player, std::int32_t spawn) {
    const Scene& scene = *world.scene;
    const std::int32_t body = scene.players[player].playerObject;
    const Place place = world.At(spawn, "*PLAYERSPAWNPOINT", player);
    if (spawn <= body) {
        findings.Error("spawn-before-player", place,
                       "*PLAYERSPAWNPOINT finds no player " + std::to_string(player) +
                           " yet: " + Named(scene.objects[spawn]) + " has to come after " +
                           Named(scene.objects[body]) + " in the scene file");
    } else if (!scene.objects[spawn].HasVertex(0)) {
        findings.Error("spawn-without-vertex", place,
                       Named(scene.objects[spawn]) + " has no vertex, and a spawn point is its vertex 0");
    }
}

void CheckStart(Findings& findings, const World& world, std::int32_t player) {
    const Object& body = world.scene->objects[world.scene->players[player].playerObject];
    const std::vector<std::int32_t> spawns = SpawnObjects(world, player);
    for (const std::int32_t spawn : spawns) {
        CheckSpawn(findings, world, player, spawn);
    }
    if (spawns.size() > 1) {
        findings.Error("spawn-repeated", world.At(spawns[1], "*PLAYERSPAWNPOINT", player),
                       "player " + std::to_string(player) +
                           " has several spawn points: they add up, and lead elsewhere; leave one");
        return;
    }
    const std::int32_t id = world.scene->players[player].playerObject;
    const Place place = spawns.empty() ? world.At(id, "*PLAYEROBJECT", player)
                                       : world.At(spawns[0], "*PLAYERSPAWNPOINT", player);
    if (spawns.empty() && world.scene->players[player].controller == 1) {
        findings.Warn("no-spawn", place,
                      "player " + std::to_string(player) +
                          " has no *PLAYERSPAWNPOINT: the first frame, in which it would keep the mouse "
                          "out, turns the view to wherever the mouse happens to lie");
    }
    if (body.collider != nullptr && body.physics != nullptr && body.vertexValueCount > 0) {
        CheckDrop(findings, world, player, place, !spawns.empty());
    }
}

}  // namespace

void CheckSpawnPoints(Findings& findings, const World& world) {
    for (std::int32_t player = 0; player < world.scene->playerCount; player++) {
        const std::int32_t body = world.scene->players[player].playerObject;
        if (body != -1 && !StandsStill(world.scene->objects[body])) {
            CheckStart(findings, world, player);
        }
    }
}

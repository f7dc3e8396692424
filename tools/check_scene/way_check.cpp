#include <cmath>

#include "check_scene/checks.h"
#include "scene/scene.h"

// Where players get on foot: who is shut in.

void CheckWays(Findings& findings, const World& world) {
    const Walks& walks = world.walks;
    constexpr double little = 0.04;
    constexpr std::size_t leastSquares = 50;  // a world of one small room is whole with few
    if (walks.isTooLarge) {
        findings.notes.emplace_back(
            "nobody walked through this world, as it has too many triangles for that: where players get "
            "wasn't looked at");
    }
    for (const Walks::Player& player : walks.players) {
        const double share = static_cast<double>(player.reached) / static_cast<double>(walks.floor.size());
        const std::string gets = "player " + std::to_string(player.index) + " gets over ";
        const std::string percent = Shown(std::round(100.0 * share)) + " % of the floor";
        std::string& note = findings.notes.emplace_back(gets);
        note += (walks.isWhole ? "" : "at least ") + percent + " on foot";
        note += player.fallsOut ? ", and falls out of the world at " + ShownPoint(player.edge) : "";
        if (walks.isWhole && walks.floor.size() >= leastSquares && share < little && !player.fallsOut) {
            findings.Warn(
                "player-shut-in",
                world.At(world.scene->players[player.index].playerObject, "*PLAYEROBJECT", player.index),
                gets + percent +
                    " only: the ways out are too narrow, too low or too high; a body is 4 "
                    "wide and 10 high, and climbs steps up to about 3");
        }
    }
}

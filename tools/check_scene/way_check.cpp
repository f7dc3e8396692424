#include <cmath>

#include "check_scene/checks.h"
#include "scene/scene.h"

// Where players get on foot: who is shut in, what bars the way, where they fall.

namespace {

std::string Percent(double share) {
    return Shown(std::round(100.0 * share)) + " %";
}

}  // namespace

void CheckWays(Findings& findings, const World& world) {
    const Walks& walks = world.walks;
    constexpr double little = 0.04;
    constexpr std::size_t leastSquares = 50;  // a world of one small room is whole with few
    if (walks.isTooLarge) {
        findings.notes.emplace_back(
            "nobody walked through this world, as it has too many triangles for that: where players get "
            "wasn't looked at");
    }
    const bool isSound = findings.ErrorCount() == 0;  // who begins in a wall or has no body walks badly
    for (const Walks::Player& player : walks.players) {
        const double share = static_cast<double>(player.reached) / static_cast<double>(walks.floor.size());
        const std::string name = "player " + std::to_string(player.index);
        const std::string gets =
            name + " gets over " + (walks.isWhole ? "" : "at least ") + Percent(share) + " of the floor";
        findings.notes.push_back(
            gets + " on foot" +
            (player.fallsOut ? ", and falls out of the world at " + ShownPoint(player.edge) : ""));
        const Place at =
            world.At(world.scene->players[player.index].playerObject, "*PLAYEROBJECT", player.index);
        if (isSound && player.fallsWithinWalls) {
            findings.Warn("floor-missing", at,
                          name + " falls out of the world near " + ShownPoint(player.edge) +
                              ", though walls stand around: a part of the floor is missing there");
        } else if (walks.isWhole && walks.floor.size() >= leastSquares && share < little &&
                   !player.fallsOut && walks.barriers.empty()) {
            findings.Warn("player-shut-in", at,
                          gets +
                              " only: the ways out are too narrow, too low or too high; a body is 4 "
                              "wide and 10 high, and climbs steps up to about 3");
        }
    }
    for (const Walks::Barrier& barrier : isSound ? walks.barriers : std::vector<Walks::Barrier>()) {
        const std::int32_t first = walks.players.front().index;
        const Place at = world.At(world.scene->players[first].playerObject, "*PLAYEROBJECT", first);
        const std::string beyond = "nobody gets to " + Percent(barrier.share) + " of the floor: ";
        if (barrier.step > 0.0f) {
            findings.Warn("step-high", at,
                          beyond + "near " + ShownPoint(barrier.place) + " it is " +
                              Shown(std::round(10.0f * barrier.step) / 10.0f) +
                              " higher, and bodies climb steps up to about 3");
        } else {
            findings.Warn("way-narrow", at,
                          beyond + "the way near " + ShownPoint(barrier.place) +
                              " is too narrow or too low; a body is 4 wide and 10 high");
        }
    }
}

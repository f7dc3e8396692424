#include "check_scene/walk.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>

#include "check_scene/barriers.h"
#include "check_scene/floor_net.h"
#include "check_scene/subject.h"
#include "scene/scene.h"
#include "simulation/group_members.h"
#include "simulation/object_bounds.h"

namespace {

constexpr int mostSweeps = 40'000;  ///< of all players together: a tenth of a second or two
constexpr std::int64_t mostTriangles = 300'000;

/// What stays where it is and stops bodies.
std::vector<std::int32_t> FindObstacles(const Scene& scene) {
    std::set<std::int32_t> members;
    for (std::int32_t group = 0; group < scene.groupCount; group++) {
        ForEachMember(scene, group, [&](std::int32_t id) { members.insert(id); });
    }
    std::vector<std::int32_t> obstacles;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        if (object.collider == nullptr && object.physics == nullptr && object.faceValueCount > 0 &&
            object.attributes[collidableAttribute] != 0 && !members.contains(id)) {
            obstacles.push_back(id);
        }
    }
    return obstacles;
}

void MakeWalker(const Scene& scene, const std::vector<std::int32_t>& obstacles, std::int32_t player,
                Walker& walker) {
    const Object& body = scene.objects[scene.players[player].playerObject];
    if (walker.world.objectCount == 0) {
        walker.world.AddObjects(static_cast<std::int32_t>(obstacles.size()) + 1);
        for (std::size_t i = 0; i < obstacles.size(); i++) {
            scene.objects[obstacles[i]].CopyTo(walker.world.objects[i + 1]);
        }
        walker.world.objects[0].ResizeFaces(0);
        walker.world.objects[0].ResizeVertices(1);
        walker.world.objects[0].MakeCollider();
        walker.world.objects[0].MakePhysics();
        ObjectBounds::Of(walker.world).BeginStep();  // one that never ends: what is around stands still
    }
    body.physics->CopyTo(*walker.world.objects[0].physics);
    walker.gravity = body.physics->gravity;
    walker.speed = scene.players[player].maxSpeed;
}

/// @param reached takes the squares that the player comes to, and where a body stood there; empty before
Walks::Player Flood(Walker& walker, const FloorNet& net, std::int32_t player, Vector start,
                    std::map<Cell, Vector>& reached, bool& isWhole) {
    Walks::Player result{player, 0, false, false, {}};
    walker.PlaceAt(start);
    walker.Settle();
    std::vector<Vector> open;
    const auto arrive = [&](Vector from) {
        if (walker.IsOut()) {
            if (!result.fallsOut) {
                result.fallsOut = true;
                result.edge = from;
                result.fallsWithinWalls = IsWithinWalls(walker, net, from);
            }
            return;
        }
        const Vector feet = walker.position - Vector(0.0f, 0.0f, Walker::halfHeight);
        if (reached.emplace(net.CellOf(feet), walker.position).second) {
            open.push_back(walker.position);
        }
    };
    arrive(start);
    for (std::size_t next = 0; next < open.size(); next++) {
        for (const auto& [x, y] : {std::pair{1.0f, 0.0f}, {-1.0f, 0.0f}, {0.0f, 1.0f}, {0.0f, -1.0f}}) {
            if (walker.sweeps > mostSweeps) {
                isWhole = false;
                return result;
            }
            const Vector from = open[next];
            // To the middle of the next square, so that what each step falls short of doesn't add up.
            const Vector direction(x, y, 0.0f);
            const float distance = net.side + (net.MiddleOf(from) - from).Dot(direction);
            if (reached.contains(
                    net.CellOf(from + direction * distance - Vector(0.0f, 0.0f, Walker::halfHeight)))) {
                continue;
            }
            walker.PlaceAt(from);
            walker.Stride(direction, distance);
            arrive(from);
        }
    }
    return result;
}

}  // namespace

Walks WalkThrough(const Scene& scene) {
    Walks walks;
    const std::vector<std::int32_t> obstacles = FindObstacles(scene);
    std::int64_t triangles = 0;
    for (const std::int32_t id : obstacles) {
        triangles += scene.objects[id].faceValueCount / 3;
    }
    walks.isTooLarge = triangles > mostTriangles;
    if (triangles == 0 || walks.isTooLarge) {
        return walks;
    }
    FloorNet net;
    net.Measure(scene, obstacles);
    for (const std::int32_t id : obstacles) {
        net.Add(scene.objects[id]);
    }
    walks.side = net.side;
    walks.floor = net.Squares();
    std::map<Cell, Vector> reached;  // by the last player
    std::map<Cell, Vector> stands;   // of all players
    Walker walker;
    walker.bottom = net.low.z - 4.0f * Walker::halfHeight;
    for (std::int32_t player = 0; player < scene.playerCount; player++) {
        Vector start;
        if (!FindStart(scene, player, start) ||
            scene.objects[scene.players[player].playerObject].collider == nullptr ||
            scene.objects[scene.players[player].playerObject].physics == nullptr) {
            continue;
        }
        MakeWalker(scene, obstacles, player, walker);
        const Cell startCell = net.CellOf(start - Vector(0.0f, 0.0f, Walker::halfHeight));
        if (!walks.players.empty() && FindNear(reached, startCell) != reached.end()) {
            walks.players.push_back(walks.players.back());  // who starts where another came gets as far
            walks.players.back().index = player;
            continue;
        }
        reached.clear();
        walks.players.push_back(Flood(walker, net, player, start, reached, walks.isWhole));
        for (Walks::Square& square : walks.floor) {
            const bool isReached = FindNear(reached, net.CellOf(square.place)) != reached.end();
            square.isReached = square.isReached || isReached;
            walks.players.back().reached += isReached ? 1 : 0;
        }
        stands.insert(reached.begin(), reached.end());
    }
    if (walks.isWhole && !stands.empty()) {
        walks.barriers = FindBarriers(walker, net, walks.floor, stands);
    }
    return walks;
}

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "check_scene/checks.h"
#include "check_scene/drop.h"
#include "check_scene/mesh_facts.h"
#include "scene/scene.h"
#include "simulation/group_members.h"

// Bodies: whether they are whole, where they begin, and where they come to rest.

namespace {

/// Of a body, in world units: it is 4 wide and 10 high, and its mesh hangs below its centre.
constexpr float halfHeight = 5.0f;
constexpr float centreTolerance = 0.6f;
/// Axes nearer than this push each other away at the start.
constexpr float tooNear = 1.9f;
/// All triangles that are looked through for the bodies that nobody plays.
constexpr std::int64_t triangleBudget = 20'000'000;

struct Start {
    std::int32_t id;
    std::string name;  ///< for findings
    Vector place;      ///< centre of the body in the first frame
    Place at;
};

/// How far the object and the members of its group reach down from its centre; below 0 if nothing does.
float Reach(const Scene& scene, const Object& body, float centre) {
    float lowest = centre + 1.0f;
    const auto lower = [&lowest](const Object& object) {
        for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
            lowest = std::min(lowest, CornerOf(object, corner).z);
        }
    };
    lower(body);
    ForEachMember(scene, body.groupParent, [&](std::int32_t id) { lower(scene.objects[id]); });
    return centre - lowest;
}

/// Whether the object is a whole body that moves.
bool CheckParts(Findings& findings, const World& world, std::int32_t id, bool isPlayed) {
    const Object& object = world.scene->objects[id];
    if (object.physics != nullptr && object.collider == nullptr && !isPlayed) {
        if (object.physics->gravity != 0.0f) {
            findings.Error("physics-without-collider", world.At(id, "*PHYSICS"),
                           Named(object) +
                               " has *PHYSICS and no *COLLIDER: it falls through everything and "
                               "is gone; give it *COLLIDER, or take *PHYSICS out");
        }
        return false;
    }
    if (object.collider != nullptr && object.physics == nullptr && !isPlayed) {
        findings.Warn("collider-without-physics", world.At(id, "*COLLIDER"),
                      Named(object) +
                          " has *COLLIDER and no *PHYSICS: nothing moves it, and others meet an "
                          "upright cylinder of radius 2 in the place of its mesh. What stands "
                          "still is solid without");
        return false;
    }
    return object.collider != nullptr && object.physics != nullptr && !StandsStill(object);
}

void CheckCentre(Findings& findings, const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    const float reach = Reach(*world.scene, object, CentreOf(object).z);
    if (reach >= 0.0f && std::fabs(reach - halfHeight) > centreTolerance) {
        findings.Warn("body-centre", world.At(id),
                      Named(object) + (reach < halfHeight ? " floats" : " sinks") + " by " +
                          Shown(std::round(10.0f * std::fabs(reach - halfHeight)) / 10.0f) +
                          ": the centre of a body belongs 5 above its lowest point, and stands " +
                          Shown(std::round(10.0f * reach) / 10.0f) + " above");
    }
}

/// For a body that nobody plays: those of players are dropped with their spawn points.
void CheckFall(Findings& findings, const World& world, const Start& start, std::int64_t budget) {
    const Drop drop = DropBody(*world.scene, start.id, budget);
    constexpr float stuck = 0.3f;
    if (!drop.obstacle.empty() && drop.depth > stuck) {
        findings.Error("start-in-solid", start.at,
                       start.name + " begins at " + ShownPoint(drop.start) + " inside object \"" +
                           drop.obstacle + "\"" + (drop.fallsForEver ? ", and falls through" : "") +
                           ": a body is 4 wide and 10 high");
    } else if (!drop.floor.empty()) {
        findings.Error("start-floor-inverted", start.at,
                       start.name + " finds no hold: object \"" + drop.floor +
                           "\" lies below, but its triangles look down");
    } else if (drop.fallsForEver) {
        findings.Error(
            "start-above-nothing", start.at,
            start.name + " falls for ever from " + ShownPoint(drop.start) + ": there is no floor below");
    }
}

/// Bodies that begin within each other.
void CheckPairs(Findings& findings, std::vector<Start>& starts) {
    std::ranges::sort(starts, {}, [](const Start& start) { return start.place.x; });
    for (std::size_t i = 0; i < starts.size(); i++) {
        for (std::size_t j = i + 1; j < starts.size() && starts[j].place.x - starts[i].place.x < tooNear;
             j++) {
            const Vector apart = starts[j].place - starts[i].place;
            if (std::hypot(apart.x, apart.y) < tooNear && std::fabs(apart.z) < halfHeight) {
                const Start& later = starts[starts[i].id < starts[j].id ? j : i];
                const Start& earlier = starts[starts[i].id < starts[j].id ? i : j];
                findings.Error("start-shared", later.at,
                               later.name + " begins in the place of " + earlier.name + ", at " +
                                   ShownPoint(later.place) + ": bodies need 4 between their centres");
            }
        }
    }
}

}  // namespace

void CheckBodies(Findings& findings, const World& world) {
    const Scene& scene = *world.scene;
    std::vector<Start> starts;
    std::int64_t unplayed = 0;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        const ObjectSource& source = world.Of(id);
        if ((object.physics == nullptr && object.collider == nullptr) || !source.hasRecord ||
            source.meshDropped || object.vertexValueCount == 0) {
            continue;
        }
        const std::int32_t player = PlayerOf(scene, id);
        if (!CheckParts(findings, world, id, player != -1)) {
            continue;
        }
        CheckCentre(findings, world, id);
        starts.push_back({id, player == -1 ? Named(object) : "player " + std::to_string(player),
                          CentreOf(object) + ShiftOf(object), world.At(id, "*PHYSICS")});
        unplayed += player == -1 ? 1 : 0;
    }
    CheckPairs(findings, starts);
    std::int64_t triangles = 1;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        triangles += scene.objects[id].faceValueCount / 3;
    }
    // Each drop looks through all triangles once, and then again and again through those around it.
    const std::int64_t most = triangleBudget / triangles;
    std::int64_t dropped = 0;
    for (const Start& start : starts) {
        if (PlayerOf(scene, start.id) == -1 && dropped++ < most) {
            CheckFall(findings, world, start, triangleBudget / unplayed);
        }
    }
    if (dropped > most) {
        findings.notes.push_back("only " + std::to_string(most) + " of " + std::to_string(dropped) +
                                 " bodies were dropped, as the world has so many triangles");
    }
}

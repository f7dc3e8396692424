#include <cmath>
#include <set>

#include "check_scene/checks.h"
#include "scene/scene.h"
#include "simulation/group_members.h"

// Key tracks: that they hold keys, and that somebody plays them.

namespace {

constexpr std::int32_t playedTracks = 3;  // forward, backward, sideways

bool IsBroken(Vector value) {
    return !std::isfinite(value.x) || !std::isfinite(value.y) || !std::isfinite(value.z);
}

void CheckTracks(Findings& findings, const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    if (object.keyTrackCount > playedTracks) {
        findings.Warn("tracks-too-many", world.At(id),
                      Named(object) + " has " + std::to_string(object.keyTrackCount) +
                          " key tracks, and only three are played: forward, backward, sideways");
    }
    for (std::int32_t i = 0; i < object.keyTrackCount; i++) {
        const KeyTrack& track = object.keyTracks[i];
        const std::string name = Named(object) + ": key track " + std::to_string(i);
        if (track.keyCount == 0 && i + 1 == object.keyTrackCount) {  // others keep a later one in its place
            findings.Warn("track-empty", world.At(id), name + " is empty");
        }
        for (std::int32_t key = 0; key < track.keyCount; key++) {
            if (IsBroken(track.keyTranslations[key]) || IsBroken(track.keyAxes[key]) ||
                !std::isfinite(track.keyAngles[key])) {
                findings.Error("track-not-finite", world.At(id),
                               name + ": key " + std::to_string(key) + " holds no finite numbers");
                break;
            }
        }
    }
}

}  // namespace

void CheckKeyTracks(Findings& findings, const World& world) {
    const Scene& scene = *world.scene;
    const bool isForeseen = findings.Has("no-players") || findings.Has("no-player-object");
    std::set<std::int32_t> players;  // objects that can play tracks, or have them played
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        const std::int32_t body = scene.players[i].playerObject;
        if (body == -1) {
            continue;
        }
        players.insert(body);
        ForEachMember(scene, scene.objects[body].groupParent, [&](std::int32_t member) {
            players.insert(member);
            if (scene.objects[member].keyTrackCount > scene.objects[body].keyTrackCount) {
                findings.Error(
                    "track-missing-of-player", world.At(member),
                    Named(scene.objects[member]) + " has " +
                        Counted(scene.objects[member].keyTrackCount, "key track") + ", and the player's " +
                        Named(scene.objects[body]) + " only " +
                        std::to_string(scene.objects[body].keyTrackCount) +
                        ": without the same number there they never end; give it tracks of empty "
                        "moves");
            }
        });
    }
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        CheckTracks(findings, world, id);
        if (scene.objects[id].keyTrackCount > 0 && !players.contains(id) && !isForeseen) {
            findings.Warn("track-unplayed", world.At(id),
                          Named(scene.objects[id]) +
                              " has key tracks that nobody plays: only a player's object and the "
                              "members of its group do");
        }
    }
}

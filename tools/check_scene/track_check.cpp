#include <cmath>
#include <numbers>
#include <set>

#include "check_scene/checks.h"
#include "scene/scene.h"
#include "simulation/group_members.h"

// Key tracks: that they hold keys, that somebody plays them, and what the keys add up to as the engine
// plays them: one a frame, and then all taken back.

namespace {

constexpr std::int32_t playedTracks = 3;  // forward, backward, sideways

bool IsBroken(Vector value) {
    return !std::isfinite(value.x) || !std::isfinite(value.y) || !std::isfinite(value.z);
}

/// Whether only players who stand still play the object's tracks: what they open may stay open.
bool IsOperated(const Scene& scene, std::int32_t id) {
    bool isOperated = false;
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        const std::int32_t body = scene.players[i].playerObject;
        if (body == -1) {
            continue;
        }
        const bool plays = body == id || IsMember(scene, scene.objects[body].groupParent, id);
        if (plays && !StandsStill(scene.objects[body])) {
            return false;
        }
        isOperated |= plays;
    }
    return isOperated;
}

/// @param angle radians
float FromWholeTurns(float angle) {
    return std::fabs(std::remainder(angle, 2.0f * std::numbers::pi_v<float>));
}

void CheckTrack(Findings& findings, const World& world, std::int32_t id, const std::string& name,
                const KeyTrack& track) {
    Vector moved;
    Vector turned;  // exact as long as all axes are one
    for (std::int32_t key = 0; key < track.keyCount; key++) {
        const float angle = track.keyAngles[key];
        if (IsBroken(track.keyTranslations[key]) || IsBroken(track.keyAxes[key]) || !std::isfinite(angle)) {
            findings.Error("track-not-finite", world.At(id),
                           name + ": key " + std::to_string(key) + " holds no finite numbers");
            return;
        }
        if (std::fabs(angle) > std::numbers::pi_v<float> + 0.01f) {
            findings.Error("track-degrees", world.At(id),
                           name + ": key " + std::to_string(key) + " turns by " + Shown(angle) +
                               ", more than half a turn in one frame: angles are in radians");
            return;
        }
        if (angle != 0.0f && track.keyAxes[key].Length() == 0.0f) {
            findings.Error("track-axis", world.At(id),
                           name + ": key " + std::to_string(key) + " turns about an axis of length 0");
            return;
        }
        moved = moved + track.keyTranslations[key];
        Vector axis = track.keyAxes[key];
        axis.Normalise();
        turned = turned + axis * angle;
    }
    if (track.keyCount == 1 && (moved.Length() > 0.0f || turned.Length() > 0.0f)) {
        findings.Warn("track-one-key", world.At(id),
                      name +
                          " has one key only, and the object flickers: each other frame takes the "
                          "key back");
        return;
    }
    constexpr float shift = 0.3f;  // world units, and radians
    const bool jumps = moved.Length() > shift || FromWholeTurns(turned.Length()) > shift;
    if (jumps && !IsOperated(*world.scene, id)) {
        findings.Warn(
            "track-not-closed", world.At(id),
            name + " ends " + Shown(std::round(100.0f * moved.Length()) / 100.0f) + " units and " +
                Shown(std::round(FromWholeTurns(turned.Length()) * 180.0f / std::numbers::pi_v<float>)) +
                " degrees from where it began, and jumps back there each time: let it end "
                "where it begins");
    }
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
        CheckTrack(findings, world, id, name, track);
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

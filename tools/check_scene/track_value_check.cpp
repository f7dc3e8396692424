#include <cmath>
#include <numbers>

#include "check_scene/checks.h"
#include "scene/scene.h"

// What the keys of tracks add up to, as the engine plays them: one a frame, and then all taken back.

namespace {

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

void CheckTrack(Findings& findings, const World& world, std::int32_t id, std::int32_t number) {
    const KeyTrack& track = world.scene->objects[id].keyTracks[number];
    const std::string name = Named(world.scene->objects[id]) + ": key track " + std::to_string(number);
    Vector moved;
    Vector turned;  // exact as long as all axes are one
    for (std::int32_t key = 0; key < track.keyCount; key++) {
        const float angle = track.keyAngles[key];
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

}  // namespace

void CheckTrackValues(Findings& findings, const World& world) {
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        for (std::int32_t number = 0; number < world.scene->objects[id].keyTrackCount; number++) {
            CheckTrack(findings, world, id, number);
        }
    }
}

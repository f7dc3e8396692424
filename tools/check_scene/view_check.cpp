#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "engine/engine.h"
#include "scene/scene.h"

// What players see of what they do: which way they walk, which way they tilt, and how far they see.

namespace {

Vector Axis(const Object& object, std::int32_t marker) {
    Vector axis = VertexOf(object, marker) - CentreOf(object);
    axis.Normalise();
    return axis;
}

void CheckDirections(Findings& findings, const World& world, std::int32_t index) {
    const Scene& scene = *world.scene;
    const Player& player = scene.players[index];
    if (!scene.HasCamera(index) || player.playerObject == -1) {
        return;
    }
    const Object& camera = scene.objects[player.cameraObject];
    const Object& body = scene.objects[player.playerObject];
    Vector view = VertexOf(camera, player.lookVertex) - VertexOf(camera, player.eyeVertex);
    view.Normalise();
    const Place place = world.At(player.cameraObject, "*CAMERAOBJECT", index);
    const std::string name = "player " + std::to_string(index);
    constexpr float clearly = 0.5f;
    if (camera.HasVertex(camera.yAxisVertex) && camera.yAxisVertex != camera.centreVertex &&
        view.Dot(Axis(camera, camera.yAxisVertex)) > clearly) {
        findings.Error("camera-upside-down", place,
                       name + " looks along the Y axis of " + Named(camera) +
                           ", so that up and down are exchanged: the look vertex belongs along minus Y");
    }
    if (!body.HasVertex(body.yAxisVertex) || body.yAxisVertex == body.centreVertex) {
        return;
    }
    view.z = 0.0f;
    view.Normalise();
    const float along = -view.Dot(Axis(body, body.yAxisVertex));
    if (view.Length() > 0.0f && along < clearly) {
        findings.Warn("camera-aside", place,
                      name + " walks " + (along < -clearly ? "backward" : "sideways") +
                          " as they see it: forward is minus the Y axis of " + Named(body));
    }
}

/// Two objects with one *PLAYEROBJECT or *CAMERAOBJECT: the last one counts.
void CheckBindings(Findings& findings, const World& world, const char* key) {
    std::map<std::int32_t, std::int32_t> first;
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        const Block* block = world.BlockOf(id);
        for (const KeyUse& use : block == nullptr ? std::vector<KeyUse>{} : block->keys) {
            if (!use.Is(key) || use.Whole(0) < 0 || use.Whole(0) >= world.scene->playerCount) {
                continue;
            }
            const auto [other, isNew] = first.emplace(use.Whole(0), id);
            if (!isNew && other->second != id) {
                findings.Cause("object-for-two", world.At(id, key, use.Whole(0)),
                               std::string(key) + " " + std::to_string(use.Whole(0)) +
                                   " stands in the block of " + Named(world.scene->objects[other->second]) +
                                   ", too; this one counts");
            }
        }
    }
}

/// Whether most of what there is lies beyond the far plane.
void CheckFarPlane(Findings& findings, const World& world) {
    const Scene& scene = *world.scene;
    const float farPlane = world.engine->farPlane;
    for (std::int32_t index = 0; index < scene.playerCount; index++) {
        if (!scene.HasCamera(index)) {
            continue;
        }
        const Player& player = scene.players[index];
        Vector eye = VertexOf(scene.objects[player.cameraObject], player.eyeVertex);
        if (player.playerObject != -1) {
            eye = eye + ShiftOf(scene.objects[player.playerObject]);
        }
        std::int64_t all = 0;
        std::int64_t beyond = 0;
        float farthest = 0.0f;
        for (std::int32_t id = 0; id < scene.objectCount; id++) {
            const Object& object = scene.objects[id];
            if (object.attributes[invisibleAttribute] == 1) {
                continue;
            }
            for (std::int32_t corner = 0; corner < object.faceValueCount; corner += 3) {
                const float distance = eye.Distance(CornerOf(object, corner));
                all++;
                beyond += distance > farPlane ? 1 : 0;
                farthest = std::max(farthest, distance);
            }
        }
        if (2 * beyond > all) {
            findings.Warn("world-beyond-far-plane", world.AtSetting("*FARCLIPPINGPLANE"),
                          "most of the world isn't drawn: it reaches " + Shown(std::round(farthest)) +
                              " from player " + std::to_string(index) +
                              "'s eye, and the far clipping plane lies at " + Shown(farPlane));
            return;
        }
    }
}

}  // namespace

void CheckViews(Findings& findings, const World& world) {
    for (std::int32_t i = 0; i < world.scene->playerCount; i++) {
        CheckDirections(findings, world, i);
    }
    CheckBindings(findings, world, "*PLAYEROBJECT");
    CheckBindings(findings, world, "*CAMERAOBJECT");
    CheckFarPlane(findings, world);
}

#include "scene/scene.h"
#include "simulation/group_members.h"
#include "simulation/player_control.h"

namespace {

/// From the centre of the object to a marker vertex, with the length that the mesh gives it.
Vector MarkerAxis(const Object& object, std::int32_t markerVertex) {
    Vector centre;
    Vector marker;
    object.GetVertex(centre, object.centreVertex);
    object.GetVertex(marker, markerVertex);
    return marker - centre;
}

/// Turns the camera's pending transform about its own X axis, unless that would bring the head too low.
void Tilt(Object& camera, float angle, float headLimit) {
    Vector axis(1.0f, 0.0f, 0.0f);
    Matrix orientation;
    camera.GetOrientationMatrix(orientation);
    orientation.TransformPoint(axis);

    Matrix before;
    camera.transform.CopyTo(before);
    camera.transform.Rotate(angle, axis.x, axis.y, axis.z);
    Vector up = MarkerAxis(camera, camera.zAxisVertex);
    camera.transform.TransformPoint(up);
    if (headLimit > up.z) {
        before.CopyTo(camera.transform);
    }
}

}  // namespace

void PlayerControl::MovePlayer(Scene& scene, std::int32_t action, float amount, std::int32_t playerIndex) {
    if (!HasObjects(scene, playerIndex)) {
        return;
    }
    const Player& player = scene.players[playerIndex];
    Object& object = scene.objects[player.playerObject];
    if (object.collider == nullptr || object.physics == nullptr) {
        MovePlayerDirect(scene, action, amount, playerIndex);
        return;
    }
    if (action != moveForward && action != moveBackward && action != moveSideways) {
        return;
    }
    // In the air there is no steering, but the walking goes on to be seen.
    if (object.collider->airborne == 0) {
        Vector& velocity = object.physics->velocity;
        if (action == moveForward) {
            velocity = velocity - MarkerAxis(object, object.yAxisVertex) * amount;
        } else if (action == moveBackward) {
            velocity = velocity + MarkerAxis(object, object.yAxisVertex) * amount;
        } else {
            velocity = velocity + MarkerAxis(object, object.xAxisVertex);
        }
        if (velocity.Length() > player.maxSpeed) {
            velocity.SetLength(player.maxSpeed);
        }
    }
    object.activeKeyTrack = action;
}

void PlayerControl::MovePlayerDirect(Scene& scene, std::int32_t action, float amount,
                                     std::int32_t playerIndex) {
    if (!HasObjects(scene, playerIndex)) {
        return;
    }
    Object& object = scene.objects[scene.players[playerIndex].playerObject];
    Vector step = MarkerAxis(object, object.yAxisVertex) * amount;
    if (action == moveForward) {
        step = -step;
    }
    object.transform.Translate(step.x, step.y, step.z);
}

void PlayerControl::TurnPlayer(Scene& scene, std::int32_t action, float amount, std::int32_t playerIndex) {
    if (!HasObjects(scene, playerIndex)) {
        return;
    }
    const Player& player = scene.players[playerIndex];
    switch (action) {
        case turnLeft:
            scene.objects[player.playerObject].transform.Rotate(-amount, 0.0f, 0.0f, 1.0f);
            break;
        case turnRight:
            scene.objects[player.playerObject].transform.Rotate(amount, 0.0f, 0.0f, 1.0f);
            break;
        case lookUp:
            Tilt(scene.objects[player.cameraObject], amount, player.headLimit);
            break;
        case lookDown:
            Tilt(scene.objects[player.cameraObject], -amount, player.headLimit);
            break;
        default:
            break;
    }
}

void PlayerControl::StopPlayerAction(Scene& scene, std::int32_t playerIndex, std::int32_t action) {
    if (!HasObjects(scene, playerIndex)) {
        return;
    }
    const Object& object = scene.objects[scene.players[playerIndex].playerObject];
    if (object.keyTracks == nullptr || action < 0 || action >= object.keyTrackCount ||
        object.keyTracks[action].currentKey == 0) {
        return;
    }
    ForEachMember(scene, playerIndex, [&scene, &object, action](std::int32_t id) {
        Object& member = scene.objects[id];
        member.activeKeyTrack = action;
        member.RewindKeyTrack(&object);
    });
}

#include <algorithm>
#include <cmath>
#include <string>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "engine/engine.h"
#include "scene/scene.h"

// Players: what they see through, what they move, by which device and in which part of the window.

namespace {

/// One player while they are judged.
struct PlayerCheck {
    Findings& findings;
    const World& world;
    std::int32_t index;

    const Scene& TheScene() const { return *world.scene; }
    const Player& Subject() const { return TheScene().players[index]; }
    std::string Name() const { return "player " + std::to_string(index); }

    void CheckCamera();
    void CheckView(const Place& place, const Object& camera);
    void CheckBody();
    void CheckViewport();
    void CheckAgainst(std::int32_t other);
};

void PlayerCheck::CheckView(const Place& place, const Object& camera) {
    const Player& player = Subject();
    for (const std::int32_t vertex : {player.eyeVertex, player.lookVertex}) {
        if (!camera.HasVertex(vertex)) {
            findings.Error("camera-vertex", place,
                           Name() + " sees nothing: *CAMERAOBJECT names vertex " + std::to_string(vertex) +
                               ", and " + Named(camera) + " has " +
                               std::to_string(camera.vertexValueCount / 3) + " vertices, counted from 0");
            return;
        }
    }
    const Vector direction = VertexOf(camera, player.lookVertex) - VertexOf(camera, player.eyeVertex);
    if (direction.Length() == 0.0f) {
        findings.Error("camera-points", place,
                       Name() + " sees nothing: the eye and what it looks at, vertices " +
                           std::to_string(player.eyeVertex) + " and " + std::to_string(player.lookVertex) +
                           ", are the same place");
    } else if (std::hypot(direction.x, direction.y) < 0.001f * direction.Length()) {
        findings.Error("camera-upright", place,
                       Name() +
                           " looks straight up or down, where the picture has no upright; move the "
                           "look vertex");
    }
}

void PlayerCheck::CheckCamera() {
    const Player& player = Subject();
    if (player.cameraObject == -1) {
        findings.Error(
            "no-camera", world.AtSetting("*PLAYERCOUNT"),
            Name() + " has no camera and sees nothing, a blue window: some object needs *CAMERAOBJECT " +
                std::to_string(index) + " and two vertices in its block");
        return;
    }
    const Object& camera = TheScene().objects[player.cameraObject];
    const Place place = world.At(player.cameraObject, "*CAMERAOBJECT", index);
    if (!IsBlind(player)) {
        CheckView(place, camera);
    }
    if (player.playerObject == -1 || player.playerObject == player.cameraObject) {
        return;
    }
    const Object& object = TheScene().objects[player.playerObject];
    Vector eye;
    Vector body;
    if (camera.HasVertex(player.eyeVertex) && object.HasVertex(object.centreVertex)) {
        camera.GetVertex(eye, player.eyeVertex);
        object.GetVertex(body, object.centreVertex);
    }
    constexpr float far = 60.0f;  // a person's height six times
    if ((eye - body).Length() > far) {
        findings.Warn(
            "camera-far", place,
            Name() + " sees from " + Shown(std::round((eye - body).Length())) +
                " away from their body: the camera belongs where the eyes are, or a little behind");
    }
    if (!IsMember(TheScene(), TheScene().objects[player.playerObject].groupParent, player.cameraObject)) {
        findings.Error("camera-left-behind", place,
                       Name() + "'s camera stays behind when they walk: give " + Named(camera) +
                           " a *GROUPMEMBER, and the player's object the *GROUPPARENT of that group");
    } else if (player.cameraObject > player.playerObject) {
        findings.Warn("camera-after-player", world.At(player.cameraObject),
                      Name() +
                          "'s camera comes after the player's object in the file, so that it ends up "
                          "askew when it tilts and turns at once; write it first");
    }
}

void PlayerCheck::CheckBody() {
    const Player& player = Subject();
    const bool hasDevice = player.controller >= 0 && player.controller <= 2;
    if (player.playerObject == -1) {
        if (hasDevice && player.cameraObject != -1) {
            findings.Error(
                "no-player-object", world.AtSetting("*PLAYERCOUNT"),
                Name() + " moves nothing: some object needs *PLAYEROBJECT " + std::to_string(index));
        }
        return;
    }
    const Object& body = TheScene().objects[player.playerObject];
    const Place place = world.At(player.playerObject, "*PLAYEROBJECT", index);
    if (!hasDevice) {
        findings.Error("device-unknown", world.AtSetting("*PLAYERCONTROLLER", index),
                       Name() + " can't be moved: device " + std::to_string(player.controller) +
                           " is none of 0 keyboard, 1 mouse, 2 joystick");
    }
    if (body.collider == nullptr) {
        findings.Error("player-without-collider", place,
                       Name() + "'s " + Named(body) + " needs *COLLIDER, or it passes through everything");
    }
    if (body.physics == nullptr) {
        findings.Error("player-without-physics", place,
                       Name() + "'s " + Named(body) +
                           " needs *PHYSICS, or it neither falls nor walks "
                           "as it should");
    }
    if (body.groupParent != -1 && body.groupParent != index) {
        findings.Warn("group-not-players", world.At(player.playerObject, "*GROUPPARENT"),
                      Name() + "'s group has the id " + std::to_string(body.groupParent) +
                          "; it has to be " + std::to_string(index) +
                          ", the player's index, for walking tracks to end");
    }
}

void PlayerCheck::CheckViewport() {
    const Player& player = Subject();
    const Engine& engine = *world.engine;
    const KeyUse* key = world.SettingOf("*PLAYERVIEWPORT", index);
    if (key == nullptr) {
        findings.Error(
            "no-viewport", world.AtSetting("*PLAYERCOUNT"),
            Name() + " has no *PLAYERVIEWPORT and sees the world in a square of 100 x 100 pixels");
        return;
    }
    const Place place = world.settings.At(key->position);
    const std::int64_t right = std::int64_t{player.viewportX} + player.viewportWidth;
    const std::int64_t top = std::int64_t{player.viewportY} + player.viewportHeight;
    if (player.viewportWidth <= 0 || player.viewportHeight <= 0) {
        return;  // its range has been judged
    }
    if (player.viewportX < 0 || player.viewportY < 0 || right > engine.windowRect.right ||
        top > engine.windowRect.bottom) {
        findings.Error("viewport-outside", place,
                       Name() + "'s viewport reaches from " + std::to_string(player.viewportX) + ", " +
                           std::to_string(player.viewportY) + " to " + std::to_string(right) + ", " +
                           std::to_string(top) + ", beyond the window of " +
                           std::to_string(engine.windowRect.right) + " x " +
                           std::to_string(engine.windowRect.bottom));
        return;
    }
    constexpr std::int32_t fewPixels = 32;
    if (std::min(player.viewportWidth, player.viewportHeight) < fewPixels) {
        findings.Warn("viewport-small", place,
                      Name() + "'s viewport is only " + std::to_string(player.viewportWidth) + " x " +
                          std::to_string(player.viewportHeight) + " pixels large");
    }
    const double stretch = static_cast<double>(player.viewportWidth) * engine.windowRect.bottom /
                           (static_cast<double>(player.viewportHeight) * engine.windowRect.right);
    if (stretch < 0.95 || stretch > 1.05) {
        findings.Warn("viewport-stretched", place,
                      Name() + "'s viewport hasn't the proportions of the window: the picture is " +
                          (stretch < 1.0 ? "squeezed" : "stretched") + " to " +
                          Shown(std::round(stretch * 100.0)) + " % of its width; " +
                          std::to_string(player.viewportWidth) + " x " +
                          Shown(std::round(player.viewportHeight * stretch)) + " wouldn't be");
    }
}

/// A lower index than this player's.
void PlayerCheck::CheckAgainst(std::int32_t other) {
    const Player& first = TheScene().players[other];
    const Player& second = Subject();
    const std::string both = "players " + std::to_string(other) + " and " + std::to_string(index);
    const bool bothMove = first.playerObject != -1 && second.playerObject != -1;
    if (bothMove && first.playerObject == second.playerObject) {
        findings.Error("player-object-shared", world.At(second.playerObject, "*PLAYEROBJECT", index),
                       both + " move the same object");
    }
    if (bothMove && first.controller == second.controller &&
        (first.controller == 1 || first.controller == 2)) {
        findings.Warn("device-shared", world.AtSetting("*PLAYERCONTROLLER", index),
                      both + " have the same " + (first.controller == 1 ? "mouse" : "joystick") +
                          " and move in unison");
    }
    if (bothMove && first.controller == 0 && second.controller == 0) {
        constexpr int usedKeys = 7;  // the eighth is spare
        for (int key = 0; key < usedKeys; key++) {
            const auto twin = std::find(first.keys, first.keys + usedKeys, second.keys[key]);
            if (twin != first.keys + usedKeys) {
                findings.Error("keys-shared", world.AtSetting("*PLAYERKEYBOARDCONTROLS", index),
                               both + " share keys of the keyboard, the first of them with the code " +
                                   std::to_string(second.keys[key]) +
                                   ": give each *PLAYERKEYBOARDCONTROLS");
                break;
            }
        }
    }
    const bool apart = first.viewportX + first.viewportWidth <= second.viewportX ||
                       second.viewportX + second.viewportWidth <= first.viewportX ||
                       first.viewportY + first.viewportHeight <= second.viewportY ||
                       second.viewportY + second.viewportHeight <= first.viewportY;
    const bool bothGiven = world.SettingOf("*PLAYERVIEWPORT", other) != nullptr &&
                           world.SettingOf("*PLAYERVIEWPORT", index) != nullptr;
    if (!apart && bothGiven) {
        findings.Warn("viewports-overlap", world.AtSetting("*PLAYERVIEWPORT", index),
                      "the viewports of " + both + " overlap");
    }
}

}  // namespace

void CheckPlayers(Findings& findings, const World& world) {
    const std::int32_t count = world.scene->playerCount;
    if (count == 0) {
        findings.Error("no-players", world.AtSetting("*PLAYERCOUNT"),
                       "there is no player, and the window stays blue: the settings need a *PLAYERCOUNT");
    }
    for (std::int32_t i = 0; i < count; i++) {
        PlayerCheck check{findings, world, i};
        check.CheckCamera();
        check.CheckBody();
        if (!IsBlind(world.scene->players[i])) {
            check.CheckViewport();
        }
        for (std::int32_t other = 0; other < i; other++) {
            check.CheckAgainst(other);
        }
    }
}

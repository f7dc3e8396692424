#include "simulation/player_control.h"

#include "scene/scene.h"

namespace {

// Values of `Player::controller`.
constexpr std::int32_t keyboardController = 0;
constexpr std::int32_t mouseController = 1;
constexpr std::int32_t joystickController = 2;

/// Radians per frame that a turn or tilt key is down.
constexpr float keyTurn = 0.1f;

/// Whether this device drives the player, and the player may act.
bool IsDriven(const Scene& scene, std::int32_t playerIndex, std::int32_t controller) {
    if (!PlayerControl::HasObjects(scene, playerIndex)) {
        return false;
    }
    const Player& player = scene.players[playerIndex];
    return player.controller == controller &&
           scene.objects[player.playerObject].attributes[spawnStateAttribute] != justSpawned;
}

void MoveOrStop(PlayerControl& control, Scene& scene, std::int32_t playerIndex, std::int32_t action,
                bool wanted) {
    if (wanted) {
        control.MovePlayer(scene, action, 1.0f, playerIndex);
    } else {
        control.StopPlayerAction(scene, playerIndex, action);
    }
}

/// What mouse and joystick have in common: two angles and two buttons.
void Steer(PlayerControl& control, Scene& scene, std::int32_t playerIndex, Vector delta, bool forward,
           bool backward) {
    if (delta.y != 0.0f) {
        control.TurnPlayer(scene, lookDown, delta.y, playerIndex);
    }
    if (delta.x != 0.0f) {
        control.TurnPlayer(scene, turnRight, delta.x, playerIndex);
    }
    MoveOrStop(control, scene, playerIndex, moveForward, forward);
    MoveOrStop(control, scene, playerIndex, moveBackward, backward);
}

}  // namespace

bool PlayerControl::HasObjects(const Scene& scene, std::int32_t playerIndex) {
    if (playerIndex < 0 || playerIndex >= scene.playerCount) {
        return false;
    }
    const auto exists = [&scene](std::int32_t id) { return id >= 0 && id < scene.objectCount; };
    const Player& player = scene.players[playerIndex];
    return exists(player.playerObject) && exists(player.cameraObject);
}

void PlayerControl::ControlByKeyboard(Scene& scene, std::int32_t playerIndex,
                                      const std::uint8_t* keyState) {
    if (!IsDriven(scene, playerIndex, keyboardController)) {
        return;
    }
    const std::uint8_t* keys = scene.players[playerIndex].keys;
    const auto down = [keyState, keys](int role) { return keyState[keys[role]] != 0; };
    if (down(4)) {
        TurnPlayer(scene, lookUp, keyTurn, playerIndex);
    }
    if (down(5)) {
        TurnPlayer(scene, lookDown, keyTurn, playerIndex);
    }
    if (down(2)) {
        TurnPlayer(scene, turnLeft, keyTurn, playerIndex);
    }
    if (down(3)) {
        TurnPlayer(scene, turnRight, keyTurn, playerIndex);
    }
    MoveOrStop(*this, scene, playerIndex, moveForward, down(0));
    MoveOrStop(*this, scene, playerIndex, moveBackward, down(1));
    MoveOrStop(*this, scene, playerIndex, moveSideways, down(6));
}

void PlayerControl::ControlByMouse(Scene& scene, std::int32_t playerIndex, Vector delta,
                                   const std::uint8_t* buttons) {
    if (IsDriven(scene, playerIndex, mouseController)) {
        Steer(*this, scene, playerIndex, delta, buttons[0] == 1, buttons[1] == 1);
    }
}

void PlayerControl::ControlByJoystick(Scene& scene, std::int32_t playerIndex, Vector delta,
                                      JOYINFOEX joystick) {
    if (IsDriven(scene, playerIndex, joystickController)) {
        Steer(*this, scene, playerIndex, delta, (joystick.dwButtons & 1) != 0,
              (joystick.dwButtons & 2) != 0);
    }
}

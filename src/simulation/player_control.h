#pragma once

#include <cstdint>

#include "math/vector.h"
#include "platform/input_devices.h"

struct Scene;

// Motion actions, each also the key track that animates it.
inline constexpr std::int32_t moveForward = 0;   ///< along minus Y of the player's object
inline constexpr std::int32_t moveBackward = 1;  ///< along plus Y
inline constexpr std::int32_t moveSideways = 2;  ///< along plus X

// Turn actions: a series of its own.
inline constexpr std::int32_t turnLeft = 2;
inline constexpr std::int32_t turnRight = 3;
inline constexpr std::int32_t lookUp = 4;
inline constexpr std::int32_t lookDown = 5;

/// What the devices ask of a player's objects. Nothing here moves anything: velocity, pending transform
/// and key track of the objects are changed, and the world step carries them out. A player whose player or
/// camera object doesn't exist is left out, and so is one just placed on a spawn point.
struct PlayerControl {
    /// Whether the player and both its objects exist.
    static bool HasObjects(const Scene& scene, std::int32_t playerIndex);

    /// @param keyState 256 bytes, one per virtual key code, not 0 while down
    void ControlByKeyboard(Scene& scene, std::int32_t playerIndex, const std::uint8_t* keyState);
    /// @param delta x and y in radians
    /// @param buttons three bytes, 1 while down: left, middle, right
    void ControlByMouse(Scene& scene, std::int32_t playerIndex, Vector delta, const std::uint8_t* buttons);
    /// @param delta x and y in radians per frame
    void ControlByJoystick(Scene& scene, std::int32_t playerIndex, Vector delta, JOYINFOEX joystick);

    void MovePlayer(Scene& scene, std::int32_t action, float amount, std::int32_t playerIndex);
    /// For an object without collider or physics: a step of `amount` times its Y, at once.
    void MovePlayerDirect(Scene& scene, std::int32_t action, float amount, std::int32_t playerIndex);
    /// @param amount radians, of either sign
    void TurnPlayer(Scene& scene, std::int32_t action, float amount, std::int32_t playerIndex);
    /// Rewinds the track of the action on the members of the player's group, if it has begun to play.
    void StopPlayerAction(Scene& scene, std::int32_t playerIndex, std::int32_t action);
};

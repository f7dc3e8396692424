#pragma once

#include <cstdint>
#include <string>

#include "math/vector.h"

/// Ties one person to the scene: the device that drives them, the object that they move, the object that
/// they look through and the rectangle of the window that shows it. A player's index is also the index of
/// the group of objects that animate with them.
struct Player {
    std::string name = "Anonymous";
    float maxSpeed = 0.1f;           ///< longest velocity that a move leaves, world units per frame
    float headLimit = 0.0f;          ///< lowest z that the camera's up marker may reach by tilting
    std::int32_t cameraObject = -1;  ///< object id, -1 for none
    std::int32_t playerObject = -1;  ///< object id, -1 for none
    std::int32_t eyeVertex = -1;     ///< vertex of the camera object; may lie outside its vertices
    std::int32_t lookVertex = -1;    ///< vertex of the camera object; may lie outside its vertices
    Vector up{0.0f, 0.0f, 1.0f};
    std::int32_t controller = 0;  ///< 0 keyboard, 1 mouse, 2 joystick, otherwise none
    /// Virtual key codes: forward, backward, turn left, turn right, look up, look down, sideways, spare.
    std::uint8_t keys[8] = {0x26, 0x28, 0x25, 0x27, 0x21, 0x22, 0xBC, 0xBE};
    std::int32_t viewportX = 0;  ///< pixels, from the left of the window
    std::int32_t viewportY = 0;  ///< pixels, from the bottom of the window
    std::int32_t viewportWidth = 100;
    std::int32_t viewportHeight = 100;

    void CopyTo(Player& destination) const { destination = *this; }
};

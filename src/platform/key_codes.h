#pragma once

#include "platform/types.h"

struct SDL_Keysym;

// Virtual key codes that the layer itself knows by name.
inline constexpr BYTE keyLeftButton = 0x01;
inline constexpr BYTE keyRightButton = 0x02;
inline constexpr BYTE keyMiddleButton = 0x04;
inline constexpr BYTE keyEscape = 0x1B;
inline constexpr BYTE keyF4 = 0x73;
inline constexpr BYTE keyF5 = 0x74;
inline constexpr BYTE keyF10 = 0x79;

/// The virtual key code of a key; 0 if it has none. Letters and punctuation go by what the keyboard
/// layout makes of the key, where it gives one of the basic letters or signs, otherwise by where the key
/// is. The digits above the letters go by place. The numeric pad depends on Num Lock.
BYTE VirtualKeyCode(const SDL_Keysym& key);

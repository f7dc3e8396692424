#pragma once

#include "platform/types.h"

struct SDL_Window;

// The display mode for full screen.

inline constexpr DWORD DM_BITSPERPEL = 0x40000;
inline constexpr DWORD DM_PELSWIDTH = 0x80000;
inline constexpr DWORD DM_PELSHEIGHT = 0x100000;
inline constexpr LONG DISP_CHANGE_SUCCESSFUL = 0;
inline constexpr LONG DISP_CHANGE_BADMODE = -2;

struct DEVMODEA {
    WORD dmSize = 0;
    DWORD dmFields = 0;
    DWORD dmBitsPerPel = 0;
    DWORD dmPelsWidth = 0;   ///< pixels
    DWORD dmPelsHeight = 0;  ///< pixels
};

/// Asks for an exact mode; null goes back to the desktop's. Not 0 if the display doesn't offer it.
LONG ChangeDisplaySettingsA(const DEVMODEA* mode, DWORD flags);

// For the layer itself.

/// Gives the window the whole screen in the mode asked for; does nothing while that is the desktop's.
void EnterAskedDisplayMode(SDL_Window* window);

#pragma once

#include "platform/types.h"

// Cursor and joystick. Keys and mouse buttons come as window messages.

inline constexpr UINT JOYSTICKID1 = 0;
inline constexpr DWORD JOY_RETURNX = 0x1;
inline constexpr DWORD JOY_RETURNY = 0x2;
inline constexpr DWORD JOY_RETURNBUTTONS = 0x80;
inline constexpr DWORD JOY_RETURNCENTERED = 0x400;
inline constexpr DWORD JOY_USEDEADZONE = 0x800;
inline constexpr UINT JOYERR_NOERROR = 0;
inline constexpr UINT MMSYSERR_NODRIVER = 6;
inline constexpr UINT JOYERR_UNPLUGGED = 167;

struct JOYINFOEX {
    DWORD dwSize = 0;
    DWORD dwFlags = 0;
    DWORD dwXpos = 0;     ///< within the range of the capabilities; at rest exactly its centre
    DWORD dwYpos = 0;     ///< the same
    DWORD dwButtons = 0;  ///< bit i is set while button i + 1 is down
};

struct JOYCAPSA {
    UINT wXmin = 0;
    UINT wXmax = 0;
    UINT wYmin = 0;
    UINT wYmax = 0;
};

/// The joystick's current sample. Not 0, and the positions untouched, if there is no joystick.
UINT joyGetPosEx(UINT joystick, JOYINFOEX* info);
/// The ranges of the axes, the same for every joystick, so that one plugged in later works too: they
/// are filled in even where the result is that none is there.
UINT joyGetDevCapsA(UINT joystick, JOYCAPSA* capabilities, UINT size);
UINT joySetCapture(HWND window, UINT joystick, UINT period, BOOL changed);
UINT joyReleaseCapture(UINT joystick);

/// Counts shows and hides as the display counter of the cursor, and returns the counter.
int ShowCursor(BOOL show);
/// Only releasing (null) is known: the cursor is never confined.
BOOL ClipCursor(const RECT* rectangle);
/// The cursor in screen coordinates, pixels. FALSE, and the point untouched, where nobody knows it: without
/// a display, and under Wayland as long as it hasn't been put anywhere.
BOOL GetCursorPos(POINT* point);
BOOL SetCursorPos(int x, int y);

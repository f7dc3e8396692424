#pragma once

#include "platform/types.h"

inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONSTOP = 0x10;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;

/// Shows a box with one button and waits until Return, Space, Escape, a click on its button or the window's
/// closing ends it, or the program's closing is asked for. Text and caption are Windows-1250 bytes; a null
/// or empty caption means none. Both go to the standard error stream as well, in UTF-8, and nowhere else if
/// the box can't be shown: without a display, without any font, or where nobody is there.
int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style);

/// How many boxes have been asked for so far, shown or not.
int MessageBoxCount();

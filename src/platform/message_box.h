#pragma once

#include "platform/types.h"

inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONSTOP = 0x10;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;

/// Shows a box with one button and waits until it is closed. Text and caption are Windows-1250 bytes;
/// a null or empty caption means none. Without a display both go to the standard error stream instead, in
/// UTF-8, and the call returns at once.
int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style);

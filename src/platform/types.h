#pragma once

#include <cstddef>
#include <cstdint>

// The basic types of the platform layer, under the names that its callers know them by.

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

// Handles point to records of the layer; null means none.
struct PlatformInstance;
struct PlatformWindow;
struct PlatformDeviceContext;
struct PlatformGlContext;
struct PlatformIcon;
struct PlatformCursor;
struct PlatformBrush;
struct PlatformMenu;
struct PlatformFont;
using HINSTANCE = PlatformInstance*;
using HWND = PlatformWindow*;
using HDC = PlatformDeviceContext*;
using HGLRC = PlatformGlContext*;
using HICON = PlatformIcon*;
using HCURSOR = PlatformCursor*;
using HBRUSH = PlatformBrush*;
using HMENU = PlatformMenu*;
using HFONT = PlatformFont*;

struct RECT {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
};

struct POINT {
    LONG x = 0;
    LONG y = 0;
};

using WNDPROC = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

struct PIXELFORMATDESCRIPTOR {
    WORD nSize = 0;
    WORD nVersion = 0;
    DWORD dwFlags = 0;
    BYTE iPixelType = 0;
    BYTE cColorBits = 0;
    BYTE cDepthBits = 0;
    DWORD dwLayerMask = 0;
};

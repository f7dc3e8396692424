#pragma once

#include <memory>
#include <string>

#include "platform/types.h"

struct SDL_Window;

struct PlatformDeviceContext {
    PlatformWindow* window = nullptr;
    HFONT font = nullptr;  ///< selected for the character lists; null before the first selection
    PIXELFORMATDESCRIPTOR pixelFormat;  ///< as asked for
};

/// What the layer knows about a window.
struct PlatformWindow {
    std::string className;
    WNDPROC procedure = nullptr;
    std::string title;  ///< UTF-8
    bool popUp = false;
    POINT position;        ///< asked for; outer corner on the primary screen
    int clientWidth = 0;   ///< asked for, pixels
    int clientHeight = 0;  ///< asked for, pixels
    POINT origin;          ///< of the client area on the screen, as last asked for; under Xwayland alone
    bool invalid = true;   ///< waits for WM_PAINT
    bool beingDestroyed = false;
    PlatformDeviceContext deviceContext;
    SDL_Window* system = nullptr;  ///< null until the pixel format is set, and without a display
};

/// The one window; null without one.
PlatformWindow* TheWindow();
/// Whether the handle is that of the window that stands.
bool IsTheWindow(HWND window);
/// Puts a window in the place of the one that stands; null for none.
void SetTheWindow(std::unique_ptr<PlatformWindow> window);

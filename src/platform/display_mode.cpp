#include "platform/display_mode.h"

#include <SDL.h>

#include <cstdlib>

#include "platform/display_guard.h"
#include "platform/video.h"
#include "platform/window_record.h"

namespace {

constexpr int display = 0;

SDL_DisplayMode askedMode;
bool modeAsked = false;

/// Displays have one depth today and show the others as well.
bool KnowsDepth(DWORD bits) {
    return bits == 16 || bits == 24 || bits == 32;
}

bool FindMode(const DEVMODEA& wanted, SDL_DisplayMode& found) {
    if ((wanted.dmFields & DM_BITSPERPEL) && !KnowsDepth(wanted.dmBitsPerPel)) {
        return false;
    }
    if (!StartVideo()) {
        return false;
    }
    const int count = SDL_GetNumDisplayModes(display);
    for (int i = 0; i < count; i++) {
        SDL_DisplayMode mode;
        if (SDL_GetDisplayMode(display, i, &mode) != 0) {
            continue;
        }
        if (static_cast<DWORD>(mode.w) != wanted.dmPelsWidth) {
            continue;
        }
        if (static_cast<DWORD>(mode.h) != wanted.dmPelsHeight) {
            continue;
        }
        found = mode;  // the first one has the highest refresh rate
        return true;
    }
    return false;
}

void LeaveFullScreen() {
    if (TheWindow() != nullptr && TheWindow()->system != nullptr) {
        SDL_SetWindowFullscreen(TheWindow()->system, 0);
    }
    StopDisplayGuard();
}

/// Whether the mode has to be put back, and can be, by another process.
bool NeedsGuard(const SDL_DisplayMode& mode) {
    SDL_DisplayMode desktop;
    const char* driver = SDL_GetCurrentVideoDriver();
    return driver != nullptr && SDL_strcmp(driver, "x11") == 0 &&
           SDL_GetDesktopDisplayMode(display, &desktop) == 0 &&
           (desktop.w != mode.w || desktop.h != mode.h || desktop.refresh_rate != mode.refresh_rate);
}

}  // namespace

LONG ChangeDisplaySettingsA(const DEVMODEA* mode, DWORD) {
    if (mode != nullptr) {
        if (!FindMode(*mode, askedMode)) {
            return DISP_CHANGE_BADMODE;
        }
        static const bool comesBackAtExit = std::atexit(LeaveFullScreen) == 0;
        modeAsked = comesBackAtExit;  // the window takes it when it is shown: SDL ties the mode to a window
        if (NeedsGuard(askedMode)) {
            StartDisplayGuard(askedMode.w, askedMode.h);
        }
        return DISP_CHANGE_SUCCESSFUL;
    }
    modeAsked = false;
    LeaveFullScreen();
    return DISP_CHANGE_SUCCESSFUL;
}

void EnterAskedDisplayMode(SDL_Window* window) {
    if (modeAsked) {
        SDL_SetWindowDisplayMode(window, &askedMode);
        SDL_SetWindowFullscreen(window, SDL_WINDOW_FULLSCREEN);
    }
}

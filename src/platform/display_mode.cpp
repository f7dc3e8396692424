#include "platform/display_mode.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>

#include "platform/display_guard.h"
#include "platform/run.h"
#include "platform/video.h"
#include "platform/window_record.h"
#include "platform/xwayland.h"

namespace {

constexpr int display = 0;

SDL_DisplayMode askedMode;
bool modeAsked = false;

/// Displays have one depth today and show the others as well.
bool KnowsDepth(DWORD bits) {
    return bits == 16 || bits == 24 || bits == 32;
}

bool FindMode(const DEVMODEA& wanted, SDL_DisplayMode& found) {
    if (((wanted.dmFields & DM_BITSPERPEL) && !KnowsDepth(wanted.dmBitsPerPel)) || !StartVideo()) {
        return false;
    }
    const int count = SDL_GetNumDisplayModes(display);
    for (int i = 0; i < count; i++) {
        SDL_DisplayMode mode;
        if (SDL_GetDisplayMode(display, i, &mode) == 0 &&
            static_cast<DWORD>(mode.w) == wanted.dmPelsWidth &&
            static_cast<DWORD>(mode.h) == wanted.dmPelsHeight) {
            found = mode;  // the first one has the highest refresh rate
            return true;
        }
    }
    return false;
}

void LeaveFullScreen() {
    if (TheWindow() != nullptr && TheWindow()->system != nullptr) {
        SDL_SetWindowFullscreen(TheWindow()->system, 0);
    }
    StopDisplayGuard();
}

bool IsDesktopMode(const SDL_DisplayMode& mode) {
    SDL_DisplayMode desktop;
    return SDL_GetDesktopDisplayMode(display, &desktop) == 0 && desktop.w == mode.w &&
           desktop.h == mode.h && desktop.refresh_rate == mode.refresh_rate;
}

/// Whether the mode has to be put back, and can be, by another process.
bool NeedsGuard(const SDL_DisplayMode& mode) {
    return VideoRunsBy("x11") && !IsDesktopMode(mode);
}

/// Tries the mode out with a window and sees what size the compositor gives it. That looks at a window only
/// once something is drawn in it, and has looked when the window has the focus.
bool IsReallyGiven(const SDL_DisplayMode& mode) {
    constexpr Uint32 longest = 1500;  // milliseconds; who takes longer doesn't give it
    constexpr Uint32 moment = 300;    // milliseconds from the focus, in which the size may still change
    SDL_Window* window = SDL_CreateWindow("", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, mode.w,
                                          mode.h, SDL_WINDOW_HIDDEN | SDL_WINDOW_BORDERLESS);
    if (window == nullptr) {
        return false;
    }
    SDL_SetWindowDisplayMode(window, &mode);
    SDL_SetWindowFullscreen(window, SDL_WINDOW_FULLSCREEN);
    SDL_ShowWindow(window);
    const Uint32 start = SDL_GetTicks();
    Uint32 end = start + longest;
    bool hasFocus = false;
    bool hasSize = true;
    for (Uint32 now = start; hasSize && now < end; now = SDL_GetTicks()) {
        SDL_GetWindowSurface(window);
        SDL_UpdateWindowSurface(window);
        SDL_Delay(10);
        SDL_PumpEvents();
        int width = 0;
        int height = 0;
        hasSize = !AskSize(window, width, height) || (width == mode.w && height == mode.h);
        if (!hasFocus && SDL_GetKeyboardFocus() == window) {
            hasFocus = true;
            end = now + std::max(moment, now - start);  // who was slow in one is slow in the other
        }
    }
    SDL_DestroyWindow(window);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    return hasSize && hasFocus;
}

/// Whether the mode can be had; a compositor's X server takes modes that it doesn't give.
bool IsGiven(const SDL_DisplayMode& mode) {
    return !RunsOnXwayland() || IsDesktopMode(mode) || IsReallyGiven(mode);
}

}  // namespace

LONG ChangeDisplaySettingsA(const DEVMODEA* mode, DWORD) {
    if (!FramesAreShown()) {
        return DISP_CHANGE_SUCCESSFUL;
    }
    if (mode != nullptr) {
        if (!FindMode(*mode, askedMode) || !IsGiven(askedMode)) {
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

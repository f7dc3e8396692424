#include "platform/key_releases.h"

#include <SDL.h>
#include <SDL_syswm.h>

#include <utility>

namespace {

// SDL shows each event of the X server right before it makes its own event of it.
unsigned pressedKeycode = 0;       // of the X server, when its last event was a press
unsigned releasedKeycode = 0;      // the same for a release
SDL_Scancode scancodes[256] = {};  // by keycode, as SDL has told them so far

bool serverIsHeard = false;  // otherwise there is only SDL's word

/// Releases of which SDL's word is all there is, with nothing else behind them so far.
SDL_Scancode doubtful[SDL_NUM_SCANCODES];
int doubtfulCount = 0;
bool held[SDL_NUM_SCANCODES] = {};  ///< by scancode, over a loss of the focus

/// SDL forgets the keys that are held when the focus goes, and then keeps their real releases to itself.
/// What it shows as its keyboard's state is that state: with the keys put back, it tells their releases
/// again.
void FollowFocus(Uint8 event) {
    if (event == SDL_WINDOWEVENT_FOCUS_LOST) {
        for (int i = 0; i < doubtfulCount; i++) {
            held[doubtful[i]] = true;
        }
    }
    if (event == SDL_WINDOWEVENT_FOCUS_GAINED) {
        auto* state = const_cast<Uint8*>(SDL_GetKeyboardState(nullptr));
        for (int i = 0; i < SDL_NUM_SCANCODES; i++) {
            if (std::exchange(held[i], false)) {
                state[i] = SDL_PRESSED;
            }
        }
    }
}

/// A window without the focus hears of no key, so a release that comes then is made up.
bool HasFocus(Uint32 windowIdentifier) {
    SDL_Window* window = SDL_GetWindowFromID(windowIdentifier);
    return window != nullptr && (SDL_GetWindowFlags(window) & SDL_WINDOW_INPUT_FOCUS) != 0;
}

/// Keeps account of the keys for `FollowFocus`. False for an event that is known to be made up.
bool WatchFocus(const SDL_Event& event) {
    if (serverIsHeard) {
        return true;
    }
    if (event.type == SDL_KEYUP) {
        const SDL_Scancode key = event.key.keysym.scancode;
        if (!HasFocus(event.key.windowID)) {
            held[key] = true;
            return false;
        }
        if (doubtfulCount < SDL_NUM_SCANCODES) {
            doubtful[doubtfulCount++] = key;
        }
        return true;
    }
    if (event.type == SDL_WINDOWEVENT) {
        FollowFocus(event.window.event);
    }
    doubtfulCount = 0;
    return true;
}

/// Makes the X server's release into SDL's, if SDL won't do so itself.
bool RestoreRelease(SDL_Event& event) {
    const SDL_Scancode scancode = scancodes[releasedKeycode];
    if (scancode == SDL_SCANCODE_UNKNOWN || SDL_GetKeyboardState(nullptr)[scancode]) {
        return false;
    }
    event = {};
    event.type = SDL_KEYUP;
    event.key.timestamp = SDL_GetTicks();
    event.key.padding2 = 1;
    event.key.keysym.scancode = scancode;
    event.key.keysym.sym = SDL_GetKeyFromScancode(scancode);
    event.key.keysym.mod = static_cast<Uint16>(SDL_GetModState());
    return true;
}

bool TakeSystemEvent(SDL_Event& event) {
#ifdef SDL_VIDEO_DRIVER_X11
    if (event.syswm.msg->subsystem != SDL_SYSWM_X11) {
        return false;
    }
    const XEvent& xEvent = event.syswm.msg->msg.x11.event;
    if (xEvent.type == GenericEvent) {
        return false;
    }
    pressedKeycode = xEvent.type == KeyPress ? xEvent.xkey.keycode & 255u : 0;
    releasedKeycode = xEvent.type == KeyRelease ? xEvent.xkey.keycode & 255u : 0;
    return releasedKeycode != 0 && RestoreRelease(event);
#else
    return false;
#endif
}

/// 0 keeps the event out of SDL's queue.
int WatchEvent(void*, SDL_Event* event) {
    if (!WatchFocus(*event)) {
        return 0;
    }
    switch (event->type) {
        case SDL_SYSWMEVENT:
            return TakeSystemEvent(*event) ? 1 : 0;
        case SDL_KEYDOWN:
            scancodes[pressedKeycode] = event->key.keysym.scancode;
            return 1;
        case SDL_KEYUP:
            // The mark travels in a spare field of the record.
            event->key.padding2 = static_cast<Uint8>(
                releasedKeycode != 0 && scancodes[releasedKeycode] == event->key.keysym.scancode);
            return 1;
        default:
            return 1;
    }
}

}  // namespace

void WatchKeyReleases() {
    const char* driver = SDL_GetCurrentVideoDriver();
    serverIsHeard = driver != nullptr && SDL_strcmp(driver, "x11") == 0;
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
    SDL_SetEventFilter(WatchEvent, nullptr);
}

void EndTurn() {
    doubtfulCount = 0;
}

bool IsRealRelease(const SDL_KeyboardEvent& release) {
    return release.padding2 != 0;
}

#include "platform/key_releases.h"

#include <SDL.h>
#include <SDL_syswm.h>

namespace {

// SDL shows each event of the X server right before it makes its own event of it.
unsigned pressedKeycode = 0;       // of the X server, when its last event was a press
unsigned releasedKeycode = 0;      // the same for a release
SDL_Scancode scancodes[256] = {};  // by keycode, as SDL has told them so far

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
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
    SDL_SetEventFilter(WatchEvent, nullptr);
}

bool IsRealRelease(const SDL_KeyboardEvent& release) {
    return release.padding2 != 0;
}

#include "platform/key_releases.h"

#include <SDL.h>
#include <SDL_syswm.h>

#include <utility>

namespace {

// SDL shows each event of the X server right before it makes its own event of it.
unsigned pressedKeycode = 0;       // of the X server, when its last event was a press
unsigned releasedKeycode = 0;      // the same for a release
SDL_Scancode scancodes[256] = {};  // by keycode, as SDL's presses have shown them

bool serverIsHeard = false;  // otherwise there is only SDL's word

/// Releases that may be made up: they wait for what comes next.
SDL_Event doubtful[SDL_NUM_SCANCODES];
int doubtfulCount = 0;
bool held[SDL_NUM_SCANCODES] = {};  ///< by scancode, over a loss of the focus; where SDL alone is heard

bool IsReal(const SDL_KeyboardEvent& release) {
    return releasedKeycode != 0 && scancodes[releasedKeycode] == release.keysym.scancode;
}

void HandOverDoubtful() {
    SDL_PeepEvents(doubtful, doubtfulCount, SDL_ADDEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
    doubtfulCount = 0;
}

void DropDoubtful() {
    for (; doubtfulCount > 0; doubtfulCount--) {
        held[doubtful[doubtfulCount - 1].key.keysym.scancode] = !serverIsHeard;
    }
}

/// What SDL shows as its keyboard's state is that state: only with the keys put back it reports their
/// releases.
void PutBackHeldKeys() {
    auto* state = const_cast<Uint8*>(SDL_GetKeyboardState(nullptr));
    for (int i = 0; i < SDL_NUM_SCANCODES; i++) {
        if (std::exchange(held[i], false)) {
            state[i] = SDL_PRESSED;
        }
    }
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
    event.key.keysym.scancode = scancode;
    event.key.keysym.sym = SDL_GetKeyFromScancode(scancode);
    event.key.keysym.mod = static_cast<Uint16>(SDL_GetModState());
    return true;
}

bool TakeSystemEvent(SDL_Event& event) {
    if (event.syswm.msg->subsystem != SDL_SYSWM_X11) {
        return false;
    }
    const XEvent& xEvent = event.syswm.msg->msg.x11.event;
    pressedKeycode = xEvent.type == KeyPress ? xEvent.xkey.keycode & 255u : 0;
    releasedKeycode = xEvent.type == KeyRelease ? xEvent.xkey.keycode & 255u : 0;
    return releasedKeycode != 0 && RestoreRelease(event);
}

/// 0 keeps the event out of SDL's queue.
int WatchEvent(void*, SDL_Event* event) {
    if (event->type == SDL_KEYUP && !IsReal(event->key)) {
        doubtful[doubtfulCount++] = *event;
        // A window without the focus hears of no key.
        if (!serverIsHeard && SDL_GetKeyboardFocus() == nullptr) {
            DropDoubtful();
        }
        return 0;
    }
    const bool ofWindow = event->type == SDL_WINDOWEVENT;
    if (ofWindow && event->window.event == SDL_WINDOWEVENT_FOCUS_LOST) {
        DropDoubtful();
    } else {
        HandOverDoubtful();
    }
    if (ofWindow && event->window.event == SDL_WINDOWEVENT_FOCUS_GAINED) {
        PutBackHeldKeys();
    }
    if (event->type == SDL_KEYDOWN) {
        scancodes[pressedKeycode] = event->key.keysym.scancode;
    }
    return event->type != SDL_SYSWMEVENT || TakeSystemEvent(*event) ? 1 : 0;
}

}  // namespace

void WatchKeyReleases(bool onX11) {
    serverIsHeard = onX11;
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
    SDL_SetEventFilter(WatchEvent, nullptr);
}

void PumpEvents() {
    SDL_PumpEvents();
    HandOverDoubtful();
}

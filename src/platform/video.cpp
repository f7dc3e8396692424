#include "platform/video.h"

#include <SDL.h>
#include <X11/Xlib.h>

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/key_releases.h"
#include "platform/xwayland.h"

namespace {

bool cursorCanBeMoved = true;
bool runsOnXwayland = false;

void SetHints() {
    // Only what puts windows on a screen: SDL would otherwise fall back to drawing where nobody sees it,
    // and the program would run on without a way to end it.
    SDL_SetHint(SDL_HINT_VIDEODRIVER, std::getenv("WAYLAND_DISPLAY") != nullptr ? "x11,wayland" : "x11");
    // Signals and the closing of the window are messages of this layer.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
    // The desktop stays as its user has set it up.
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    // A box over a full-screen window takes the focus, and the window has to stay.
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
    // Buttons are reported as they are pressed: no capture, and no click is lost to a change of focus.
    SDL_SetHint(SDL_HINT_MOUSE_AUTO_CAPTURE, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
}

/// Without its X server the process ends at once: what runs at an ordinary exit would ask the server again,
/// and wait for ever.
int EndWithTheDisplay(Display*) {
    std::fputs("The display has gone.\n", stderr);
    std::_Exit(1);
}

/// Such as a mode that can't be set between other screens. Whoever asked goes on with what there is, as
/// Xlib's own way of ending here, in the midst of SDL's work, may leave the server to nobody else.
int GoOnAfterError(Display* display, XErrorEvent* event) {
    char text[200];
    XGetErrorText(display, event->error_code, text, sizeof text);
    std::fprintf(stderr, "The X server refuses a request: %s\n", text);
    return 0;
}

}  // namespace

bool VideoRuns() {
    return SDL_WasInit(SDL_INIT_VIDEO) != 0;
}

bool VideoRunsBy(const char* driver) {
    const char* present = SDL_GetCurrentVideoDriver();
    return present != nullptr && std::strcmp(present, driver) == 0;
}

bool StartVideo() {
    if (VideoRuns()) {
        return true;
    }
    SetHints();
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        return false;
    }
    SDL_StopTextInput();  // keys are wanted, not texts, and no input method's window
    XSetIOErrorHandler(EndWithTheDisplay);
    XSetErrorHandler(GoOnAfterError);
    WatchKeyReleases(VideoRunsBy("x11"));
    cursorCanBeMoved = !VideoRunsBy("wayland");
    runsOnXwayland = VideoRunsBy("x11") && IsXwayland();
    return true;
}

bool RunsOnXwayland() {
    return runsOnXwayland;
}

bool CursorCanBeMoved() {
    return cursorCanBeMoved;
}

void SetCursorCanBeMoved(bool can) {
    cursorCanBeMoved = can;
}

void StopVideo() {
    if (VideoRuns()) {
        // A display that closes with drawing in the queue may wait for Mesa's threads for ever.
        assert(SDL_GL_GetCurrentContext() == nullptr);
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }
}

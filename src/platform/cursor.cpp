#include "platform/cursor.h"

#include <SDL.h>
#include <SDL_syswm.h>

#include <utility>

#include "platform/input_devices.h"
#include "platform/run.h"
#include "platform/video.h"
#include "platform/window_record.h"

namespace {

int displayCounter = 0;

bool placed = false;  // by the callers: until then nobody knows where a made-up position is
POINT madeUpPosition;

bool forgotten = false;

bool AskServer(POINT& point) {
    // SDL keeps the position until the mouse itself moves; a program may have moved the cursor as well.
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (TheWindow() == nullptr || !SDL_GetWindowWMInfo(TheWindow()->system, &info) ||
        info.subsystem != SDL_SYSWM_X11) {
        return false;
    }
    Display* display = info.info.x11.display;
    Window root, child;
    int windowX, windowY;
    unsigned buttons;
    return XQueryPointer(display, DefaultRootWindow(display), &root, &child, &point.x, &point.y, &windowX,
                         &windowY, &buttons) != 0;
}

BOOL AskCursor(POINT* point) {
    if (!VideoRuns() || std::exchange(forgotten, false)) {
        return FALSE;
    }
    if (!CursorCanBeMoved()) {
        if (placed) {
            *point = madeUpPosition;
        }
        return placed ? TRUE : FALSE;
    }
    if (!AskServer(*point)) {
        SDL_GetGlobalMouseState(&point->x, &point->y);
    }
    return TRUE;
}

}  // namespace

void SetCursorMadeUp(bool madeUp) {
    SetCursorCanBeMoved(!madeUp);
    placed = false;
}

void MoveCursor(int x, int y) {
    madeUpPosition.x += x;
    madeUpPosition.y += y;
}

void ForgetCursorPosition() {
    forgotten = true;
}

int ShowCursor(BOOL show) {
    displayCounter += show ? 1 : -1;
    const bool visible = displayCounter >= 0;
    if (!VideoRuns()) {
        return displayCounter;
    }
    SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE);
    if (visible) {
        SDL_SetRelativeMouseMode(SDL_FALSE);
    }
    return displayCounter;
}

BOOL ClipCursor(const RECT*) {
    return TRUE;
}

BOOL GetCursorPos(POINT* point) {
    const auto [known, x, y, unused] = ThroughRun(RunItemKind::CursorPlace, []() -> RunValues {
        POINT place;
        return AskCursor(&place) ? RunValues{TRUE, place.x, place.y} : RunValues{};
    });
    if (known) {
        *point = {x, y};
    }
    return known;
}

BOOL SetCursorPos(int x, int y) {
    if (!VideoRuns() || RunIsReplayed()) {
        return FALSE;
    }
    if (CursorCanBeMoved()) {
        return SDL_WarpMouseGlobal(x, y) == 0 ? TRUE : FALSE;
    }
    placed = true;
    madeUpPosition = {x, y};
    if (!SDL_GetRelativeMouseMode()) {
        SDL_SetRelativeMouseMode(SDL_TRUE);
    }
    return TRUE;
}

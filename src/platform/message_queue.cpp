#include "platform/message_queue.h"

#include <SDL.h>

#include <algorithm>

#include "platform/cursor.h"
#include "platform/key_codes.h"
#include "platform/key_releases.h"
#include "platform/run.h"
#include "platform/video.h"
#include "platform/window_record.h"
#include "platform/xwayland.h"
#include "process/close_request.h"

namespace {

// A flat array, so that neither the frame loop nor a box about exhausted memory allocates. If it is ever
// full, posting fails, and events wait in SDL's own queue.
constexpr std::size_t queueCapacity = 1024;
MSG queue[queueCapacity];  // the oldest message first
std::size_t waiting = 0;

constexpr int eventWait = 10;  // milliseconds between two looks at what has happened

bool quitPosted = false;
int quitCode = 0;

/// How a key that is down has been reported. Its release goes by that, whatever Num Lock and Alt do
/// meanwhile: who has seen it pressed also sees it released.
struct PressedKey {
    BYTE code = 0;
    bool onlyAsSystemKey = false;
};
PressedKey pressedKeys[SDL_NUM_SCANCODES];

/// What has been handed out about each key and mouse button, by virtual key code.
enum class KeyState : BYTE { Up, NewlyDown, Down };
KeyState keyStates[256] = {};

void Queue(UINT message, WPARAM wParam = 0) {
    queue[waiting++] = {TheWindow(), message, wParam, 0};
}

bool IsSystemKey(const SDL_Keysym& key, BYTE code) {
    const bool altAlone = (key.mod & KMOD_ALT) != 0 && (key.mod & KMOD_CTRL) == 0;
    return altAlone || code == keyF10;
}

void TakeKeyPress(const SDL_KeyboardEvent& event) {
    PressedKey& pressed = pressedKeys[event.keysym.scancode];
    // A repeat keeps the code of the press, and so does the release: Num Lock may change meanwhile.
    const bool repeats = event.repeat != 0 && pressed.code != 0;
    const BYTE code = repeats ? pressed.code : VirtualKeyCode(event.keysym);
    if (code == 0) {
        return;
    }
    const bool systemKey = IsSystemKey(event.keysym, code);
    if (!repeats) {
        pressed = {code, true};
    }
    pressed.onlyAsSystemKey = pressed.onlyAsSystemKey && systemKey;
    Queue(systemKey ? WM_SYSKEYDOWN : WM_KEYDOWN, code);
}

void TakeKeyRelease(const SDL_KeyboardEvent& event) {
    PressedKey key = pressedKeys[event.keysym.scancode];
    if (key.code == 0) {
        key.code = VirtualKeyCode(event.keysym);
    }
    if (key.code == 0) {
        return;
    }
    Queue(key.onlyAsSystemKey ? WM_SYSKEYUP : WM_KEYUP, key.code);
}

void TakeMouseButton(const SDL_MouseButtonEvent& event) {
    const bool down = event.state == SDL_PRESSED;
    switch (event.button) {
        case SDL_BUTTON_LEFT:
            return Queue(down ? WM_LBUTTONDOWN : WM_LBUTTONUP);
        case SDL_BUTTON_RIGHT:
            return Queue(down ? WM_RBUTTONDOWN : WM_RBUTTONUP);
        case SDL_BUTTON_MIDDLE:
            return Queue(down ? WM_MBUTTONDOWN : WM_MBUTTONUP);
        default:
            return;
    }
}

void TakeMouseMotion(const SDL_MouseMotionEvent& event) {
    MoveCursor(event.xrel, event.yrel);
    const bool oneWaits = waiting > 0 && queue[waiting - 1].message == WM_MOUSEMOVE;
    if (!oneWaits) {
        Queue(WM_MOUSEMOVE);
    }
}

void TakeWindowEvent(const SDL_WindowEvent& event) {
    if (event.windowID != SDL_GetWindowID(TheWindow()->system)) {
        return;
    }
    switch (event.event) {
        case SDL_WINDOWEVENT_MOVED:
            return Queue(WM_MOVE);
        case SDL_WINDOWEVENT_SIZE_CHANGED:
        case SDL_WINDOWEVENT_MINIMIZED:
        case SDL_WINDOWEVENT_RESTORED:
            return Queue(WM_SIZE);
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            return Queue(WM_ACTIVATE, 1);
        case SDL_WINDOWEVENT_FOCUS_LOST:
            return Queue(WM_ACTIVATE, 0);
        case SDL_WINDOWEVENT_CLOSE:
            return Queue(WM_CLOSE);
        case SDL_WINDOWEVENT_EXPOSED:
            TheWindow()->invalid = true;
            return;
        default:
            return;
    }
}

void TakeEvent(const SDL_Event& event) {
    switch (event.type) {
        case SDL_KEYDOWN:
            return TakeKeyPress(event.key);
        case SDL_KEYUP:
            return TakeKeyRelease(event.key);
        case SDL_WINDOWEVENT:
            return TakeWindowEvent(event.window);
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            return TakeMouseButton(event.button);
        case SDL_MOUSEMOTION:
            return TakeMouseMotion(event.motion);
        case SDL_QUIT:
            return Queue(WM_CLOSE);
        default:
            return;
    }
}

/// Xwayland doesn't report every move.
void FollowMoves() {
    POINT origin;
    if (!RunsOnXwayland() || TheWindow() == nullptr || waiting == queueCapacity ||
        !AskOrigin(TheWindow()->system, origin)) {
        return;
    }
    if (origin.x != TheWindow()->origin.x || origin.y != TheWindow()->origin.y) {
        TheWindow()->origin = origin;
        Queue(WM_MOVE);
    }
}

/// Whether the message leads to the end of the program, at once or by the key's meaning.
bool EndsTheProgram(UINT message, WPARAM wParam) {
    return message == WM_CLOSE || message == WM_DESTROY || (message == WM_KEYDOWN && wParam == keyEscape) ||
           (message == WM_SYSKEYDOWN && wParam == keyF4);
}

/// Drops the messages for which `isUnwanted` is true.
template <typename Test>
void DropMessages(Test isUnwanted) {
    waiting = static_cast<std::size_t>(std::remove_if(queue, queue + waiting, isUnwanted) - queue);
}

void GatherFromSdl() {
    PumpEvents();
    SDL_Event event;
    // No event makes more than one message.
    while (waiting < queueCapacity &&
           SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1) {
        if (TheWindow() != nullptr) {
            TakeEvent(event);
        }
    }
    FollowMoves();
}

/// The virtual key code that a press or release is about; 0 for other messages.
BYTE KeyCode(const MSG& message) {
    switch (message.message) {
        case WM_KEYDOWN:
        case WM_KEYUP:
            return static_cast<BYTE>(message.wParam);
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
            return keyLeftButton;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
            return keyRightButton;
        case WM_MBUTTONDOWN:
        case WM_MBUTTONUP:
            return keyMiddleButton;
        default:
            return 0;
    }
}

/// Posts the releases of all keys and buttons whose press was handed out, and the window's size and place:
/// what was handed out so far came from a run.
void PostPresentState() {
    for (int code = 0; code < 256; code++) {
        if (keyStates[code] != KeyState::Up) {
            const UINT release = code == keyLeftButton     ? WM_LBUTTONUP
                                 : code == keyRightButton  ? WM_RBUTTONUP
                                 : code == keyMiddleButton ? WM_MBUTTONUP
                                                           : WM_KEYUP;
            PostMessageA(TheWindow(), release, static_cast<WPARAM>(code), 0);
        }
    }
    PostMessageA(TheWindow(), WM_SIZE, 0, 0);
    PostMessageA(TheWindow(), WM_MOVE, 0, 0);
}

bool IsRelease(UINT message) {
    return message == WM_KEYUP || message == WM_LBUTTONUP || message == WM_RBUTTONUP ||
           message == WM_MBUTTONUP;
}

void NoteKey(const MSG& message) {
    KeyState& state = keyStates[KeyCode(message)];
    if (IsRelease(message.message)) {
        state = KeyState::Up;
    } else if (state == KeyState::Up) {
        state = KeyState::NewlyDown;
    }
}

/// A turn of the pump ends at a release whose press came in the same turn: who looks at the keys between
/// two turns sees every press, however short.
bool EndsTurn() {
    return waiting == 0 ||
           (IsRelease(queue[0].message) && keyStates[KeyCode(queue[0])] == KeyState::NewlyDown);
}

/// False if there is none.
bool FindMessage(MSG& message) {
    if (RunCatchesUp()) {  // what has really happened waits
        message = {TheWindow(), 0, 0, 0};
        return PeekRunMessage(message.message, message.wParam);
    }
    if (!quitPosted && waiting == 0) {
        GatherEvents();
    }
    if (!quitPosted && waiting == 0 && RunIsReplayed()) {
        queue[0] = {TheWindow(), 0, 0, 0};
        waiting = TakeRunMessage(queue[0].message, queue[0].wParam) ? 1 : 0;
    }
    if (quitPosted) {
        message = {nullptr, WM_QUIT, static_cast<WPARAM>(quitCode), 0};
        return true;
    }
    if (EndsTurn()) {
        std::replace(std::begin(keyStates), std::end(keyStates), KeyState::NewlyDown, KeyState::Down);
        return false;
    }
    message = queue[0];
    return true;
}

}  // namespace

void GatherEvents() {
    if (VideoRuns()) {
        GatherFromSdl();
    }
    if (TakeHandover()) {
        PostPresentState();
        ForgetCursorPosition();
    }
    if (RunIsReplayed()) {  // of what has happened only what ends the program counts
        DropMessages(
            [](const MSG& gathered) { return !EndsTheProgram(gathered.message, gathered.wParam); });
    }
    if (TheWindow() != nullptr && waiting < queueCapacity && TakeCloseRequest()) {
        Queue(WM_CLOSE);
    }
}

void ForgetMessages(HWND window) {
    DropMessages([window](const MSG& message) { return message.hwnd == window; });
}

BOOL PeekMessageA(MSG* message, HWND, UINT, UINT, UINT) {
    return FindMessage(*message) ? TRUE : FALSE;
}

BOOL GetMessageA(MSG* message, HWND, UINT, UINT) {
    while (!FindMessage(*message)) {
        if (!VideoRuns()) {
            return -1;  // nothing could ever come
        }
        SDL_WaitEventTimeout(nullptr, eventWait);
    }
    if (RunCatchesUp()) {
        TakeRunMessage(message->message, message->wParam);
        return 1;
    }
    if (message->message == WM_QUIT) {
        quitPosted = false;
        return 0;
    }
    NoteKey(*message);
    if (EndsTheProgram(message->message, message->wParam)) {
        EndRecording();
    } else {
        NoteRunMessage(message->message, message->wParam);
    }
    std::copy(queue + 1, queue + waiting, queue);
    waiting--;
    return 1;
}

BOOL TranslateMessage(const MSG*) {
    return 0;
}

LRESULT DispatchMessageA(const MSG* message) {
    const HWND window = message->hwnd;
    if (!IsTheWindow(window)) {
        return 0;
    }
    return window->procedure(window, message->message, message->wParam, message->lParam);
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsTheWindow(window) || waiting == queueCapacity) {
        return FALSE;
    }
    queue[waiting++] = {window, message, wParam, lParam};
    return TRUE;
}

void PostQuitMessage(int exitCode) {
    quitPosted = true;
    quitCode = exitCode;
}

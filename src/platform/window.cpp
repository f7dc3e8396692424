#include "platform/window.h"

#include <SDL.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/display_mode.h"
#include "platform/key_codes.h"
#include "platform/message_queue.h"
#include "platform/run.h"
#include "platform/video.h"
#include "platform/window_record.h"
#include "platform/windows1250.h"
#include "platform/xwayland.h"
#include "process/frame_limit.h"

namespace {

struct WindowClass {
    std::string name;
    WNDPROC procedure = nullptr;
};
std::vector<WindowClass> classes;

// The frame that AdjustWindowRect counts with, in pixels. The window manager's own may be another; only
// the client area is exact.
constexpr LONG frameBorder = 4;
constexpr LONG frameTitle = 19;

constexpr LONG largestSide = 16384;  // pixels; what SDL refuses beyond

auto FindClass(const char* name) {
    return std::find_if(classes.begin(), classes.end(),
                        [name](const WindowClass& known) { return name != nullptr && known.name == name; });
}

RECT Frame(DWORD style) {
    if (style & WS_POPUP) {
        return {};
    }
    return {frameBorder, frameBorder + frameTitle, frameBorder, frameBorder};
}

/// Keeps coordinates where sums and differences of two don't overflow.
LONG LimitCoordinate(std::int64_t value) {
    constexpr std::int64_t limit = (std::int64_t{1} << 30) - 1;
    return static_cast<LONG>(std::clamp(value, -limit, limit));
}

int ClientSide(int outerSide, LONG frame) {
    return static_cast<int>(std::max<std::int64_t>(std::int64_t{outerSide} - frame, 1));
}

void Send(HWND window, UINT message) {
    if (IsTheWindow(window)) {
        window->procedure(window, message, 0, 0);
    }
}

RunValues AskClientSize(const PlatformWindow& window) {
    int width = window.clientWidth;
    int height = window.clientHeight;
    if (window.system != nullptr) {
        if ((SDL_GetWindowFlags(window.system) & SDL_WINDOW_MINIMIZED) != 0) {
            return {};
        }
        SDL_GL_GetDrawableSize(window.system, &width, &height);
    }
    return {width, height};
}

RunValues AskOuterRectangle(PlatformWindow& window) {
    int left = window.position.x;
    int top = window.position.y;
    int width = window.clientWidth;
    int height = window.clientHeight;
    RECT frame;
    if (SDL_Window* system = window.system) {
        SDL_GetWindowPosition(system, &left, &top);
        if (RunsOnXwayland() && AskOrigin(system, window.origin)) {
            left = window.origin.x;
            top = window.origin.y;
        }
        SDL_GetWindowSize(system, &width, &height);
        SDL_GetWindowBordersSize(system, &frame.top, &frame.left, &frame.bottom, &frame.right);
    }
    return {left - frame.left, top - frame.top, left + width + frame.right, top + height + frame.bottom};
}

/// A picture doesn't depend on where the mouse lies: there nobody is active.
bool HasKeyboard(const PlatformWindow& window) {
    return window.system != nullptr && !FramesAreLimited() && SDL_GetKeyboardFocus() == window.system;
}

void RemoveTheWindow() {
    ForgetMessages(TheWindow());
    if (TheWindow()->system != nullptr) {
        SDL_DestroyWindow(TheWindow()->system);
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
    SetTheWindow(nullptr);
}

}  // namespace

WORD RegisterClassA(const WNDCLASSA* windowClass) {
    if (windowClass == nullptr || windowClass->lpfnWndProc == nullptr ||
        windowClass->lpszClassName == nullptr || FindClass(windowClass->lpszClassName) != classes.end()) {
        return 0;
    }
    classes.push_back({windowClass->lpszClassName, windowClass->lpfnWndProc});
    return 1;
}

BOOL UnregisterClassA(const char* className, HINSTANCE) {
    const auto known = FindClass(className);
    if (known == classes.end() || (TheWindow() != nullptr && TheWindow()->className == known->name)) {
        return FALSE;
    }
    classes.erase(known);
    return TRUE;
}

BOOL AdjustWindowRect(RECT* rectangle, DWORD style, BOOL) {
    const RECT frame = Frame(style);
    rectangle->left = LimitCoordinate(std::int64_t{rectangle->left} - frame.left);
    rectangle->top = LimitCoordinate(std::int64_t{rectangle->top} - frame.top);
    rectangle->right = LimitCoordinate(std::int64_t{rectangle->right} + frame.right);
    rectangle->bottom = LimitCoordinate(std::int64_t{rectangle->bottom} + frame.bottom);
    return TRUE;
}

HWND CreateWindowExA(DWORD, const char* className, const char* title, DWORD style, int x, int y, int width,
                     int height, HWND, HMENU, HINSTANCE, void*) {
    const auto windowClass = FindClass(className);
    if (windowClass == classes.end() || TheWindow() != nullptr) {
        return nullptr;
    }
    const RECT frame = Frame(style);
    const int clientWidth = ClientSide(width, frame.left + frame.right);
    const int clientHeight = ClientSide(height, frame.top + frame.bottom);
    if (clientWidth > largestSide || clientHeight > largestSide) {
        return nullptr;
    }

    auto record = std::make_unique<PlatformWindow>();
    record->className = windowClass->name;
    record->procedure = windowClass->procedure;
    record->title = Windows1250ToUtf8(title != nullptr ? title : "");
    record->popUp = (style & WS_POPUP) != 0;
    record->position = {x, y};
    record->clientWidth = clientWidth;
    record->clientHeight = clientHeight;
    record->deviceContext.window = record.get();

    const HWND window = record.get();
    SetTheWindow(std::move(record));
    Send(window, WM_CREATE);
    return IsTheWindow(window) ? window : nullptr;
}

BOOL ShowWindow(HWND window, int) {
    if (!IsTheWindow(window)) {
        return FALSE;
    }
    bool wasShown = false;
    if (SDL_Window* system = window->system) {
        wasShown = (SDL_GetWindowFlags(system) & SDL_WINDOW_SHOWN) != 0;
        if (window->popUp) {
            EnterAskedDisplayMode(system);
        }
        SDL_ShowWindow(system);
        GatherEvents();  // so SDL learns where the window manager has put the window
    }
    Send(window, WM_SIZE);
    Send(window, WM_MOVE);
    return wasShown ? TRUE : FALSE;
}

BOOL UpdateWindow(HWND window) {
    if (!IsTheWindow(window)) {
        return FALSE;
    }
    if (window->invalid) {
        Send(window, WM_PAINT);
    }
    return TRUE;
}

BOOL SetWindowPos(HWND window, HWND, int, int, int, int, UINT) {
    if (!IsTheWindow(window)) {
        return FALSE;
    }
    if (window->system != nullptr) {
        SDL_RaiseWindow(window->system);
    }
    return TRUE;
}

BOOL DestroyWindow(HWND window) {
    if (!IsTheWindow(window) || window->beingDestroyed) {
        return FALSE;
    }
    window->beingDestroyed = true;
    Send(window, WM_DESTROY);
    RemoveTheWindow();
    return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rectangle) {
    if (!IsTheWindow(window)) {
        return FALSE;
    }
    const RunValues size = ThroughRun(RunItemKind::ClientSize, [window] { return AskClientSize(*window); });
    *rectangle = {0, 0, size[0], size[1]};
    return TRUE;
}

BOOL GetWindowRect(HWND window, RECT* rectangle) {
    if (!IsTheWindow(window)) {
        return FALSE;
    }
    const auto [left, top, right, bottom] =
        ThroughRun(RunItemKind::OuterRectangle, [window] { return AskOuterRectangle(*window); });
    *rectangle = {left, top, right, bottom};
    return TRUE;
}

HWND GetActiveWindow() {
    const HWND window = TheWindow();
    if (window == nullptr) {
        return nullptr;
    }
    const RunValues active =
        ThroughRun(RunItemKind::Activity, [window] { return RunValues{HasKeyboard(*window) ? 1 : 0}; });
    return active[0] != 0 ? window : nullptr;
}

HDC BeginPaint(HWND window, PAINTSTRUCT* paint) {
    if (!IsTheWindow(window)) {
        return nullptr;
    }
    window->invalid = false;
    const RunValues size = AskClientSize(*window);  // of no effect on the run
    paint->rcPaint = {0, 0, size[0], size[1]};
    return &window->deviceContext;
}

BOOL EndPaint(HWND window, const PAINTSTRUCT*) {
    return IsTheWindow(window) ? TRUE : FALSE;
}

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_CLOSE) {
        DestroyWindow(window);
    }
    if (message == WM_SYSKEYDOWN && wParam == keyF4) {
        PostMessageA(window, WM_CLOSE, 0, 0);
    }
    if (message == WM_PAINT && IsTheWindow(window)) {
        window->invalid = false;
    }
    return 0;
}

HICON LoadIconA(HINSTANCE, const char*) {
    return nullptr;
}

HCURSOR LoadCursorA(HINSTANCE, UINT) {
    return nullptr;
}

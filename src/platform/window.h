#pragma once

#include "platform/message_queue.h"
#include "platform/types.h"

// Windows and their classes.

inline constexpr DWORD WS_OVERLAPPEDWINDOW = 0x00CF0000;
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr UINT CS_OWNDC = 0x20;
inline constexpr int SW_SHOW = 5;
inline constexpr UINT SWP_NOSIZE = 1;
inline constexpr UINT SWP_NOMOVE = 2;
inline constexpr UINT IDC_ARROW = 32512;

struct WNDCLASSA {
    UINT style = 0;
    WNDPROC lpfnWndProc = nullptr;
    int cbClsExtra = 0;
    int cbWndExtra = 0;
    HINSTANCE hInstance = nullptr;
    HICON hIcon = nullptr;
    HCURSOR hCursor = nullptr;
    HBRUSH hbrBackground = nullptr;
    const char* lpszMenuName = nullptr;
    const char* lpszClassName = nullptr;
};

struct PAINTSTRUCT {
    RECT rcPaint;
};

/// Remembers the class by its name. 0 on failure: no procedure, no name, or a name registered already.
WORD RegisterClassA(const WNDCLASSA* windowClass);
/// Takes a class back; 0 if there is no such class or a window of it still stands.
BOOL UnregisterClassA(const char* className, HINSTANCE instance);

/// Widens a client rectangle to the outer one of a window of that style. A pop-up has no frame.
BOOL AdjustWindowRect(RECT* rectangle, DWORD style, BOOL menu);

/// Makes the record of a window and dispatches `WM_CREATE` before it returns. The system's window
/// is made, hidden, when the pixel format is set, since the two can't be parted there.
/// Width and height are outer sizes as `AdjustWindowRect` gives them.
/// There is one window at a time. Without a display it is the record alone.
/// @return null for an unknown class, a second window, or sides beyond 16384 pixels.
HWND CreateWindowExA(DWORD extendedStyle, const char* className, const char* title, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                     void* parameter);
/// Shows the window; `WM_MOVE` and `WM_SIZE` are dispatched before it returns.
BOOL ShowWindow(HWND window, int showCommand);
/// Dispatches `WM_PAINT` if a region of the window is invalid.
BOOL UpdateWindow(HWND window);
/// Puts the window on top; of the flags only "no size, no move" is known.
BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags);
/// Dispatches `WM_DESTROY` and removes the window.
BOOL DestroyWindow(HWND window);

/// The drawable size in pixels, left and top 0; all zero while the window is minimised.
BOOL GetClientRect(HWND window, RECT* rectangle);
/// The outer rectangle on the screen, with the frame that the window manager really gives.
BOOL GetWindowRect(HWND window, RECT* rectangle);
/// The window that has the keyboard focus, if it is one of this process; null otherwise.
HWND GetActiveWindow();
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
/// Icons come with no program so far: always null, which means the system's own.
HICON LoadIconA(HINSTANCE instance, const char* name);
HCURSOR LoadCursorA(HINSTANCE instance, UINT identifier);

/// Default handling: `WM_CLOSE` destroys the window, Alt+F4 closes it, all else is 0.
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

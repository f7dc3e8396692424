#pragma once

#include "platform/types.h"

// Windows, their messages and the display mode.

// Messages. Those without a comment carry nothing in their parameters.
inline constexpr UINT WM_CREATE = 1;
inline constexpr UINT WM_DESTROY = 2;
inline constexpr UINT WM_MOVE = 3;
inline constexpr UINT WM_SIZE = 5;
inline constexpr UINT WM_ACTIVATE = 6;
inline constexpr UINT WM_PAINT = 15;
inline constexpr UINT WM_CLOSE = 16;
inline constexpr UINT WM_QUIT = 18;
inline constexpr UINT WM_KEYDOWN = 256;     ///< wParam: virtual key code
inline constexpr UINT WM_KEYUP = 257;       ///< wParam: virtual key code
inline constexpr UINT WM_CHAR = 258;        ///< wParam: character
inline constexpr UINT WM_SYSKEYDOWN = 260;  ///< wParam: virtual key code, pressed with Alt, or F10
inline constexpr UINT WM_SYSKEYUP = 261;    ///< wParam: virtual key code
inline constexpr UINT WM_MOUSEMOVE = 512;
inline constexpr UINT WM_LBUTTONDOWN = 513;
inline constexpr UINT WM_LBUTTONUP = 514;
inline constexpr UINT WM_RBUTTONDOWN = 516;
inline constexpr UINT WM_RBUTTONUP = 517;
inline constexpr UINT WM_MBUTTONDOWN = 519;
inline constexpr UINT WM_MBUTTONUP = 520;

inline constexpr DWORD WS_OVERLAPPEDWINDOW = 0x00CF0000;
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr UINT CS_OWNDC = 0x20;
inline constexpr int SW_SHOW = 5;
inline constexpr UINT SWP_NOSIZE = 1;
inline constexpr UINT SWP_NOMOVE = 2;
inline constexpr UINT PM_NOREMOVE = 0;
inline constexpr UINT IDC_ARROW = 32512;

inline constexpr DWORD DM_BITSPERPEL = 0x40000;
inline constexpr DWORD DM_PELSWIDTH = 0x80000;
inline constexpr DWORD DM_PELSHEIGHT = 0x100000;
inline constexpr LONG DISP_CHANGE_SUCCESSFUL = 0;
inline constexpr LONG DISP_CHANGE_BADMODE = -2;

using WNDPROC = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

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

/// One message of the queue.
struct MSG {
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

struct PAINTSTRUCT {
    RECT rcPaint;
};

struct DEVMODEA {
    WORD dmSize = 0;
    DWORD dmFields = 0;
    DWORD dmBitsPerPel = 0;
    DWORD dmPelsWidth = 0;   ///< pixels
    DWORD dmPelsHeight = 0;  ///< pixels
};

/// Remembers the class by its name. 0 on failure: no procedure, no name, or a name registered already.
WORD RegisterClassA(const WNDCLASSA* windowClass);
/// Takes a class back; 0 if there is no such class or a window of it still stands.
BOOL UnregisterClassA(const char* className, HINSTANCE instance);

/// Widens a client rectangle to the outer one of a window of that style. A pop-up has no frame.
BOOL AdjustWindowRect(RECT* rectangle, DWORD style, BOOL menu);

/// Makes the record of a window and dispatches `WM_CREATE` before it returns. The system's window
/// behind it is made, hidden, when the pixel format is set, since the two can't be parted there.
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

/// Gathers what has happened and tells whether a message waits; fills `message` with it if so.
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
/// Takes the next message, waiting for one if need be. 0 when it is the quit message; -1 if none could ever
/// come, as without a display.
BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last);
/// Here characters come with the keys themselves, so nothing is left to translate: always 0.
BOOL TranslateMessage(const MSG* message);
/// Hands the message to the window's procedure and returns its result. The record may die meanwhile.
LRESULT DispatchMessageA(const MSG* message);
/// Default handling: `WM_CLOSE` destroys the window, Alt+F4 closes it, all else is 0.
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// The next peek reports the quit message, whatever else is waiting.
void PostQuitMessage(int exitCode);

/// Asks for an exact mode; null goes back to the desktop's. Not 0 if the display doesn't offer it.
LONG ChangeDisplaySettingsA(const DEVMODEA* mode, DWORD flags);

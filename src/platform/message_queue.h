#pragma once

#include "platform/types.h"

// The messages for the window: what SDL has gathered, and what is posted.

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

inline constexpr UINT PM_NOREMOVE = 0;

/// One message of the queue.
struct MSG {
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

/// Gathers what has happened and reports whether a message waits; fills `message` with it if so. A release
/// of a key or button waits for the next turn when its press came in this one: it reports none once before.
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
/// Takes the next message, waiting for one if need be. 0 when it is the quit message; -1 if none could ever
/// come, as without a display.
BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last);
/// Here characters come with the keys themselves, so nothing is left to translate: always 0.
BOOL TranslateMessage(const MSG* message);
/// Hands the message to the window's procedure and returns its result. The record may die meanwhile.
LRESULT DispatchMessageA(const MSG* message);
BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// The next peek reports the quit message, whatever else is waiting.
void PostQuitMessage(int exitCode);

// For the layer itself.

/// Moves what SDL has gathered, and what it finds now, into the queue.
void GatherEvents();
/// Drops the messages that wait for the window.
void ForgetMessages(HWND window);

#pragma once

#include "platform/types.h"

// Device contexts, pixel formats and OpenGL contexts.

inline constexpr DWORD PFD_DOUBLEBUFFER = 0x01;
inline constexpr DWORD PFD_DRAW_TO_WINDOW = 0x04;
inline constexpr DWORD PFD_SUPPORT_OPENGL = 0x20;
inline constexpr BYTE PFD_TYPE_RGBA = 0;
inline constexpr DWORD PFD_MAIN_PLANE = 0;

/// The one device context of the window; null without a window.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC deviceContext);

/// @return a format number above 0, or 0 if the context is null or the display has none that fits.
int ChoosePixelFormat(HDC deviceContext, const PIXELFORMATDESCRIPTOR* descriptor);
/// Makes the system's window that the device context belongs to, hidden, with these attributes.
BOOL SetPixelFormat(HDC deviceContext, int format, const PIXELFORMATDESCRIPTOR* descriptor);
/// Fills `descriptor` with what the format is; 0 on failure, otherwise the number of formats.
int DescribePixelFormat(HDC deviceContext, int format, UINT size, PIXELFORMATDESCRIPTOR* descriptor);

/// @return null if no context can be had.
HGLRC wglCreateContext(HDC deviceContext);
BOOL wglMakeCurrent(HDC deviceContext, HGLRC context);
BOOL wglDeleteContext(HGLRC context);
/// Shows the back buffer at once, with no wait for the display's refresh.
BOOL SwapBuffers(HDC deviceContext);

#include "platform/gl_context.h"

#include <SDL.h>

#include <cstdio>

#include "platform/run.h"
#include "platform/video.h"
#include "platform/window_record.h"
#include "process/film.h"
#include "process/frame_limit.h"

namespace {

constexpr int onlyFormat = 1;

constexpr const char* noDisplay =
    "engine: error: no display can be opened: set DISPLAY or WAYLAND_DISPLAY to that of a running desktop, "
    "or start a virtual one with xvfb-run.\n";

// A context's handle is SDL's.
HGLRC Handle(SDL_GLContext context) {
    return static_cast<HGLRC>(context);
}

/// Where nothing is shown there is a context in name alone, and GL's calls do nothing.
HGLRC ContextInName() {
    static char context;
    return Handle(&context);
}

SDL_Window* SystemWindow(HDC deviceContext) {
    if (deviceContext == nullptr || !IsTheWindow(deviceContext->window)) {
        return nullptr;
    }
    return deviceContext->window->system;
}

}  // namespace

HDC GetDC(HWND window) {
    return IsTheWindow(window) ? &window->deviceContext : nullptr;
}

int ReleaseDC(HWND window, HDC deviceContext) {
    return IsTheWindow(window) && deviceContext == &window->deviceContext ? TRUE : FALSE;
}

int ChoosePixelFormat(HDC deviceContext, const PIXELFORMATDESCRIPTOR* descriptor) {
    if (deviceContext == nullptr || descriptor == nullptr) {
        return 0;
    }
    if (!FramesAreShown()) {
        return onlyFormat;
    }
    if (!StartVideo()) {
        std::fputs(noDisplay, stderr);
        return 0;
    }
    return SDL_GL_LoadLibrary(nullptr) == 0 ? onlyFormat : 0;
}

BOOL SetPixelFormat(HDC deviceContext, int format, const PIXELFORMATDESCRIPTOR* descriptor) {
    if (deviceContext == nullptr || !IsTheWindow(deviceContext->window) || format != onlyFormat) {
        return FALSE;
    }
    PlatformWindow& window = *deviceContext->window;
    if (window.system != nullptr) {
        return FALSE;  // a window has one format for good
    }

    deviceContext->pixelFormat = *descriptor;
    if (!FramesAreShown()) {
        return TRUE;
    }

    const bool fewColours = descriptor->cColorBits <= 16;
    SDL_GL_ResetAttributes();
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, fewColours ? 5 : 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, fewColours ? 6 : 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, fewColours ? 5 : 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, descriptor->cDepthBits);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, (descriptor->dwFlags & PFD_DOUBLEBUFFER) ? 1 : 0);
    const Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN |
                         (window.popUp ? SDL_WINDOW_BORDERLESS : SDL_WINDOW_RESIZABLE);
    SDL_Rect primary{};  // where its screen begins among the others, whose modes may be different
    SDL_GetDisplayBounds(0, &primary);
    window.system =
        SDL_CreateWindow(window.title.c_str(), primary.x + window.position.x, primary.y + window.position.y,
                         window.clientWidth, window.clientHeight, flags);
    SDL_GL_UnloadLibrary();  // which the choice of the format has loaded, and the window keeps
    return window.system != nullptr ? TRUE : FALSE;
}

int DescribePixelFormat(HDC deviceContext, int format, UINT, PIXELFORMATDESCRIPTOR* descriptor) {
    if (format != onlyFormat || (SystemWindow(deviceContext) == nullptr && FramesAreShown())) {
        return 0;
    }
    // What was asked for: the format has that at least, and how much more is known to its context alone.
    *descriptor = deviceContext->pixelFormat;
    return onlyFormat;
}

HGLRC wglCreateContext(HDC deviceContext) {
    if (!FramesAreShown()) {
        return ContextInName();
    }
    SDL_Window* window = SystemWindow(deviceContext);
    return window != nullptr ? Handle(SDL_GL_CreateContext(window)) : nullptr;
}

BOOL wglMakeCurrent(HDC deviceContext, HGLRC context) {
    if (!FramesAreShown()) {
        return TRUE;
    }
    SDL_Window* window = SystemWindow(deviceContext);
    if (window == nullptr && context != nullptr) {
        return FALSE;
    }
    if (SDL_GL_MakeCurrent(window, context) != 0) {
        return FALSE;
    }
    if (context != nullptr) {
        SDL_GL_SetSwapInterval(0);
    }
    return TRUE;
}

BOOL wglDeleteContext(HGLRC context) {
    if (context == nullptr || !VideoRuns()) {
        return FALSE;
    }
    SDL_GL_DeleteContext(context);
    return TRUE;
}

BOOL SwapBuffers(HDC deviceContext) {
    SDL_Window* window = SystemWindow(deviceContext);
    if (window == nullptr) {
        return FALSE;
    }
    int width = 0;
    int height = 0;
    SDL_GL_GetDrawableSize(window, &width, &height);
    FilmFrame(width, height);
    CountFrame(width, height);
    SDL_GL_SwapWindow(window);
    return TRUE;
}

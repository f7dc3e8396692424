#include "platform/xwayland.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <cstring>

namespace {

/// Its outputs have names that no other server gives.
bool HasOutputOfXwayland(Display* display) {
    constexpr const char* outputName = "XWAYLAND";
    XRRScreenResources* resources = XRRGetScreenResourcesCurrent(display, DefaultRootWindow(display));
    if (resources == nullptr) {
        return false;
    }
    bool has = false;
    for (int i = 0; i < resources->noutput && !has; i++) {
        XRROutputInfo* output = XRRGetOutputInfo(display, resources, resources->outputs[i]);
        if (output != nullptr) {
            has = std::strncmp(output->name, outputName, std::strlen(outputName)) == 0;
            XRRFreeOutputInfo(output);
        }
    }
    XRRFreeScreenResources(resources);
    return has;
}

bool IsOnX11(SDL_Window* window, SDL_SysWMinfo& info) {
    SDL_VERSION(&info.version);
    return SDL_GetWindowWMInfo(window, &info) == SDL_TRUE && info.subsystem == SDL_SYSWM_X11;
}

}  // namespace

bool IsXwayland() {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return false;
    }
    int event = 0;
    int error = 0;
    const bool is = XRRQueryExtension(display, &event, &error) != 0 && HasOutputOfXwayland(display);
    XCloseDisplay(display);
    return is;
}

bool AskOrigin(SDL_Window* window, POINT& origin) {
    SDL_SysWMinfo info;
    if (!IsOnX11(window, info)) {
        return false;
    }
    Display* display = info.info.x11.display;
    Window child = None;
    return XTranslateCoordinates(display, info.info.x11.window, DefaultRootWindow(display), 0, 0, &origin.x,
                                 &origin.y, &child) != 0;
}

bool AskSize(SDL_Window* window, int& width, int& height) {
    SDL_SysWMinfo info;
    XWindowAttributes attributes;
    if (!IsOnX11(window, info) ||
        XGetWindowAttributes(info.info.x11.display, info.info.x11.window, &attributes) == 0) {
        return false;
    }
    width = attributes.width;
    height = attributes.height;
    return true;
}

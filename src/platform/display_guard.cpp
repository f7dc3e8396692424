#include "platform/display_guard.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace {

constexpr int parentsEnd = SIGUSR1;  // or its word that it has put the mode back
pid_t guard = -1;

/// What drives one screen, as the desktop has set it up.
struct Screen {
    RRCrtc id = None;
    XRRCrtcInfo* desktop = nullptr;
};

int IgnoreError(Display*, XErrorEvent*) {
    return 0;
}  // such as a screen that has been unplugged
int EndGuard(Display*) {
    _exit(0);
}

bool HasSize(const XRRCrtcInfo& screen, unsigned width, unsigned height) {
    return std::minmax(screen.width, screen.height) == std::minmax(width, height);  // it may stand upright
}

/// Whether the screen shows a mode of that size, and it isn't the desktop's, or was left dark on the way
/// back.
bool IsChanged(Display* display, XRRScreenResources* resources, const Screen& screen, unsigned width,
               unsigned height) {
    XRRCrtcInfo* now = XRRGetCrtcInfo(display, resources, screen.id);
    const bool changed = now != nullptr && now->mode != screen.desktop->mode &&
                         (now->mode == None || HasSize(*now, width, height));
    if (now != nullptr) {
        XRRFreeCrtcInfo(now);
    }
    return changed;
}

/// Runs in the guard, which leaves by _exit alone: all that the process does at its end is the parent's
/// business.
[[noreturn]] void Guard(pid_t parent, int readyPipe, unsigned width, unsigned height) {
    setsid();  // what is sent to the whole group of processes, as by Ctrl+C, is the parent's to act on
    for (const int ending : {SIGTERM, SIGHUP}) {
        signal(ending, SIG_IGN);
    }
    sigset_t watched;
    sigemptyset(&watched);
    sigaddset(&watched, parentsEnd);
    sigprocmask(SIG_BLOCK, &watched, nullptr);
    prctl(PR_SET_PDEATHSIG, parentsEnd);
    if (getppid() != parent) {
        _exit(0);
    }
    // The parent's connection to the server has to end with the parent.
    readyPipe = dup2(readyPipe, STDERR_FILENO + 1);
    close_range(STDERR_FILENO + 2, ~0u, 0);

    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        _exit(0);
    }
    XSetErrorHandler(IgnoreError);
    XSetIOErrorHandler(EndGuard);
    const Window root = DefaultRootWindow(display);
    const int number = DefaultScreen(display);
    XRRScreenResources* resources = XRRGetScreenResourcesCurrent(display, root);
    if (resources == nullptr) {
        _exit(0);
    }
    std::vector<Screen> screens;
    for (int i = 0; i < resources->ncrtc; i++) {
        XRRCrtcInfo* desktop = XRRGetCrtcInfo(display, resources, resources->crtcs[i]);
        if (desktop != nullptr) {
            screens.push_back({resources->crtcs[i], desktop});
        }
    }
    if (write(readyPipe, "", 1) != 1) {
        _exit(0);
    }
    close(readyPipe);

    int received = 0;
    sigwait(&watched, &received);
    XGrabServer(display);
    for (const Screen& screen : screens) {
        if (!IsChanged(display, resources, screen, width, height)) {
            continue;
        }
        // Neither the larger nor the smaller mode fits into the size that belongs to the other.
        XRRSetCrtcConfig(display, resources, screen.id, CurrentTime, 0, 0, None, RR_Rotate_0, nullptr, 0);
        XRRSetScreenSize(display, root, DisplayWidth(display, number), DisplayHeight(display, number),
                         DisplayWidthMM(display, number), DisplayHeightMM(display, number));
        XRRSetCrtcConfig(display, resources, screen.id, CurrentTime, screen.desktop->x, screen.desktop->y,
                         screen.desktop->mode, screen.desktop->rotation, screen.desktop->outputs,
                         screen.desktop->noutput);
    }
    XUngrabServer(display);
    XSync(display, False);
    _exit(0);
}

}  // namespace

void StartDisplayGuard(int width, int height) {
    int ready[2];
    if (guard > 0 || pipe(ready) != 0) {
        return;
    }
    const pid_t parent = getpid();
    guard = fork();
    if (guard == 0) {
        Guard(parent, ready[1], static_cast<unsigned>(width), static_cast<unsigned>(height));
    }
    close(ready[1]);
    char byte;
    if (read(ready[0], &byte, 1) != 1) {  // it has ended: there is nothing to guard
        StopDisplayGuard();
    }
    close(ready[0]);
}

void StopDisplayGuard() {
    if (guard <= 0) {
        return;
    }
    kill(guard, parentsEnd);
    waitpid(guard, nullptr, 0);
    guard = -1;
}

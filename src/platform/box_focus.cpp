#include "platform/box_focus.h"

#include <X11/Xlib.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int IgnoreError(Display*, XErrorEvent*) {
    return 0;
}  // such as a window that is gone already
int EndHelper(Display*) {
    _exit(0);
}

/// Runs in the helper. The helper leaves by _exit alone: all that the process does at its end is the
/// parent's business.
[[noreturn]] void FocusNewWindows(int readyPipe) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        _exit(0);
    }
    XSetErrorHandler(IgnoreError);
    XSetIOErrorHandler(EndHelper);

    const Window root = DefaultRootWindow(display);
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(display, root, &attributes)) {
        _exit(0);
    }
    const bool managed = (attributes.all_event_masks & SubstructureRedirectMask) != 0;
    if (managed) {
        _exit(0);
    }
    XSelectInput(display, root, SubstructureNotifyMask);
    XSync(display, False);
    if (write(readyPipe, "", 1) != 1) {
        _exit(0);
    }

    for (;;) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type != MapNotify) {
            continue;
        }
        XSetInputFocus(display, event.xmap.window, RevertToPointerRoot, CurrentTime);
        XFlush(display);
    }
}

}  // namespace

BoxFocus::BoxFocus() {
    int ready[2];
    if (pipe(ready) != 0) {
        return;
    }
    helper = fork();
    if (helper == 0) {
        FocusNewWindows(ready[1]);
    }
    close(ready[1]);
    char byte;
    gives = read(ready[0], &byte, 1) == 1;  // otherwise the helper has ended
    close(ready[0]);
}

BoxFocus::~BoxFocus() {
    if (helper <= 0) {
        return;
    }
    kill(helper, SIGKILL);
    waitpid(helper, nullptr, 0);
}

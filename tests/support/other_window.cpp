#include "support/other_window.h"

#include <X11/Xlib.h>

OtherWindow::OtherWindow() {
    Display* connection = XOpenDisplay(nullptr);
    display = connection;
    window = XCreateSimpleWindow(connection, DefaultRootWindow(connection), 900, 700, 200, 100, 0, 0, 0);
    XSelectInput(connection, window, StructureNotifyMask);
    XMapWindow(connection, window);
    for (XEvent event; XNextEvent(connection, &event) == 0 && event.type != MapNotify;) {
    }
    XSetInputFocus(connection, window, RevertToPointerRoot, CurrentTime);
    XSync(connection, False);
}

OtherWindow::~OtherWindow() {
    XCloseDisplay(static_cast<Display*>(display));
}

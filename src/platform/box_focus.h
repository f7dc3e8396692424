#pragma once

#include <sys/types.h>

/// For as long as it lives, every window that appears on a display without a window manager gets the
/// keyboard focus: nobody else would give it, and a box could then not be closed by a key. Next to a
/// window manager, or without a display, it does nothing.
struct BoxFocus {
    bool gives = false;  ///< whether it really does
    pid_t helper = -1;   ///< a process of its own, since the box blocks this one

    BoxFocus();
    ~BoxFocus();
    BoxFocus(const BoxFocus&) = delete;
    BoxFocus& operator=(const BoxFocus&) = delete;
};

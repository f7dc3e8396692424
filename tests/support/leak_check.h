#pragma once

#include <cstdlib>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

/// Under the sanitizers, looks for leaks before SDL ends and unloads the display's drivers: what these keep
/// in their own data would count as leaked afterwards. Call it once the window stands, since what was
/// registered last for the end of the process comes first.
inline void CheckLeaksBeforeDriversUnload() {
#ifdef __SANITIZE_ADDRESS__
    std::atexit(__lsan_do_leak_check);
#endif
}

#pragma once

#include <dlfcn.h>
#include <link.h>

/// Keeps every shared library that is loaded now until the process ends. Display drivers hold memory that
/// only their own data lead to: it would count as leaked if SDL unloaded them before the leak check.
inline void KeepLoadedLibraries() {
    const auto keep = [](dl_phdr_info* library, std::size_t, void*) {
        dlopen(library->dlpi_name, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
        return 0;
    };
    dl_iterate_phdr(keep, nullptr);
}

#include "platform/entry.h"
#include "platform/window.h"

/// The process entry. The layer starts what it needs when it is first asked for, so there is nothing to
/// do before the program's own entry.
int main(int, char** arguments) {
    return WinMain(nullptr, nullptr, arguments[0], SW_SHOW);
}

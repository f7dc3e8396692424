#include "platform/close_request.h"
#include "platform/entry.h"
#include "platform/window.h"

/// The process entry. The layer starts what it needs when it is first asked for.
int main(int, char** arguments) {
    CloseOnSignals();
    return WinMain(nullptr, nullptr, arguments[0], SW_SHOW);
}

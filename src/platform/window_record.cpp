#include "platform/window_record.h"

#include <utility>

namespace {

std::unique_ptr<PlatformWindow> theWindow;

}  // namespace

PlatformWindow* TheWindow() {
    return theWindow.get();
}

bool IsTheWindow(HWND window) {
    return window != nullptr && window == theWindow.get();
}

void SetTheWindow(std::unique_ptr<PlatformWindow> window) {
    theWindow = std::move(window);
}

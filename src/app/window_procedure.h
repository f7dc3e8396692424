#pragma once

#include "platform/window.h"

/// The window class's procedure. Reaches the engine through `theEngine`; before it exists and after the
/// teardown every message gets the default handling.
LRESULT WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

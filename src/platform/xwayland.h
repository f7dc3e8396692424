#pragma once

#include "platform/types.h"

struct SDL_Window;

// The X server of a Wayland compositor. It gives a window's place within its frame where its place on
// the screen is wanted, doesn't report every move, and may take a display mode and then give the whole
// screen.

/// Whether the X server at DISPLAY is such a one; asks it over a connection of its own.
bool IsXwayland();
/// Where the client area of a shown window stands on the screen. False if the server doesn't say, or isn't
/// an X server.
bool AskOrigin(SDL_Window* window, POINT& origin);
/// The size of a shown window, in pixels. False as above.
bool AskSize(SDL_Window* window, int& width, int& height);

#pragma once

#include <SDL_video.h>

/// The mode that full screen has been asked for; null while it is the desktop's.
const SDL_DisplayMode* AskedDisplayMode();

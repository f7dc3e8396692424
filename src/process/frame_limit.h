#pragma once

#include <string>

// A run of so many frames that nobody watches, with a picture of the last one: what `--frames` and
// `--screenshot` ask for.

/// @param frames above 0; after so many the closing of the window is asked for
/// @param screenshot the file that takes the last frame as a PNG image; empty: none
void LimitFrames(int frames, const std::string& screenshot);
/// Whether a limit is set, so that nobody is there to close a box.
bool FramesAreLimited();
/// A frame stands in the back buffer and is about to be shown. Does nothing without a limit.
void CountFrame(int width, int height);
/// What frames and picture lack, as a message; empty if nothing. After the end of the run.
std::string WhatIsUndone();

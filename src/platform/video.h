#pragma once

// SDL's video part, which window, messages, display mode and cursor share.

/// Starts it, if need be; false without a display. It lasts as long as the process.
bool StartVideo();
bool VideoRuns();
/// Whether it runs by that driver of SDL's, "x11" or "wayland".
bool VideoRunsBy(const char* driver);
/// Whether a program can move the cursor on this display: not so under Wayland.
bool CursorCanBeMoved();
/// Whether the X server is part of a Wayland compositor, whose word on windows and modes needs asking
/// twice.
bool RunsOnXwayland();
/// Says otherwise than the display, until the video part is started anew.
void SetCursorCanBeMoved(bool can);
/// Ends it early, once no window stands any more.
void StopVideo();

#pragma once

// SDL's video part, which window, messages, display mode and cursor share.

/// Starts it, if need be; false without a display. It lasts as long as the process.
bool StartVideo();
bool VideoRuns();
/// Ends it early, once no window stands any more.
void StopVideo();

#pragma once

// SDL's video part, which window, messages, display mode and cursor share.

/// Lets SDL end with the process.
void EndSdlWithProcess();
/// Starts it, if need be; false without a display. It ends with the process, which also brings the
/// desktop's display mode back.
bool StartVideo();
bool VideoRuns();
/// Ends it early, with all windows.
void StopVideo();

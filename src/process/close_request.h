#pragma once

// The closing of the window on request: of the signals by which terminals and sessions end their programs,
// and of this layer itself. The message pump makes it a WM_CLOSE.

/// From now on SIGTERM, SIGINT and SIGHUP, but for those that this process ignores from its start, ask for
/// the closing, which also ends a box that stands on the screen. Another one, when that hasn't ended the
/// process, ends it at once with code 1.
void CloseOnSignals();
/// Asks for the closing.
void RequestClose();
/// Whether that has been asked for, at any time.
bool CloseIsRequested();
/// True once after a request: for the pump.
bool TakeCloseRequest();

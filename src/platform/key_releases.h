#pragma once

// When the focus is lost SDL reports a release for every key that is held, though its user has released
// none, and later keeps the real releases to itself, since it takes those keys for released. This keeps
// the first out of SDL's queue and restores the others. Under X11 the server's own events say which
// releases are real; elsewhere those that come right before the loss, in the same turn of the pump, are
// taken for made up.

/// Starts watching SDL's events, from when its video part is up.
/// @param onX11 whether that is connected to an X server
void WatchKeyReleases(bool onX11);
/// Moves what has happened into SDL's queue, as one turn of the pump.
void PumpEvents();

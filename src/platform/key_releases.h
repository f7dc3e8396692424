#pragma once

struct SDL_KeyboardEvent;

// When the focus is lost SDL reports a release for every key that is held, though its user has released
// none, and later keeps the real releases to itself, since it takes those keys for released. Under X11
// this tells real releases apart, and restores those that SDL would keep. Elsewhere those that stand right
// before the loss, in the same turn of the pump, are taken for made up.

/// Starts watching SDL's events, from when its video part is up.
void WatchKeyReleases();
/// A turn of the pump is over.
void EndTurn();
/// Whether a release is known to be a real one. Elsewhere than under X11 it never is.
bool IsRealRelease(const SDL_KeyboardEvent& release);

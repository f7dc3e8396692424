#pragma once

struct SDL_KeyboardEvent;

// When the focus is lost SDL reports a release for every key that is held, though its user has released
// none, and later keeps the real releases to itself, since it takes those keys for released. Under X11
// this tells real releases apart, and restores those that SDL would keep.

/// Starts watching SDL's events, from when its video part is up.
void WatchKeyReleases();
/// Whether a release is known to be a real one. Elsewhere than under X11 it never is.
bool IsRealRelease(const SDL_KeyboardEvent& release);

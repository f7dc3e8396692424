#pragma once

// The world loaded anew while it is played, where its files change. The run so far is replayed in it
// without being drawn, so that everything stands where it would stand if the world had been like that from
// the start.

/// From now on this is done. F5 begins at the start.
/// @param fromStart every change begins at the start, too
void WatchWorld(bool fromStart);
bool WorldIsWatched();
/// What OpenGL's state is now, each loading begins with. Once, before the first.
void KeepGlState();
/// After a frame: loads the world anew if its files have changed and have been still for a moment. A world
/// that can't be loaded without a message box leaves the old one as it is.
void ReloadIfChanged();

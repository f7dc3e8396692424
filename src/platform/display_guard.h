#pragma once

// A display mode outlives the process that has asked for it. So a process of its own watches, and puts the
// desktop's mode back once this one has ended without doing so: killed, crashed or told to end at once.

/// Starts watching, before the mode is changed to one of that size in pixels. Only X servers need it.
void StartDisplayGuard(int width, int height);
/// Sends the guard away; the desktop's mode has to be back.
void StopDisplayGuard();

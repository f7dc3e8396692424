#pragma once

// A display mode outlives the process that has asked for it. So a process of its own watches, looks when
// this one has ended in any way or has left full screen, and puts the desktop's mode back if it isn't
// there.

/// Starts watching, before the mode is changed to one of that size in pixels. Only X servers need it.
void StartDisplayGuard(int width, int height);
/// Lets the guard look, and waits until it is done.
void StopDisplayGuard();

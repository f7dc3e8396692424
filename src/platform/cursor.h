#pragma once

// Where the display server can't move the cursor, as under Wayland, its position is made up: the
// callers' last one plus all motion of the mouse since. The real cursor is hidden meanwhile.

/// Does so although the display could, or the other way round.
void SetCursorMadeUp(bool madeUp);
/// The mouse has moved; of no effect if the cursor is real.
void MoveCursor(int x, int y);
/// The next question for the position finds it unknown: wherever it is, nobody has moved it there.
void ForgetCursorPosition();

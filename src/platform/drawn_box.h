#pragma once

struct SDL_Window;

/// Shows a box that is drawn here, in a window of its own, and waits until Return, Escape, a click on its
/// button or the window's closing ends it, or the program's closing is asked for. For displays on which SDL
/// has no box. Text and caption are Windows-1250 bytes. The focus of the keyboard and what the mouse does
/// are as before.
/// @param parent the window that it stands above; may be null
/// @return false if it can't be shown: no window, or no font
bool ShowDrawnBox(SDL_Window* parent, const char* caption, const char* text);

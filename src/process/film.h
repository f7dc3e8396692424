#pragma once

#include <string>

// All frames as pictures: what `--film` asks for.

/// From now on each frame is written: into a file whose name ends in .mp4, by ffmpeg, or as a numbered PNG
/// image into a folder, which is made if need be.
/// @return empty, or the reason why that can't be
std::string StartFilm(const std::string& path);
/// @param milliseconds that a frame of the film lasts, above 0; before the first
void SetFilmPeriod(int milliseconds);
/// A frame stands in the back buffer and is about to be shown. Does nothing without a film.
void FilmFrame(int width, int height);
/// Ends the film. What went wrong with it, as a message; empty if nothing.
std::string EndFilm();

#pragma once

#include <string>

/// Draws all textures of the courtyard into the folder `data` below. Each of them can be laid side by side
/// without a seam. Throws std::runtime_error if a file can't be written.
void WriteTextures(const std::string& folder);

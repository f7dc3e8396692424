#pragma once

#include <cstdint>

/// Writes a PNG image, not compressed. False if the file can't be written, or for a picture without pixels.
/// @param pixels red, green and blue of each pixel, row by row from the bottom one, `3 * width * height`
/// bytes
bool WritePngFile(const char* fileName, int width, int height, const std::uint8_t* pixels);

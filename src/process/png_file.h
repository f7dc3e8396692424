#pragma once

#include <cstdint>
#include <string>

/// The bytes of a PNG image, not compressed.
/// @param width,height pixels, each above 0
/// @param pixels red, green and blue of each pixel, row by row from the bottom one, `3 * width * height`
/// bytes
std::string PngFile(int width, int height, const std::uint8_t* pixels);

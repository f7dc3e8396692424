#pragma once

#include <cstdint>
#include <string>

/// The bytes of a PNG image, not compressed.
/// @param width,height pixels, each above 0
/// @param pixels red, green, blue and, with 4 channels, alpha of each pixel, row by row from the bottom
/// one, `channels * width * height` bytes
/// @param channels 3 or 4
std::string PngFile(int width, int height, const std::uint8_t* pixels, int channels = 3);

#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The back buffer as red, green and blue bytes, the bottom row first.
std::vector<std::uint8_t> ReadPicture(int width, int height);
/// Writes it as a PNG image.
/// @return empty, or the reason why that can't be
std::string SavePicture(const std::string& path, int width, int height);

#pragma once

#include <cstdint>
#include <vector>

/// The back buffer as red, green and blue bytes, the bottom row first.
std::vector<std::uint8_t> ReadPicture(int width, int height);

#pragma once

#include <cstdint>

/// For the sides of TGA textures: true for 2, 4, 8 and so on up to 512, and for nothing else.
bool IsPowerOfTwo(std::int32_t size);

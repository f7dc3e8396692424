#pragma once

#include <bit>
#include <cstdint>
#include <string>

namespace engine {

// Files are built in memory, byte by byte, so that they are the same whatever machine writes them.

inline void AppendInt32(std::string& bytes, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(bits >> shift & 0xFF);
    }
}

inline void AppendFloat(std::string& bytes, float value) {
    AppendInt32(bytes, std::bit_cast<std::int32_t>(value));
}

/// Writes a file, and makes its folders if need be. Throws std::runtime_error if it can't.
void WriteBytes(const std::string& path, const std::string& bytes);

}  // namespace engine

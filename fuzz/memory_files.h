#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// The files that readers see while they are fuzzed: in memory, as a disk would take most of the time. The
// linker leads calls of `fopen`, `access` and `opendir` here (see CMakeLists.txt).

struct MemoryFile {
    std::string_view name;
    std::string_view bytes;
};

/// While one of these exists, its files are all that can be read. The log goes nowhere. The disk is there
/// again afterwards: the fuzzing library reads from it between two inputs.
struct MemoryFiles {
    /// @param list refers to memory of the caller
    explicit MemoryFiles(std::vector<MemoryFile> list);
    ~MemoryFiles();
    MemoryFiles(const MemoryFiles&) = delete;
    MemoryFiles& operator=(const MemoryFiles&) = delete;
};

inline std::string_view Characters(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

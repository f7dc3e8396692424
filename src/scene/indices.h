#pragma once

#include <algorithm>
#include <cstdint>

/// Whether all indices name one of `count` entries.
inline bool AreIndicesBelow(const std::int32_t* indices, std::int32_t indexCount, std::int32_t count) {
    std::uint32_t largest = 0;  // a negative index comes out larger than any other
    for (std::int32_t i = 0; i < indexCount; i++) {
        largest = std::max(largest, static_cast<std::uint32_t>(indices[i]));
    }
    return indexCount == 0 || largest < static_cast<std::uint32_t>(count);
}

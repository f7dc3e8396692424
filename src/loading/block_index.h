#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/files.h"

/// Every opening brace of a text, in an order that brings those with the same name before them together,
/// so that a scene with thousands of objects doesn't search the whole text for each of them.
struct BlockIndex {
    struct Head {
        std::uint64_t ending;  ///< the last eight characters before `nameEnd`, the last one on top
        std::size_t brace;     ///< position of the opening brace
        std::size_t nameEnd;   ///< behind the last character before it that is no blank and no line end
    };

    std::vector<Head> heads;  ///< ordered by what stands before `nameEnd`, read backwards

    explicit BlockIndex(const std::string& text);
    /// Exactly what `FindAttributeBlock` gives from the start of the stream, which must hold the text that
    /// the index was made of.
    bool Find(const char* name, TextStream& stream) const;
};

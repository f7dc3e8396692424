#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "text/attribute_text.h"

/// Every block of a text, so that a scene with thousands of objects doesn't search the whole text for each
/// of them. One pass lists the braces and the places before them at which a name may end; these are sorted
/// by the characters before them, backwards, so that the places of a name stand together.
struct BlockIndex {
    struct Block {
        std::size_t brace;  ///< position of the opening brace
        std::size_t end;    ///< after the brace that closes it, or the end of the text
        bool isClosed;
    };

    std::vector<Block> blocks;  ///< in the order of the text

    /// @param newText has to stay as it is for as long as the index is used
    explicit BlockIndex(std::string_view newText);
    /// The block that `FindAttributeBlock` finds from the start of the text; null if it finds none.
    const Block* Find(std::string_view name) const;

private:
    /// Between it and the brace of the block there is nothing but blanks and line ends.
    struct NameEnd {
        std::size_t position;
        std::size_t block;
    };

    std::string_view text;
    std::string backwards;          ///< the text from its last character to its first
    std::vector<NameEnd> nameEnds;  ///< by what stands before them, those of equal texts in their order

    const Block* FindPlainly(std::string_view name) const;
    /// The last characters before the position, the last one first.
    std::string_view Before(std::size_t position, std::size_t length) const;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/attribute_text.h"

/// Every block of a text, in an order that brings those with the same name before them together, so that a
/// scene with thousands of objects doesn't search the whole text for each of them.
struct BlockIndex {
    /// In place of the end of a block that isn't closed.
    static constexpr std::size_t notClosed = std::string_view::npos;

    struct Block {
        std::uint64_t ending;  ///< the last eight characters before `nameEnd`, the last one on top
        std::size_t brace;     ///< position of the opening brace
        std::size_t nameEnd;   ///< behind the last character before it that is no blank and no line end
        std::size_t end;       ///< behind the brace that closes it, or `notClosed`
    };

    std::string_view text;  ///< not owned
    /// Ordered by what stands before `nameEnd`, read backwards: by eight characters, or as many as names
    /// have once a name of more than eight has been looked for.
    std::vector<Block> blocks;

    /// @param newText has to stay as it is for as long as the index is used
    explicit BlockIndex(const std::string& newText);
    /// The block that `FindAttributeBlock` finds from the start of the text; null if it finds none. Good
    /// until the next search.
    const Block* Find(const std::string& name);
    /// What stands in the block, up to and including the brace that closes it or up to the end of the text.
    TextRange Body(const Block& block) const;

private:
    bool areEqualEndingsOrdered = false;
    /// Each different stretch of blanks and line ends before a brace: the first block behind it, in the
    /// order of the text. Made when an object bears a name of nothing else.
    std::vector<Block> firstBehindBlanks;

    const Block* FindBehindBlanks(const std::string& name);
};

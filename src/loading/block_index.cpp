#include "loading/block_index.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <tuple>
#include <unordered_set>

namespace {

using Block = BlockIndex::Block;

/// Characters in `BlockIndex::Block::ending`, by which nearly all comparisons are decided.
constexpr std::size_t endingLength = 8;
/// How many times that many characters are compared at all: further than the names of files reach.
constexpr std::size_t comparedEndings = 8;
/// How far the nearest place to begin a search at is looked for character by character.
constexpr std::size_t shortWay = 256;

bool IsBlank(char c) {
    return c == ' ' || c == '\n';
}

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) <= 127;
}

/// The eight characters before the end, the last one in the highest byte; 0 beyond the start of the text.
std::uint64_t EndingBefore(std::string_view text, std::size_t end) {
    std::uint64_t ending = 0;
    if (std::endian::native == std::endian::little && end >= endingLength) {
        std::memcpy(&ending, text.data() + end - endingLength, endingLength);
        return ending;
    }
    for (std::size_t i = 0; i < endingLength; i++) {
        ending = ending << 8 | (i < end ? static_cast<unsigned char>(text[end - 1 - i]) : 0);
    }
    return ending;
}

/// The same, `number` times eight characters further before.
std::uint64_t EndingBefore(std::string_view text, std::size_t end, std::size_t number) {
    return EndingBefore(text, end - std::min(end, number * endingLength));
}

/// Orders blocks by the ending that they hold, and among equals by their places.
void OrderByEnding(std::span<Block> blocks) {
    const auto key = [](const Block& block) { return std::tuple(block.ending, block.brace); };
    // Equal endings come in the order of the text already.
    if (!std::ranges::is_sorted(blocks, {}, key)) {
        std::ranges::sort(blocks, {}, key);
    }
}

/// Orders those that have the same ending by what stands before it.
/// @param number of the ending that is ordered by next
void OrderEqualEndings(std::span<Block> blocks, std::string_view text, std::size_t number = 1) {
    for (auto first = blocks.begin(); number < comparedEndings && first != blocks.end();) {
        const std::uint64_t ending = first->ending;
        const auto last =
            std::find_if(first, blocks.end(), [=](const Block& block) { return block.ending != ending; });
        if (last - first > 1) {
            const std::span<Block> equal(first, last);
            for (Block& block : equal) {
                block.ending = EndingBefore(text, block.nameEnd, number);
            }
            OrderByEnding(equal);
            OrderEqualEndings(equal, text, number + 1);
            for (Block& block : equal) {
                block.ending = ending;
            }
        }
        first = last;
    }
}

/// The characters that may stand in a name and between it and its brace. Any other one makes the search for
/// the name start afresh.
struct HeadCharacters {
    bool are[256] = {};

    explicit HeadCharacters(std::string_view name) {
        for (const char c : name) {
            are[static_cast<unsigned char>(c)] = true;
        }
        are[static_cast<unsigned char>(' ')] = true;
        are[static_cast<unsigned char>('\n')] = true;
    }
    bool Have(char c) const { return are[static_cast<unsigned char>(c)]; }
};

/// For each beginning of the name, how long the longest shorter one is that it ends with.
std::vector<std::size_t> ShorterBeginnings(std::string_view name) {
    std::vector<std::size_t> shorter(name.size() + 1);
    std::size_t length = 0;
    for (std::size_t i = 1; i < name.size(); i++) {
        while (length > 0 && name[i] != name[length]) {
            length = shorter[length];
        }
        length += name[i] == name[length] ? 1 : 0;
        shorter[i + 1] = length;
    }
    return shorter;
}

/// The plain search for one name, with the place where it stands, so that it can be led to where the name
/// may be found. The name isn't empty and is plain ASCII.
struct BlockSearch {
    std::string_view text;
    std::string_view name;
    std::size_t position = 0;  ///< of the next character to read
    std::size_t matched = 0;   ///< characters of the name; once it is all of them a brace must follow

    /// Reads up to the limit. True if a block begins with the last character read.
    bool Run(std::size_t limit) {
        while (position < limit) {
            const char c = text[position++];
            if (matched < name.size()) {
                matched = c == name[matched] ? matched + 1 : 0;
            } else if (c == '{') {
                return true;
            } else if (!IsBlank(c)) {
                matched = 0;
            }
        }
        return false;
    }

    /// Skips to a place no further than `to` at which the search, had it read everything before, would
    /// start afresh; no block of the name may begin before. Without such a place it stays.
    void SkipTowards(std::size_t to, const HeadCharacters& head) {
        // Without a brace in the name the way ends at the brace before, at the latest.
        const std::size_t near = head.Have('{') ? to - std::min(to, shortWay) : 0;
        std::size_t start = to;
        while (start > std::max(near, position) && head.Have(text[start - 1])) {
            start--;
        }
        if (start <= position) {
            return;
        }
        if (!head.Have(text[start - 1])) {
            position = start;
            matched = 0;
            return;
        }
        SkipOverBeginnings(to);
    }

    /// The same where all that is near may be part of a head: a search has matched as many characters as
    /// the text ends with of those that the name begins with, if not fewer. So where it ends with none,
    /// behind a character that doesn't separate name and brace, there is nothing matched.
    void SkipOverBeginnings(std::size_t to) {
        const std::vector<std::size_t> shorter = ShorterBeginnings(name);
        for (std::size_t length = 2 * (shortWay + name.size());; length *= 2) {
            const std::size_t from = to - std::min(to - position, length);
            // What has begun before `from` can't be seen, so wait until it must be over.
            const std::size_t sure = from == 0 ? 0 : from + name.size();
            std::size_t found = position;
            std::size_t ended = 0;
            for (std::size_t i = from; i < to; i++) {
                while (ended > 0 && (ended == name.size() || text[i] != name[ended])) {
                    ended = shorter[ended];
                }
                ended += text[i] == name[ended] ? 1 : 0;
                if (ended == 0 && !IsBlank(text[i]) && i >= sure) {
                    found = i + 1;
                }
            }
            if (found > position) {
                position = found;
                matched = 0;
                return;
            }
            if (from == position) {
                return;
            }
        }
    }
};

}  // namespace

BlockIndex::BlockIndex(const std::string& newText) : text(newText) {
    blocks.reserve(static_cast<std::size_t>(std::ranges::count(text, '{')));
    // As long as a block is open its end holds the number of the open one around it.
    std::size_t innermost = notClosed;
    std::size_t opening = text.find('{');
    std::size_t closing = text.find('}');
    while (opening != text.npos || closing != text.npos) {
        if (opening < closing) {
            std::size_t nameEnd = opening;
            while (nameEnd > 0 && IsBlank(text[nameEnd - 1])) {
                nameEnd--;
            }
            blocks.push_back({EndingBefore(text, nameEnd), opening, nameEnd, innermost});
            innermost = blocks.size() - 1;
            opening = text.find('{', opening + 1);
        } else {
            if (innermost != notClosed) {
                const std::size_t around = blocks[innermost].end;
                blocks[innermost].end = closing + 1;
                innermost = around;
            }
            closing = text.find('}', closing + 1);
        }
    }
    while (innermost != notClosed) {
        const std::size_t around = blocks[innermost].end;
        blocks[innermost].end = notClosed;
        innermost = around;
    }
    OrderByEnding(blocks);
}

TextRange BlockIndex::Body(const Block& block) const {
    return {block.brace + 1, std::min(block.end, text.size())};
}

const Block* BlockIndex::Find(const std::string& name) {
    std::string_view stem = name;
    while (!stem.empty() && IsBlank(stem.back())) {
        stem.remove_suffix(1);
    }
    // No search matches characters beyond ASCII.
    if (blocks.empty() || !std::ranges::all_of(name, IsAscii)) {
        return nullptr;
    }
    if (stem.empty()) {
        return FindBehindBlanks(name);
    }

    // Only the blocks before whose braces the stem stands can be meant.
    if (stem.size() > endingLength && !areEqualEndingsOrdered) {
        OrderEqualEndings(blocks, text);
        areEqualEndingsOrdered = true;
    }
    const std::uint64_t stemEnding = EndingBefore(stem, stem.size());
    const auto compare = [&](const Block& block) {
        for (std::size_t i = 0; i < comparedEndings && i * endingLength < stem.size(); i++) {
            const std::size_t compared = std::min(stem.size() - i * endingLength, endingLength);
            const std::size_t unusedBits = 8 * (endingLength - compared);
            const std::uint64_t left = i == 0 ? block.ending : EndingBefore(text, block.nameEnd, i);
            const std::uint64_t right = i == 0 ? stemEnding : EndingBefore(stem, stem.size(), i);
            if (left >> unusedBits != right >> unusedBits) {
                return left < right ? -1 : 1;
            }
        }
        return 0;
    };
    const auto first =
        std::ranges::partition_point(blocks, [&](const Block& block) { return compare(block) < 0; });
    const auto last =
        std::partition_point(first, blocks.end(), [&](const Block& block) { return compare(block) == 0; });

    // Whether the plain search, which comes from far, sees the name there depends on what it has met
    // before.
    const HeadCharacters head(name);
    BlockSearch search{text, name};
    const auto begins = [&](const Block& block) {
        search.SkipTowards(block.nameEnd - std::min(block.nameEnd, stem.size()), head);
        return search.Run(block.brace + 1);
    };
    if (std::is_sorted(first, last, [](const Block& a, const Block& b) { return a.brace < b.brace; })) {
        const auto found = std::find_if(first, last, begins);
        return found == last ? nullptr : &*found;
    }
    std::vector<const Block*> candidates;
    for (auto block = first; block != last; ++block) {
        candidates.push_back(&*block);
    }
    std::ranges::sort(candidates, {}, &Block::brace);
    const auto found = std::ranges::find_if(candidates, [&](const Block* block) { return begins(*block); });
    return found == candidates.end() ? nullptr : *found;
}

const Block* BlockIndex::FindBehindBlanks(const std::string& name) {
    if (name.empty()) {
        return &*std::ranges::min_element(blocks, {}, &Block::brace);
    }
    if (firstBehindBlanks.empty()) {
        std::vector<Block> all = blocks;
        std::ranges::sort(all, {}, &Block::brace);
        std::unordered_set<std::string_view> known;
        for (const Block& block : all) {
            if (known.insert(text.substr(block.nameEnd, block.brace - block.nameEnd)).second) {
                firstBehindBlanks.push_back(block);
            }
        }
    }
    // What stands before the blanks makes the search start afresh.
    for (const Block& block : firstBehindBlanks) {
        if (block.brace - block.nameEnd >= name.size() &&
            BlockSearch{text, name, block.nameEnd}.Run(block.brace + 1)) {
            return &block;
        }
    }
    return nullptr;
}

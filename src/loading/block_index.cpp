#include "loading/block_index.h"

#include <algorithm>
#include <string_view>

#include "settings/attribute_text.h"

namespace {

/// How far heads are compared for their order: as far as names reach.
constexpr std::size_t comparedLength = 199;
/// Characters in `BlockIndex::Head::ending`, by which nearly all comparisons are decided.
constexpr std::size_t endingLength = 8;

bool IsBlank(char c) {
    return c == ' ' || c == '\n';
}

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) <= 127;
}

/// Character i before the end, counted from 0 and backwards; 0 beyond the start of the text.
unsigned char CharacterBefore(std::string_view text, std::size_t end, std::size_t i) {
    return i < end ? static_cast<unsigned char>(text[end - 1 - i]) : 0;
}

/// The last characters before the end, at most eight, the last one in the highest byte.
std::uint64_t EndingBefore(std::string_view text, std::size_t end) {
    std::uint64_t ending = 0;
    for (std::size_t i = 0; i < endingLength; i++) {
        ending = ending << 8 | CharacterBefore(text, end, i);
    }
    return ending;
}

/// Compares what stands before two places, read backwards from character `from` on.
/// @return less than 0, 0 or more than 0, as for the left against the right
int CompareBackwards(std::string_view left, std::size_t leftEnd, std::string_view right,
                     std::size_t rightEnd, std::size_t from, std::size_t length) {
    for (std::size_t i = from; i < length && (i < leftEnd || i < rightEnd); i++) {
        const int difference = CharacterBefore(left, leftEnd, i) - CharacterBefore(right, rightEnd, i);
        if (difference != 0) {
            return difference;
        }
    }
    return 0;
}

}  // namespace

BlockIndex::BlockIndex(const std::string& text) {
    for (std::size_t brace = 0; (brace = text.find('{', brace)) != std::string::npos; brace++) {
        std::size_t nameEnd = brace;
        while (nameEnd > 0 && IsBlank(text[nameEnd - 1])) {
            nameEnd--;
        }
        heads.push_back({EndingBefore(text, nameEnd), brace, nameEnd});
    }
    std::ranges::sort(heads, [&text](const Head& left, const Head& right) {
        if (left.ending != right.ending) {
            return left.ending < right.ending;
        }
        return CompareBackwards(text, left.nameEnd, text, right.nameEnd, endingLength, comparedLength) < 0;
    });
}

bool BlockIndex::Find(const char* name, TextStream& stream) const {
    const std::string_view whole = name;
    std::string_view stem = whole;
    while (!stem.empty() && IsBlank(stem.back())) {
        stem.remove_suffix(1);
    }
    stream.position = 0;
    if (stem.empty()) {
        return FindAttributeBlock(name, stream);
    }
    const std::string& text = stream.text;
    stream.position = text.size();
    if (!std::ranges::all_of(whole, IsAscii)) {
        return false;  // no search matches the other characters
    }

    // Only behind these places can the block begin.
    const std::size_t length = std::min(stem.size(), comparedLength);
    const std::size_t unusedBits = 8 * (endingLength - std::min(length, endingLength));
    const std::uint64_t stemEnding = EndingBefore(stem, stem.size()) >> unusedBits;
    const auto compare = [&](const Head& head) {
        const std::uint64_t ending = head.ending >> unusedBits;
        if (ending != stemEnding) {
            return ending < stemEnding ? -1 : 1;
        }
        return CompareBackwards(text, head.nameEnd, stem, stem.size(), endingLength, length);
    };
    const auto first = std::ranges::partition_point(heads, [&](const Head& h) { return compare(h) < 0; });
    const auto last =
        std::partition_point(first, heads.end(), [&](const Head& h) { return compare(h) == 0; });
    std::vector<Head> candidates(first, last);
    // A name with a brace in it could send each of them back to the start of the text.
    if (!candidates.empty() && whole.find('{') != std::string_view::npos) {
        stream.position = 0;
        return FindAttributeBlock(name, stream);
    }
    std::ranges::sort(candidates, {}, &Head::brace);

    // Whether the plain search, which comes from far, sees the name there depends on what it has met
    // before. A character that can be no part of a head makes it start afresh, so going back to the last
    // of these is enough. An earlier brace is one, too: had it opened the block, the search would be over.
    bool partOfHead[256] = {};
    for (const char c : whole) {
        partOfHead[static_cast<unsigned char>(c)] = true;
    }
    partOfHead[static_cast<unsigned char>(' ')] = true;
    partOfHead[static_cast<unsigned char>('\n')] = true;
    for (const Head& head : candidates) {
        std::size_t start = head.brace;
        while (start > 0 && partOfHead[static_cast<unsigned char>(text[start - 1])]) {
            start--;
        }
        TextStream stretch{text.substr(start, head.brace + 1 - start)};
        if (FindAttributeBlock(name, stretch)) {
            stream.position = head.brace + 1;
            return true;
        }
    }
    return false;
}

#include "loading/block_index.h"

#include <algorithm>

#include "settings/attribute_text.h"

namespace {

/// How far heads are compared for their order: as far as names reach.
constexpr std::size_t comparedLength = 199;

bool IsBlank(char c) {
    return c == ' ' || c == '\n';
}

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) <= 127;
}

}  // namespace

BlockIndex::BlockIndex(const std::string& text) : reversed(text.rbegin(), text.rend()) {
    std::size_t nameEnd = 0;
    for (std::size_t i = 0; i < text.size(); i++) {
        if (text[i] == '{') {
            heads.push_back({i, nameEnd});
        }
        if (!IsBlank(text[i])) {
            nameEnd = i + 1;
        }
    }
    std::ranges::sort(heads, {}, [this](const Head& head) { return ReversedName(head, comparedLength); });
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
    std::string reversedStem(stem.rbegin(), stem.rend());
    reversedStem.resize(std::min(reversedStem.size(), comparedLength));
    const auto nameBefore = [&](const Head& head) { return ReversedName(head, reversedStem.size()); };
    std::vector<Head> candidates(
        std::ranges::lower_bound(heads, std::string_view(reversedStem), {}, nameBefore),
        std::ranges::upper_bound(heads, std::string_view(reversedStem), {}, nameBefore));
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

std::string_view BlockIndex::ReversedName(const Head& head, std::size_t length) const {
    return std::string_view(reversed).substr(reversed.size() - head.nameEnd, length);
}

#include "text/block_index.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

namespace {

/// Characters by which the places of names are sorted: as many as objects' names have.
constexpr std::size_t sortedLength = 63;

bool IsBlank(char c) {
    return c == ' ' || c == '\n';
}

/// The plain search for a block as a machine: in state n it has read n characters of the name, and in the
/// last state, with all of them read, it waits for the brace. It runs from several states at once, each a
/// bit: after some characters nearly all of them have become one, so it doesn't matter what stands before.
struct BlockSearch {
    std::string_view name;
    std::uint64_t waiting;            ///< the last state
    std::uint64_t stepsOn[256] = {};  ///< by character: the states from which it leads to the next one

    explicit BlockSearch(std::string_view newName)
        : name(newName), waiting(std::uint64_t{1} << newName.size()) {
        assert(name.size() <= sortedLength);
        for (std::size_t i = 0; i < name.size(); i++) {
            stepsOn[static_cast<unsigned char>(name[i])] |= std::uint64_t{1} << i;
        }
    }

    /// The states after the text. A brace ends the search in its last state, which is none afterwards.
    std::uint64_t Run(std::string_view text, std::uint64_t states) const {
        for (const char c : text) {
            const std::uint64_t on = states & stepsOn[static_cast<unsigned char>(c)];
            const std::uint64_t stays = IsBlank(c) ? states & waiting : 0;
            const std::uint64_t ends = c == '{' ? states & waiting : 0;
            states = on << 1 | stays | ((states & ~on & ~stays & ~ends) != 0 ? 1 : 0);
        }
        return states;
    }
};

}  // namespace

BlockIndex::BlockIndex(std::string_view newText) : text(newText), backwards(text.rbegin(), text.rend()) {
    std::vector<std::size_t> open;
    for (std::size_t at = 0; (at = text.find_first_of("{}", at)) != text.npos; at++) {
        if (text[at] == '{') {
            open.push_back(blocks.size());
            blocks.push_back({at, text.size(), false});
        } else if (!open.empty()) {
            blocks[open.back()].end = at + 1;
            blocks[open.back()].isClosed = true;
            open.pop_back();
        }
    }
    for (std::size_t block = 0; block < blocks.size(); block++) {
        std::size_t position = blocks[block].brace;
        nameEnds.push_back({position, block});
        while (position > 0 && IsBlank(text[position - 1])) {
            nameEnds.push_back({--position, block});
        }
    }
    std::ranges::sort(nameEnds, [this](const NameEnd& a, const NameEnd& b) {
        const int order = Before(a.position, sortedLength).compare(Before(b.position, sortedLength));
        return order != 0 ? order < 0 : a.position < b.position;
    });
}

std::string_view BlockIndex::Before(std::size_t position, std::size_t length) const {
    return std::string_view(backwards).substr(text.size() - position, length);
}

const BlockIndex::Block* BlockIndex::FindPlainly(std::string_view name) const {
    TextStream stream{std::string(text)};
    return FindAttributeBlock(std::string(name).c_str(), stream)
               ? &*std::ranges::lower_bound(blocks, stream.position - 1, {}, &Block::brace)
               : nullptr;
}

const BlockIndex::Block* BlockIndex::Find(std::string_view name) const {
    if (!std::ranges::all_of(name, [](char c) { return (c & 0x80) == 0; })) {
        return nullptr;  // no search matches characters beyond ASCII
    }
    if (name.size() > sortedLength) {
        return FindPlainly(name);
    }
    const std::string wanted(name.rbegin(), name.rend());
    const auto before = [&](const NameEnd& end) { return Before(end.position, name.size()); };
    const auto first = std::ranges::lower_bound(nameEnds, std::string_view(wanted), {}, before);
    std::vector<NameEnd> places(
        first, std::ranges::upper_bound(first, nameEnds.end(), std::string_view(wanted), {}, before));
    std::ranges::sort(places, {}, &NameEnd::position);

    // The name stands there; but the search, which comes from far, may have begun with one too early.
    const BlockSearch search(name);
    for (const NameEnd& place : places) {
        const Block& block = blocks[place.block];
        std::uint64_t states = 0;
        for (const std::size_t length : {64, 1024}) {
            const std::size_t begin = place.position - std::min(place.position, length);
            states = search.Run(text.substr(begin, block.brace - begin),
                                begin == 0 ? 1 : search.waiting | (search.waiting - 1));
            if (states == search.waiting) {
                return &block;
            }
            if ((states & search.waiting) == 0) {
                break;
            }
        }
        if ((states & search.waiting) != 0) {
            return FindPlainly(name);
        }
    }
    return nullptr;
}

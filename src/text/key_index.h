#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "text/attribute_text.h"

/// Where the keys of a reader stand in a text, and the whole number after each, listed in one pass over the
/// asterisks. Blocks may lie within each other, so a key may be met as often as there are blocks: what is
/// done for each has to be short. A key is the number of its text in the list of keys; none of them may
/// begin with another one.
struct KeyIndex {
    /// @param newKeys each begins with an asterisk; they have to stay for as long as the index is used
    KeyIndex(const AttributeText& newText, std::span<const std::string_view> newKeys);

    /// Calls `action` for each occurrence of the key in the range, in the order of the text, with the
    /// cursor after it and the whole number that a scan there gives.
    template <typename Action>
    void ForEach(TextRange range, std::size_t key, Action action) const {
        for (const Place& place : Within(range, key)) {
            action(CursorAt(place, range), place.NumberBefore(range.end));
        }
    }
    /// As `ForEach`, from the last occurrence to the first.
    template <typename Action>
    void ForEachBackwards(TextRange range, std::size_t key, Action action) const {
        const std::span<const Place> found = Within(range, key);
        for (auto place = found.rbegin(); place != found.rend(); ++place) {
            action(CursorAt(*place, range), place->NumberBefore(range.end));
        }
    }
    /// For keys whose last occurrence undoes what the others do: calls `action` with the cursor after it.
    template <typename Action>
    void ForLast(TextRange range, std::size_t key, Action action) const {
        if (const std::span<const Place> found = Within(range, key); !found.empty()) {
            action(CursorAt(found.back(), range));
        }
    }

private:
    struct Place {
        std::size_t begin;        ///< of what stands after the key
        std::size_t numberBegin;  ///< of the next number; the end of the text if there is none
        std::int32_t number;

        std::int32_t NumberBefore(std::size_t end) const { return numberBegin < end ? number : 0; }
    };

    const AttributeText& text;
    std::vector<std::vector<Place>> places;  ///< of each key, in the order of the text

    /// No key reaches over the end of a range.
    std::span<const Place> Within(TextRange range, std::size_t key) const {
        const auto first = std::ranges::lower_bound(places[key], range.begin, {}, &Place::begin);
        return {first, std::ranges::upper_bound(first, places[key].end(), range.end, {}, &Place::begin)};
    }
    TextCursor CursorAt(const Place& place, TextRange range) const {
        return {text, place.begin, range.end};
    }
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "settings/attribute_text.h"

/// Where the keys of a reader stand in a text, noted in one pass over it. The key loop of a block then
/// costs what it finds, however the blocks are nested. A key is the number of its text in the list of keys;
/// none of them may begin with another one.
struct KeyIndex {
    /// What is to be done about the number behind a key.
    enum class Handling {
        oneByOne,  ///< each occurrence counts, in the order of the text
        together,  ///< only how many there are with the number, and the last of them
        none,
    };
    /// Some occurrences of a key with the same integer behind them.
    struct Occurrences {
        std::int32_t number;
        std::size_t count;
        TextCursor last;  ///< behind the key where it stands last, in front of the number
    };

    /// @param newKeys each begins with an asterisk; they have to stay for as long as the index is used
    KeyIndex(AttributeText& newText, std::span<const std::string_view> newKeys);

    /// Cursors behind the occurrences of the key in the range, in the order of the text.
    template <typename Action>
    void ForEach(TextRange range, std::size_t key, Action action) const {
        for (const std::size_t place : Within(range, key)) {
            action(CursorBehind(place, range, key));
        }
    }
    /// The same for keys whose last occurrence undoes what the others do.
    template <typename Action>
    void ForLast(TextRange range, std::size_t key, Action action) const {
        const std::span<const std::size_t> found = Within(range, key);
        if (!found.empty()) {
            action(CursorBehind(found.back(), range, key));
        }
    }
    /// The same for keys that are about what the integer behind them names.
    /// @param handlingOf has to give the same for a number whenever it is asked about the key
    /// @return those that are handled one by one, and behind them the others, each number as often as it
    /// pleases, but the last occurrence last. Takes no longer than there are different numbers.
    std::vector<Occurrences> ForNumbers(TextRange range, std::size_t key,
                                        const std::function<Handling(std::int32_t)>& handlingOf);

private:
    /// The integers behind all occurrences of one key, as they are found if no block ends before them.
    struct Numbers {
        std::vector<std::size_t> starts;    ///< where they stand
        std::vector<std::int32_t> values;   ///< in the same order
        std::vector<std::size_t> oneByOne;  ///< places in this order of those that are handled so
        std::map<std::int32_t, std::vector<std::size_t>>
            together;  ///< the same for others, by their number
    };

    AttributeText& text;
    std::span<const std::string_view> keys;
    std::vector<std::vector<std::size_t>> places;  ///< of each key, in the order of the text
    std::vector<Numbers> numbers;                  ///< of each key, empty until they are asked for

    std::span<const std::size_t> Within(TextRange range, std::size_t key) const;
    TextCursor CursorBehind(std::size_t place, TextRange range, std::size_t key) const {
        return {text, place + keys[key].size(), range.end};
    }
    const Numbers& NumbersOf(std::size_t key, const std::function<Handling(std::int32_t)>& handlingOf);
};

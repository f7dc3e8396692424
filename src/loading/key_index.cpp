#include "loading/key_index.h"

#include <algorithm>

namespace {

using Places = std::vector<std::size_t>;

/// Those of the sorted places that lie from `begin` up to, and without, `end`.
std::span<const std::size_t> Between(const Places& places, std::size_t begin, std::size_t end) {
    const auto first = std::ranges::lower_bound(places, begin);
    return {first, std::lower_bound(first, places.end(), end)};
}

}  // namespace

KeyIndex::KeyIndex(AttributeText& newText, std::span<const std::string_view> newKeys)
    : text(newText), keys(newKeys), places(newKeys.size()), numbers(newKeys.size()) {
    const std::string_view characters = text.characters;
    for (std::size_t at = 0; (at = characters.find('*', at)) != characters.npos; at++) {
        const std::string_view rest = characters.substr(at);
        const auto key =
            std::ranges::find_if(keys, [&](std::string_view k) { return rest.starts_with(k); });
        if (key != keys.end()) {
            places[static_cast<std::size_t>(key - keys.begin())].push_back(at);
        }
    }
}

std::span<const std::size_t> KeyIndex::Within(TextRange range, std::size_t key) const {
    return Between(places[key], range.begin, range.end);
}

const KeyIndex::Numbers& KeyIndex::NumbersOf(std::size_t key,
                                             const std::function<Handling(std::int32_t)>& handlingOf) {
    Numbers& noted = numbers[key];
    for (std::size_t i = noted.starts.size(); i < places[key].size(); i++) {
        const TextRange rest = text.UpToZero({places[key][i], text.characters.size()});
        TextCursor cursor = CursorBehind(places[key][i], rest, key);
        noted.starts.push_back(std::min(text.NextNumber(cursor.position), rest.end));
        noted.values.push_back(ScanInt(cursor));
        const Handling handling = handlingOf(noted.values.back());
        if (handling == Handling::oneByOne) {
            noted.oneByOne.push_back(i);
        } else if (handling == Handling::together) {
            noted.together[noted.values.back()].push_back(i);
        }
    }
    return noted;
}

std::vector<KeyIndex::Occurrences> KeyIndex::ForNumbers(
    TextRange range, std::size_t key, const std::function<Handling(std::int32_t)>& handlingOf) {
    std::vector<Occurrences> found;
    const std::span<const std::size_t> within = Within(range, key);
    if (within.empty()) {
        return found;
    }
    const Numbers& noted = NumbersOf(key, handlingOf);
    const auto add = [&](std::size_t last, std::int32_t number, std::size_t count) {
        found.push_back({number, count, CursorBehind(places[key][last], range, key)});
    };

    const auto begin = static_cast<std::size_t>(within.data() - places[key].data());
    const std::size_t end = begin + within.size();
    // Behind the last ones the range may end before their number comes: then it is 0.
    const auto firstStart = noted.starts.begin() + static_cast<std::ptrdiff_t>(begin);
    const std::size_t numberless =
        begin + static_cast<std::size_t>(
                    std::lower_bound(firstStart, firstStart + static_cast<std::ptrdiff_t>(within.size()),
                                     range.end) -
                    firstStart);
    const Handling handlingOfNone = numberless == end ? Handling::none : handlingOf(0);

    for (const std::size_t i : Between(noted.oneByOne, begin, numberless)) {
        add(i, noted.values[i], 1);
    }
    if (handlingOfNone == Handling::oneByOne) {
        for (std::size_t i = numberless; i < end; i++) {
            add(i, 0, 1);
        }
    }
    if (noted.together.size() < numberless - begin) {
        for (const auto& [number, all] : noted.together) {
            const std::span<const std::size_t> some = Between(all, begin, numberless);
            if (!some.empty()) {
                add(some.back(), number, some.size());
            }
        }
    } else {
        for (std::size_t i = begin; i < numberless; i++) {
            if (handlingOf(noted.values[i]) == Handling::together) {
                add(i, noted.values[i], 1);
            }
        }
    }
    if (handlingOfNone == Handling::together) {
        add(end - 1, 0, end - numberless);
    }
    return found;
}

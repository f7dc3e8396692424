#include "text/key_index.h"

#include <cassert>

KeyIndex::KeyIndex(const AttributeText& newText, std::span<const std::string_view> newKeys)
    : text(newText), places(newKeys.size()) {
    const std::string_view characters = text.characters;
    for (std::size_t at = 0; (at = characters.find('*', at)) != characters.npos; at++) {
        for (std::size_t key = 0; key < newKeys.size(); key++) {
            assert(newKeys[key].starts_with('*'));
            if (characters.substr(at).starts_with(newKeys[key])) {
                const std::size_t begin = at + newKeys[key].size();
                const AttributeText::Number* number = text.NextNumber(begin);
                places[key].push_back(number == nullptr ? Place{begin, characters.size(), 0}
                                                        : Place{begin, number->begin, number->whole});
            }
        }
    }
}

#include "import_scene/names.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace {

/// Letters of two bytes in UTF-8 and what they look like without their marks.
constexpr std::string_view marked =
    "ÁáÀàÂâÄäÃãÅåĄąĆćČčÇçĎďÉéÈèÊêËëĚěĘęÍíÌìÎîÏïŁłĹĺĽľŇňŃńÑñÓóÒòÔôÖöÕõØøŔŕŘřŠšŚśŤťÚúÙùÛûÜüŮůŰűÝýŽžŹźŻż";
constexpr std::string_view unmarked =
    "AaAaAaAaAaAaAaCcCcCcDdEeEeEeEeEeEeIiIiIiIiLlLlLlNnNnNnOoOoOoOoOoOoRrRrSsSsTtUuUuUuUuUuUuYyZzZzZz";
static_assert(marked.size() == 2 * unmarked.size());

char WithoutMark(std::string_view letter) {
    for (std::size_t i = 0; i < unmarked.size(); i++) {
        if (marked.substr(2 * i, 2) == letter) {
            return unmarked[i];
        }
    }
    return '\0';
}

}  // namespace

std::string PlainName(const std::string& name) {
    std::string plain;
    for (std::size_t i = 0; i < name.size(); i++) {
        const unsigned char letter = static_cast<unsigned char>(name[i]);
        if (letter < 0x80 && std::isalnum(letter)) {
            plain += name[i];
        } else if (letter >= 0xC3 && letter <= 0xC5 && i + 1 < name.size()) {
            const char found = WithoutMark(std::string_view(name).substr(i, 2));
            if (found != '\0') {
                plain += found;
            }
            i++;
        }
    }
    return plain;
}

std::string NameList::Take(const std::string& wish) {
    std::string base = PlainName(wish).substr(0, longest);
    // A name of digits alone would be the end of all the numbered ones.
    if (base.find_first_not_of("0123456789") == std::string::npos) {
        base.insert(0, "Object");
        base.resize(std::min(base.size(), longest));
    }
    if (Reserve(base)) {
        return base;
    }
    int& number = lastNumbers[base];
    for (;;) {
        const std::string digits = std::to_string(++number);
        std::string candidate = base.substr(0, longest - digits.size()) + digits;
        if (Reserve(candidate)) {
            return candidate;
        }
    }
}

bool NameList::Reserve(const std::string& name) {
    std::vector<std::size_t> ownEnds;
    for (std::string_view end = name; !end.empty(); end.remove_prefix(1)) {
        ownEnds.push_back(std::hash<std::string_view>()(end));
    }
    const bool isOneOfOthers = ends.contains(ownEnds.front());
    const bool endsInOther =
        std::ranges::any_of(ownEnds, [this](std::size_t end) { return names.contains(end); });
    if (isOneOfOthers || endsInOther) {
        return false;
    }
    names.insert(ownEnds.front());
    ends.insert(ownEnds.begin(), ownEnds.end());
    return true;
}

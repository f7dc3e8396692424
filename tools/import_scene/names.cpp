#include "import_scene/names.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::uint64_t hashStart = 14695981039346656037ull;

/// From the last character to the first, so that the hashes of all ends of a name come out on the way.
std::uint64_t Hashed(std::uint64_t hash, char letter) {
    return (hash ^ static_cast<unsigned char>(letter)) * 1099511628211ull;
}

std::vector<std::uint64_t> EndHashes(const std::string& name) {
    std::vector<std::uint64_t> hashes;
    std::uint64_t hash = hashStart;
    for (std::size_t i = name.size(); i-- > 0;) {
        hash = Hashed(hash, name[i]);
        hashes.push_back(hash);
    }
    return hashes;
}

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
    const std::vector<std::uint64_t> hashes = EndHashes(name);
    if (ends.contains(hashes.back())) {
        return false;
    }
    for (const std::uint64_t hash : hashes) {
        if (names.contains(hash)) {
            return false;
        }
    }
    names.insert(hashes.back());
    ends.insert(hashes.begin(), hashes.end());
    return true;
}

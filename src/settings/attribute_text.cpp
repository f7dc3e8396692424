#include "settings/attribute_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>

namespace {

/// Longest name that a scan gives, in characters.
constexpr std::size_t maxScannedName = 199;

/// A number begins with one of these; everything else is a separator.
constexpr const char* numberStart = "-0123456789";

bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// The character read counts from 0 to 255, the pattern's as a signed byte.
bool Matches(int read, char patternCharacter) {
    return read == static_cast<signed char>(patternCharacter);
}

}  // namespace

bool SeekText(const char* pattern, TextStream& stream) {
    if (*pattern == '\0') {
        return true;
    }
    std::size_t matched = 0;
    for (int c = stream.Read(); c != -1; c = stream.Read()) {
        if (!Matches(c, pattern[matched])) {
            matched = 0;
            continue;
        }
        matched++;
        if (pattern[matched] == '\0') {
            return true;
        }
    }
    return false;
}

bool ExpectText(const char* pattern, TextStream& stream) {
    int c = stream.Read();
    if (*pattern == '\0') {
        return true;
    }
    std::size_t matched = 0;
    for (; c != -1; c = stream.Read()) {
        if (Matches(c, pattern[matched])) {
            matched++;
            if (pattern[matched] == '\0') {
                return true;
            }
        } else if (c == ' ' || c == '\n') {
            matched = 0;
        } else {
            return false;
        }
    }
    return false;
}

bool FindAttributeBlock(const char* name, TextStream& stream) {
    while (SeekText(name, stream)) {
        if (ExpectText("{", stream)) {
            return true;
        }
        // An empty name is found at the end, too, again and again.
        if (stream.position >= stream.text.size()) {
            return false;
        }
    }
    return false;
}

std::string ReadAttributeBlock(TextStream& stream, bool* closed) {
    const std::string& text = stream.text;
    const std::size_t begin = std::min(stream.position, text.size());
    std::size_t end = begin;
    int depth = 1;
    while (depth > 0) {
        const std::size_t brace = text.find('}', end);
        if (brace == std::string::npos) {
            break;
        }
        const std::string_view before = std::string_view(text).substr(end, brace - end);
        depth += static_cast<int>(std::ranges::count(before, '{')) - 1;
        end = brace + 1;
    }
    if (depth > 0) {
        end = text.size();
    }
    if (closed != nullptr) {
        *closed = depth == 0;
    }
    stream.position = end;
    return text.substr(begin, end - begin);
}

const char* NextKey(std::string& text, const char* key, std::size_t& from) {
    char* occurrence = std::strstr(text.data() + from, key);
    if (occurrence == nullptr) {
        return nullptr;
    }
    *occurrence = '+';
    from = static_cast<std::size_t>(occurrence - text.data()) + 1;
    return occurrence + std::strlen(key);
}

std::int32_t ScanInt(const char*& cursor) {
    const char* begin = cursor + std::strcspn(cursor, numberStart);
    cursor = begin + std::strspn(begin, numberStart);
    std::int32_t value = 0;
    if (std::from_chars(begin, cursor, value).ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int32_t>;
        return *begin == '-' ? Limits::min() : Limits::max();
    }
    return value;
}

float ScanFloat(const char*& cursor) {
    cursor += std::strcspn(cursor, numberStart);
    const char* begin = cursor;
    cursor += std::strspn(cursor, "-.0123456789");
    // Only decimal forms count, with a fraction or an exponent: no words such as "-inf". The decimal
    // point is a point, whatever language the desktop speaks.
    const char* digits = *begin == '-' ? begin + 1 : begin;
    if (!std::isdigit(static_cast<unsigned char>(*digits)) && *digits != '.') {
        return 0.0f;
    }
    const char* end = begin + std::strspn(begin, "+-.0123456789eE");
    float value = 0.0f;
    if (std::from_chars(begin, end, value).ec == std::errc::result_out_of_range) {
        // Tells too small from too large: 0 or infinity.
        static const locale_t plainLocale = newlocale(LC_ALL_MASK, "C", nullptr);
        value = strtof_l(begin, nullptr, plainLocale);
    }
    return value;
}

std::string ScanName(const char* text) {
    while (*text != '\0' && !IsLetterOrDigit(*text)) {
        text++;
    }
    std::size_t length = 0;
    while (length < maxScannedName &&
           (IsLetterOrDigit(text[length]) || text[length] == '.' || text[length] == '\\')) {
        length++;
    }
    return std::string(text, length);
}

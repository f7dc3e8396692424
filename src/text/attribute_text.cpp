#include "text/attribute_text.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

/// Longest name that a scan gives, in characters.
constexpr std::size_t maxScannedName = 199;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(c);
}

/// A number begins with one of these; everything else is a separator.
bool IsInNumber(char c) {
    return IsDigit(c) || c == '-';
}

bool IsInFraction(char c) {
    return IsInNumber(c) || c == '.';
}

bool IsInName(char c) {
    return IsLetterOrDigit(c) || c == '.' || c == '\\';
}

/// The character read counts from 0 to 255, the pattern's as a signed byte.
bool Matches(int read, char patternCharacter) {
    return read == static_cast<signed char>(patternCharacter);
}

/// The first position from `position` on at which the text is no longer of the kind, or `end`.
std::size_t EndOfRun(const std::string& text, std::size_t position, std::size_t end,
                     bool (*isOfKind)(char)) {
    while (position < end && isOfKind(text[position])) {
        position++;
    }
    return position;
}

/// What the characters say; beyond 32 bits the nearest 32-bit value, 0 if they say nothing.
std::int32_t ConvertWhole(const char* begin, const char* end) {
    std::int32_t value = 0;
    if (std::from_chars(begin, end, value).ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int32_t>;
        value = *begin == '-' ? Limits::min() : Limits::max();
    }
    return value;
}

/// Only decimal forms count, with a fraction or an exponent: no words such as "-inf". The decimal point is
/// a point, whatever language the desktop speaks. 0 if the characters are no such number.
float ConvertFraction(const char* begin, const char* end) {
    float value = 0.0f;
    const char* digits = *begin == '-' ? begin + 1 : begin;
    if (digits == end || (!IsDigit(*digits) && *digits != '.')) {
        return value;
    }
    if (std::from_chars(begin, end, value).ec == std::errc::result_out_of_range) {
        // This one keeps apart what is too small and what is too large: 0 or infinity.
        static const locale_t plainLocale = newlocale(LC_ALL_MASK, "C", nullptr);
        value = strtof_l(begin, nullptr, plainLocale);
    }
    return value;
}

/// The next number, which the cursor moves past; null if there is none.
/// @param end which of the places after the number the cursor moves to
const AttributeText::Number* Scan(TextCursor& cursor, std::size_t AttributeText::Number::*end) {
    const AttributeText::Number* number = cursor.text.NextNumber(cursor.position);
    const bool isThere = number != nullptr && number->begin < cursor.end;
    cursor.position = isThere ? std::min(number->*end, cursor.end) : cursor.end;
    return isThere ? number : nullptr;
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

AttributeText::AttributeText(std::string newCharacters) : characters(std::move(newCharacters)) {
    const char* const start = characters.data();
    const std::size_t size = characters.size();
    std::size_t fractionEnd = 0;
    for (std::size_t i = 0; i < size; i++) {
        const char c = characters[i];
        if (c == '\0') {
            zeros.push_back(i);
        }
        if (IsLetterOrDigit(c) && (i == 0 || !IsLetterOrDigit(characters[i - 1]))) {
            words.push_back(i);
        }
        if (!IsInNumber(c) || (i > 0 && IsInNumber(characters[i - 1]))) {
            continue;
        }
        // Numbers such as the 2 and the 5 of "2.5" share an end, which is looked for once.
        fractionEnd = std::max(fractionEnd, i);
        fractionEnd = EndOfRun(characters, fractionEnd, size, IsInFraction);
        const std::size_t wholeEnd = EndOfRun(characters, i, size, IsInNumber);
        // An exponent lies after the run that the cursor passes.
        numbers.push_back({i, wholeEnd, fractionEnd, ConvertWhole(start + i, start + wholeEnd),
                           ConvertFraction(start + i, start + size)});
    }
}

TextRange AttributeText::UpToZero(TextRange range) const {
    const auto zero = std::ranges::lower_bound(zeros, range.begin);
    return {range.begin, zero == zeros.end() ? range.end : std::min(range.end, *zero)};
}

const AttributeText::Number* AttributeText::NextNumber(std::size_t position) const {
    const auto next = std::ranges::lower_bound(numbers, position, {}, &Number::begin);
    assert(next == numbers.begin() || std::prev(next)->wholeEnd <= position);
    return next == numbers.end() ? nullptr : &*next;
}

std::size_t AttributeText::NextWord(std::size_t position) const {
    if (position < characters.size() && IsLetterOrDigit(characters[position])) {
        return position;
    }
    const auto next = std::ranges::lower_bound(words, position);
    return next == words.end() ? characters.size() : *next;
}

std::int32_t ScanInt(TextCursor& cursor) {
    const AttributeText::Number* number = Scan(cursor, &AttributeText::Number::wholeEnd);
    return number == nullptr ? 0 : number->whole;
}

float ScanFloat(TextCursor& cursor) {
    const AttributeText::Number* number = Scan(cursor, &AttributeText::Number::fractionEnd);
    return number == nullptr ? 0.0f : number->fraction;
}

std::string ScanName(const TextCursor& cursor) {
    const std::size_t begin = std::min(cursor.text.NextWord(cursor.position), cursor.end);
    const std::size_t longest = std::min(cursor.end, begin + maxScannedName);
    return cursor.text.characters.substr(
        begin, EndOfRun(cursor.text.characters, begin, longest, IsInName) - begin);
}

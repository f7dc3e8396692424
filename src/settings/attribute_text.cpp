#include "settings/attribute_text.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

/// Longest name that a scan gives, in characters.
constexpr std::size_t maxScannedName = 199;
/// Ways and numbers up to this length are gone over each time, longer ones are noted. Nearly all are so
/// short that looking them up would cost more.
constexpr std::size_t shortLength = 64;

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

/// The same for the first position that is of the kind.
/// @param starts gives where the runs of the kind begin; asked for after a long way
template <typename Starts>
std::size_t NextOfKind(const std::string& text, std::size_t position, bool (*isOfKind)(char),
                       Starts starts) {
    const std::size_t near = std::min(text.size(), position + shortLength);
    for (; position < near; position++) {
        if (isOfKind(text[position])) {
            return position;
        }
    }
    if (position >= text.size()) {
        return text.size();
    }
    // None so far, so the next one begins a run.
    const std::vector<std::size_t>& all = starts();
    const auto next = std::ranges::lower_bound(all, position);
    return next == all.end() ? text.size() : *next;
}

template <typename Value>
struct Conversion {
    Value value;
    const char* end;  ///< behind the last character that took part
};

/// What the characters say; beyond 32 bits the nearest 32-bit value, 0 if they say nothing.
Conversion<std::int32_t> ConvertInt(const char* begin, const char* end) {
    Conversion<std::int32_t> converted{0, end};
    const auto result = std::from_chars(begin, end, converted.value);
    converted.end = result.ptr;
    if (result.ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int32_t>;
        converted.value = *begin == '-' ? Limits::min() : Limits::max();
    }
    return converted;
}

/// Only decimal forms count, with a fraction or an exponent: no words such as "-inf". The decimal point is
/// a point, whatever language the desktop speaks. 0 if the characters are no such number.
Conversion<float> ConvertFloat(const char* begin, const char* end) {
    Conversion<float> converted{0.0f, begin};
    const char* digits = *begin == '-' ? begin + 1 : begin;
    if (digits == end || (!IsDigit(*digits) && *digits != '.')) {
        return converted;
    }
    const auto result = std::from_chars(begin, end, converted.value);
    converted.end = result.ptr;
    if (result.ec == std::errc::result_out_of_range) {
        // Tells too small from too large: 0 or infinity.
        static const locale_t plainLocale = newlocale(LC_ALL_MASK, "C", nullptr);
        converted.value = strtof_l(begin, nullptr, plainLocale);
    }
    return converted;
}

/// Finds the next number and converts it, and moves the cursor behind all characters of that kind.
/// @param longNumbers those of this kind that are known
/// @param convert takes where the number begins, where the run ends and where the cursor must stop
template <typename Value, typename LongNumbers, typename Convert>
Value ScanNumber(TextCursor& cursor, LongNumbers& longNumbers, bool (*isOfKind)(char), Convert convert) {
    const std::string& text = cursor.text.characters;
    const std::size_t begin = std::min(cursor.text.NextNumber(cursor.position), cursor.end);
    cursor.position = begin;
    if (begin == cursor.end) {
        return 0;
    }
    if (!longNumbers.empty()) {
        if (const auto known = longNumbers.find(begin); known != longNumbers.end()) {
            cursor.position = known->second.end;
            return known->second.value;
        }
    }
    cursor.position = EndOfRun(text, begin, cursor.end, isOfKind);
    const char* const start = text.data();
    const Conversion<Value> converted = convert(start + begin, start + cursor.position, start + cursor.end);
    const auto read = static_cast<std::size_t>(converted.end - start);
    if (std::max(read, cursor.position) - begin > shortLength) {
        longNumbers.insert({begin, {converted.value, cursor.position}});
    }
    return converted.value;
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
    for (std::size_t zero = 0; (zero = characters.find('\0', zero)) != std::string::npos; zero++) {
        zeros.push_back(zero);
    }
}

TextRange AttributeText::UpToZero(TextRange range) const {
    const auto zero = std::ranges::lower_bound(zeros, range.begin);
    return {range.begin, zero == zeros.end() ? range.end : std::min(range.end, *zero)};
}

void AttributeText::NoteStarts() {
    if (startsAreNoted) {
        return;
    }
    startsAreNoted = true;
    bool inNumber = false;
    bool inWord = false;
    for (std::size_t i = 0; i < characters.size(); i++) {
        const bool wasInNumber = std::exchange(inNumber, IsInNumber(characters[i]));
        const bool wasInWord = std::exchange(inWord, IsLetterOrDigit(characters[i]));
        if (inNumber && !wasInNumber) {
            numberStarts.push_back(i);
        }
        if (inWord && !wasInWord) {
            wordStarts.push_back(i);
        }
    }
}

std::size_t AttributeText::NextNumber(std::size_t position) {
    return NextOfKind(characters, position, IsInNumber, [this]() -> const std::vector<std::size_t>& {
        NoteStarts();
        return numberStarts;
    });
}

std::size_t AttributeText::NextWord(std::size_t position) {
    return NextOfKind(characters, position, IsLetterOrDigit, [this]() -> const std::vector<std::size_t>& {
        NoteStarts();
        return wordStarts;
    });
}

std::int32_t ScanInt(TextCursor& cursor) {
    const auto convert = [](const char* begin, const char* runEnd, const char*) {
        return ConvertInt(begin, runEnd);
    };
    return ScanNumber<std::int32_t>(cursor, cursor.text.longInts, IsInNumber, convert);
}

float ScanFloat(TextCursor& cursor) {
    // An exponent lies behind the run that the cursor passes.
    const auto convert = [](const char* begin, const char*, const char* textEnd) {
        return ConvertFloat(begin, textEnd);
    };
    return ScanNumber<float>(cursor, cursor.text.longFloats, IsInFraction, convert);
}

std::string ScanName(const TextCursor& cursor) {
    const std::size_t begin = std::min(cursor.text.NextWord(cursor.position), cursor.end);
    const std::size_t longest = std::min(cursor.end, begin + maxScannedName);
    return cursor.text.characters.substr(
        begin, EndOfRun(cursor.text.characters, begin, longest, IsInName) - begin);
}

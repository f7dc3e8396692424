#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/files.h"

// The attribute language: blocks in braces, keys with an asterisk, numbers and names fished out of
// whatever stands after a key. What isn't looked for is ignored.

/// Searches forward for the pattern, and leaves the stream after it. A character that breaks a partial
/// match is not tried again as the start of a new one; a pattern byte above 127 never matches.
bool SeekText(const char* pattern, TextStream& stream);
/// The pattern must come next, with only blanks and line ends before it. The character that breaks it is
/// consumed.
bool ExpectText(const char* pattern, TextStream& stream);
/// Finds `name` followed by an opening brace, and leaves the stream after the brace.
bool FindAttributeBlock(const char* name, TextStream& stream);
/// The text from here up to and including the brace that closes the block.
/// @param closed if not null, whether that brace was there; without it the rest of the file is taken
std::string ReadAttributeBlock(TextStream& stream, bool* closed = nullptr);

/// A stretch of a text: characters `begin` up to, and without, `end`.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// A text in the attribute language that is read key by key. A scan looks for the next number or name
/// wherever it stands, and thousands of keys may have the same one after them, far away and of any length.
/// So one pass lists all of them first, and a scan is a lookup in these lists.
struct AttributeText {
    /// A run of digits and hyphens as a whole number, and what a scan for a number with a fraction makes of
    /// the same place.
    struct Number {
        std::size_t begin;
        std::size_t wholeEnd;     ///< where a scan for a whole number goes on
        std::size_t fractionEnd;  ///< where the other one does
        std::int32_t whole;
        float fraction;
    };

    const std::string characters;
    std::vector<Number> numbers;     ///< all of the text, in its order
    std::vector<std::size_t> words;  ///< where runs of ASCII letters and digits begin
    std::vector<std::size_t> zeros;  ///< positions of zero characters, at which scans see the end

    explicit AttributeText(std::string newCharacters);

    TextRange Whole() const { return {0, characters.size()}; }
    /// The range up to its first zero character.
    TextRange UpToZero(TextRange range) const;
    /// The first number from the position on, which isn't within one; null if there is none.
    const Number* NextNumber(std::size_t position) const;
    /// The first ASCII letter or digit from the position on; the end of the text if there is none.
    std::size_t NextWord(std::size_t position) const;
};

/// Where the scans of one key stand, and where they must stop.
struct TextCursor {
    const AttributeText& text;
    std::size_t position;
    std::size_t end;  ///< no further than `AttributeText::UpToZero` goes
};

/// The key loop: calls `action` with the cursor after each occurrence of the key in the whole text, in the
/// order of the text. A key is found wherever its characters stand, also as the beginning of a longer word;
/// so no key of a reader may begin with another one of the same reader.
template <typename Action>
void ForEachKey(const AttributeText& text, const std::string& key, Action action) {
    const std::size_t end = text.UpToZero(text.Whole()).end;
    for (std::size_t at = 0; (at = text.characters.find(key, at)) < end; at++) {
        action(TextCursor{text, at + key.size(), end});
    }
}

/// The next integer, skipping all that is neither digit nor hyphen. 0 if there is none; beyond 32 bits the
/// nearest 32-bit value. The cursor moves after it.
std::int32_t ScanInt(TextCursor& cursor);
/// The next number, in the same way; it has to begin with a digit or a hyphen.
float ScanFloat(TextCursor& cursor);
/// The next name: letters, digits, points and backslashes, beginning with a letter or digit. Empty if there
/// is none, cut to 199 characters.
std::string ScanName(const TextCursor& cursor);

#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/files.h"

// The attribute language: blocks in braces, keys with an asterisk, numbers and names fished out of
// whatever stands behind a key. What isn't looked for is ignored.

/// Searches forward for the pattern, and leaves the stream behind it. A character that breaks a partial
/// match is not tried again as the start of a new one; a pattern byte above 127 never matches.
bool SeekText(const char* pattern, TextStream& stream);
/// The pattern must come next, with only blanks and line ends before it. The character that breaks it is
/// consumed.
bool ExpectText(const char* pattern, TextStream& stream);
/// Finds `name` followed by an opening brace, and leaves the stream behind the brace.
bool FindAttributeBlock(const char* name, TextStream& stream);
/// The text from here up to and including the brace that closes the block.
/// @param closed if not null, tells whether that brace was there; without it the rest of the file is taken
std::string ReadAttributeBlock(TextStream& stream, bool* closed = nullptr);

/// The next occurrence of a key in a captured text. Marks it as used up by overwriting its asterisk, so
/// that every occurrence comes once, in the order of the text.
/// @param from where to go on searching, 0 for the first call with a key; moved behind the asterisk
/// @return the cursor behind the key, for the scanners; null when no further occurrence is left
const char* NextKey(std::string& text, const char* key, std::size_t& from);

/// The key loop: calls `action` with the cursor behind each occurrence of the key.
template <typename Action>
void ForEachKey(std::string& text, const char* key, Action action) {
    std::size_t from = 0;
    while (const char* cursor = NextKey(text, key, from)) {
        action(cursor);
    }
}

/// The next integer, skipping all that is neither digit nor hyphen. 0 if there is none; beyond 32 bits the
/// nearest 32-bit value. The cursor moves behind it and never beyond the terminator.
std::int32_t ScanInt(const char*& cursor);
/// The next number, in the same way; it has to begin with a digit or a hyphen.
float ScanFloat(const char*& cursor);
/// The next name: letters, digits, points and backslashes, beginning with a letter or digit. Empty if there
/// is none, cut to 199 characters.
std::string ScanName(const char* text);

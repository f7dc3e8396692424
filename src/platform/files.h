#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

// Opening files. In every name a backslash separates folders, like a slash, and a name that does not
// exist as written is looked up once more without regard to case, component by component: scenes come
// from machines where neither matters.

/// With small letters for the capital ones of ASCII.
std::string LowerCase(std::string text);
bool EqualButForCase(const std::string& left, const std::string& right);

/// The name under which the file exists on this machine, or, where none fits, the name with its
/// backslashes turned.
std::string ResolveFileName(const char* fileName);

/// As `fopen`, with the lookup above. Null on failure; a folder can't be opened. Close with `fclose`.
std::FILE* OpenFile(const char* fileName, const char* mode);

/// Bytes in an open file; 0 for what isn't a plain one.
std::int64_t FileSize(std::FILE* file);

/// A text file read as text: the whole content at once, with each CR LF already turned into LF.
struct TextStream {
    std::string text;
    std::size_t position = 0;  ///< of the next character to read

    /// The next character, 0 to 255, or -1 at the end of the file.
    int Read() { return position < text.size() ? static_cast<unsigned char>(text[position++]) : -1; }
};

/// Opens a text file for reading. Null if it can't be opened. UTF-16 is read as it stands, and reported
/// on the standard error stream.
std::unique_ptr<TextStream> OpenTextFile(const char* fileName);

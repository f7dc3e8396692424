#include "platform/windows1250.h"

#include <cassert>
#include <cstring>

namespace {

constexpr std::size_t longestLetter = 3;  // bytes in UTF-8: the whole code page lies below U+10000

std::size_t PutLetter(unsigned char byte, char* utf8) {
    std::uint16_t codePoint = byte;
    if (byte >= 0x80) {
        codePoint = windows1250CodePoints[byte - 0x80u];
    }
    if (byte != 0 && codePoint == 0) {
        codePoint = '?';
    }

    if (codePoint < 0x80) {
        utf8[0] = static_cast<char>(codePoint);
        return 1;
    }
    if (codePoint < 0x800) {
        utf8[0] = static_cast<char>(0xC0 | codePoint >> 6);
        utf8[1] = static_cast<char>(0x80 | (codePoint & 0x3F));
        return 2;
    }
    utf8[0] = static_cast<char>(0xE0 | codePoint >> 12);
    utf8[1] = static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
    utf8[2] = static_cast<char>(0x80 | (codePoint & 0x3F));
    return 3;
}

}  // namespace

std::string Windows1250ToUtf8(const char* text) {
    std::string utf8(std::strlen(text) * longestLetter + 1, '\0');
    utf8.resize(Windows1250ToUtf8(text, utf8.data(), utf8.size()));
    return utf8;
}

std::size_t Windows1250ToUtf8(const char* text, char* utf8, std::size_t size) {
    assert(size > 0);
    std::size_t length = 0;
    for (; *text != '\0' && length + longestLetter < size; text++) {
        length += PutLetter(static_cast<unsigned char>(*text), utf8 + length);
    }
    utf8[length] = '\0';
    return length;
}

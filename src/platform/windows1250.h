#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// Texts are held and written as single bytes in Windows-1250. In the source they stand readable, in
// UTF-8, with the suffix _1250 that converts them while compiling: "paměť"_1250.

/// Unicode code point of each Windows-1250 byte from 0x80 on; 0 where the code page has none.
inline constexpr std::array<std::uint16_t, 128> windows1250CodePoints = {
    0x20AC, 0,      0x201A, 0,      0x201E, 0x2026, 0x2020, 0x2021, 0,      0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0,      0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9};

/// A UTF-8 literal turned into Windows-1250 bytes. A letter that the code page lacks doesn't compile.
template <std::size_t size>
struct Windows1250Text {
    char bytes[size] = {};

    consteval Windows1250Text(const char (&utf8)[size]) {  // NOLINT: implicit, so that literals fit
        std::size_t out = 0;
        for (std::size_t in = 0; in + 1 < size;) {
            const auto lead = static_cast<unsigned char>(utf8[in]);
            if (lead < 0x80) {
                bytes[out++] = utf8[in++];
                continue;
            }
            const std::size_t length = lead < 0xE0 ? 2 : 3;
            std::uint32_t codePoint = length == 2 ? lead & 0x1Fu : lead & 0x0Fu;
            for (std::size_t i = 1; i < length; i++) {
                codePoint = codePoint << 6 | (static_cast<unsigned char>(utf8[in + i]) & 0x3Fu);
            }
            in += length;
            std::size_t index = 0;
            while (windows1250CodePoints.at(index) != codePoint) {
                index++;
            }
            bytes[out++] = static_cast<char>(0x80 + index);
        }
    }
};

template <Windows1250Text text>
consteval const char* operator""_1250() {
    return text.bytes;  // a template argument has static storage: the text lives as long as the process
}

/// For the desktop, which wants UTF-8. Bytes without a letter become a question mark.
std::string Windows1250ToUtf8(const char* text);
/// Does so without allocating, for when memory has run out: into a buffer of `size` bytes, above 0,
/// cut at a whole letter if need be. Returns the length without the closing zero.
std::size_t Windows1250ToUtf8(const char* text, char* utf8, std::size_t size);

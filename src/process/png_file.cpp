#include "process/png_file.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace {

constexpr std::size_t largestBlock = 65535;  // bytes in one stored block of the deflate format

using Bytes = std::string;

void AppendNumber(Bytes& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift);
    }
}

std::uint32_t Crc32(const Bytes& bytes) {
    static const auto table = [] {
        std::array<std::uint32_t, 256> remainders{};
        for (std::uint32_t i = 0; i < 256; i++) {
            std::uint32_t remainder = i;
            for (int bit = 0; bit < 8; bit++) {
                remainder = remainder >> 1 ^ (remainder & 1 ? 0xEDB88320u : 0);
            }
            remainders[i] = remainder;
        }
        return remainders;
    }();
    std::uint32_t crc = ~0u;
    for (const char byte : bytes) {
        crc = crc >> 8 ^ table[(crc ^ static_cast<unsigned char>(byte)) & 255];
    }
    return ~crc;
}

std::uint32_t Adler32(const Bytes& bytes) {
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16 | low;
}

/// The zlib format around stored blocks.
Bytes Deflate(const Bytes& bytes) {
    Bytes stream("\x78\x01");
    for (std::size_t start = 0; start < bytes.size(); start += largestBlock) {
        const std::size_t size = std::min(largestBlock, bytes.size() - start);
        stream += start + size == bytes.size() ? '\1' : '\0';  // whether it is the last block
        for (const std::size_t number : {size, ~size}) {
            stream += static_cast<char>(number);
            stream += static_cast<char>(number >> 8);
        }
        stream.append(bytes, start, size);
    }
    AppendNumber(stream, Adler32(bytes));
    return stream;
}

void AppendChunk(Bytes& file, const Bytes& type, const Bytes& content) {
    AppendNumber(file, static_cast<std::uint32_t>(content.size()));
    file += type + content;
    AppendNumber(file, Crc32(type + content));
}

}  // namespace

std::string PngFile(int width, int height, const std::uint8_t* pixels, int channels) {
    assert(width > 0 && height > 0 && (channels == 3 || channels == 4));
    const std::size_t rowSize = static_cast<std::size_t>(channels) * static_cast<std::size_t>(width);
    Bytes rows;
    rows.reserve((rowSize + 1) * static_cast<std::size_t>(height));
    for (int row = height - 1; row >= 0; row--) {
        rows += '\0';  // the row stands as it is, without a filter
        rows.append(reinterpret_cast<const char*>(pixels) + rowSize * static_cast<std::size_t>(row),
                    rowSize);
    }

    Bytes header;
    AppendNumber(header, static_cast<std::uint32_t>(width));
    AppendNumber(header, static_cast<std::uint32_t>(height));
    header += '\x08';  // bits of a sample
    header += channels == 4 ? '\x06' : '\x02';
    header.append(3, '\0');  // the usual methods; not interlaced
    Bytes bytes("\x89PNG\r\n\x1A\n");
    AppendChunk(bytes, "IHDR", header);
    AppendChunk(bytes, "IDAT", Deflate(rows));
    AppendChunk(bytes, "IEND", "");
    return bytes;
}

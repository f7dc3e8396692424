#include "scene_writer/image_file.h"

#include <algorithm>
#include <bit>

#include "scene_writer/bytes.h"
#include "scene_writer/refusal.h"

namespace engine {

namespace {

constexpr std::size_t sgiHeaderSize = 512;
constexpr std::size_t longestPacket = 127;

void AppendBigEndian(std::string& bytes, std::size_t value, int size) {
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
}

std::string ChannelRow(const Image& image, int y, int channel) {
    std::string row;
    for (int x = 0; x < image.width; x++) {
        row += static_cast<char>(image.At(x, y, channel));
    }
    return row;
}

std::size_t RunLength(const std::string& row, std::size_t from) {
    std::size_t end = from + 1;
    while (end < row.size() && row[end] == row[from] && end - from < longestPacket) {
        end++;
    }
    return end - from;
}

/// Runs of three and more become repeat packets, what is between them literal ones.
std::string EncodeRow(const std::string& row) {
    std::string packets;
    for (std::size_t at = 0; at < row.size();) {
        const std::size_t run = RunLength(row, at);
        if (run >= 3) {
            packets += static_cast<char>(run);
            packets += row[at];
            at += run;
            continue;
        }
        std::size_t end = at;
        while (end < row.size() && end - at < longestPacket && RunLength(row, end) < 3) {
            end++;
        }
        packets += static_cast<char>(0x80 | (end - at));
        packets.append(row, at, end - at);
        at = end;
    }
    return packets + '\0';
}

}  // namespace

Image::Image(int newWidth, int newHeight, int newChannels)
    : width(newWidth),
      height(newHeight),
      channels(newChannels),
      samples(static_cast<std::size_t>(std::max(newWidth, 0)) * std::max(newHeight, 0) *
              std::max(newChannels, 0)) {
    if (samples.empty()) {
        Refuse("image", "it needs a width, a height and channels");
    }
}

void Image::RefuseSample(int x, int y, int channel) const {
    const auto shown = [](int a, int b, int c) {
        return std::to_string(a) + ", " + std::to_string(b) + ", " + std::to_string(c);
    };
    Refuse("image",
           "the sample at " + shown(x, y, channel) + " lies outside of " + shown(width, height, channels));
}

std::string TgaBytes(const Image& image) {
    if (image.channels != 3 && image.channels != 4) {
        Refuse("image", "TGA wants 3 or 4 channels");
    }
    std::string bytes(12, '\0');
    bytes[2] = 2;  // uncompressed true colour
    for (const int side : {image.width, image.height}) {
        bytes += static_cast<char>(side & 0xFF);
        bytes += static_cast<char>(side >> 8);
    }
    bytes += static_cast<char>(image.channels * 8);
    bytes += static_cast<char>(image.channels == 4 ? 8 : 0);  // bits of alpha; the origin is below left
    for (int y = 0; y < image.height; y++) {
        for (int x = 0; x < image.width; x++) {
            for (const int channel : {2, 1, 0, 3}) {
                if (channel < image.channels) {
                    bytes += static_cast<char>(image.At(x, y, channel));
                }
            }
        }
    }
    return bytes;
}

std::string SgiBytes(const Image& image, SgiPacking packing) {
    const bool encoded = packing == SgiPacking::RunLength;
    std::string bytes;
    AppendBigEndian(bytes, 474, 2);
    bytes += static_cast<char>(encoded);
    bytes += '\1';  // byte a sample
    AppendBigEndian(bytes, image.channels == 1 ? 2 : 3, 2);
    AppendBigEndian(bytes, image.width, 2);
    AppendBigEndian(bytes, image.height, 2);
    AppendBigEndian(bytes, image.channels, 2);
    AppendBigEndian(bytes, 0, 4);    // smallest sample
    AppendBigEndian(bytes, 255, 4);  // largest sample
    bytes.resize(sgiHeaderSize, '\0');

    std::string offsets;
    std::string lengths;
    std::string rows;
    const std::size_t tableSize = encoded ? std::size_t{4} * image.height * image.channels : 0;
    for (int channel = 0; channel < image.channels; channel++) {
        for (int y = 0; y < image.height; y++) {
            const std::string row = ChannelRow(image, y, channel);
            if (!encoded) {
                rows += row;
                continue;
            }
            const std::string packets = EncodeRow(row);
            AppendBigEndian(offsets, sgiHeaderSize + 2 * tableSize + rows.size(), 4);
            AppendBigEndian(lengths, packets.size(), 4);
            rows += packets;
        }
    }
    return bytes + offsets + lengths + rows;
}

void WriteTga(const std::string& path, const Image& image) {
    for (const int side : {image.width, image.height}) {
        if (side < 2 || side > 512 || !std::has_single_bit(static_cast<unsigned>(side))) {
            Refuse(path, "sides are powers of two from 2 to 512, and not " + std::to_string(side));
        }
    }
    WriteBytes(path, TgaBytes(image));
}

void WriteSgi(const std::string& path, const Image& image, SgiPacking packing) {
    if (image.channels > 4) {
        Refuse(path, "1 to 4 channels show something, and not " + std::to_string(image.channels));
    }
    WriteBytes(path, SgiBytes(image, packing));
}

}  // namespace engine

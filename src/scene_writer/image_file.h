#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace engine {

// Images for textures, in the TGA and SGI formats. What makes no image throws std::invalid_argument.

/// Samples row by row, the bottom row first, with the channels of a pixel side by side: grey, grey and
/// alpha, red green blue, or red green blue alpha.
struct Image {
    int width = 0;
    int height = 0;
    int channels = 3;
    std::vector<std::uint8_t> samples;

    /// All samples 0.
    Image(int newWidth, int newHeight, int newChannels);
    /// A sample; what lies outside of the image is refused.
    std::uint8_t& At(int x, int y, int channel) {
        if (x < 0 || y < 0 || channel < 0 || x >= width || y >= height || channel >= channels) {
            RefuseSample(x, y, channel);
        }
        return samples[(static_cast<std::size_t>(y) * width + x) * channels + channel];
    }
    std::uint8_t At(int x, int y, int channel) const { return const_cast<Image*>(this)->At(x, y, channel); }
    [[noreturn]] void RefuseSample(int x, int y, int channel) const;
};

enum class SgiPacking { Verbatim, RunLength };

/// Uncompressed, 24 bits for 3 channels and 32 for 4; other images can't be written so. Images of any size
/// can, even those that the engine won't take.
std::string TgaBytes(const Image& image);
std::string SgiBytes(const Image& image, SgiPacking packing);

// Both throw std::runtime_error if the file can't be written.

/// Only with sides of powers of two from 2 to 512, as the engine wants them.
void WriteTga(const std::string& path, const Image& image);
/// Only with 1 to 4 channels.
void WriteSgi(const std::string& path, const Image& image, SgiPacking packing = SgiPacking::RunLength);

}  // namespace engine

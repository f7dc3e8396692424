#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Images for textures, in the TGA and SGI formats.

/// Samples row by row, the bottom row first, with the channels of a pixel side by side: grey, grey and
/// alpha, red green blue, or red green blue alpha.
struct Image {
    int width = 0;
    int height = 0;
    int channels = 3;
    std::vector<std::uint8_t> samples;

    /// All samples 0.
    Image(int newWidth, int newHeight, int newChannels);
    std::uint8_t& At(int x, int y, int channel) {
        return samples[(static_cast<std::size_t>(y) * width + x) * channels + channel];
    }
    std::uint8_t At(int x, int y, int channel) const { return const_cast<Image*>(this)->At(x, y, channel); }
};

enum class SgiPacking { Verbatim, RunLength };

/// Uncompressed, 24 bits for 3 channels and 32 for 4; other images can't be written so.
/// The engine wants sides of powers of two from 2 to 512.
std::string TgaBytes(const Image& image);
std::string SgiBytes(const Image& image, SgiPacking packing);

// Both throw std::runtime_error if the file can't be written.

void WriteTga(const std::string& path, const Image& image);
void WriteSgi(const std::string& path, const Image& image, SgiPacking packing = SgiPacking::RunLength);

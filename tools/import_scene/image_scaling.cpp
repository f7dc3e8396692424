#include "import_scene/image_scaling.h"

#include <stb/stb_image_resize.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

int NearestPowerOfTwo(int side, int most) {
    const float exponent = std::round(std::log2(static_cast<float>(side)));
    return std::clamp(1 << static_cast<int>(exponent), 2, most);
}

constexpr std::uint8_t hiddenAlpha = 7;

/// Whether what can't be seen is a mere filling of one colour, and no picture that alpha has no say in.
bool HidesFilling(const engine::Image& image) {
    const std::uint8_t* filling = nullptr;
    std::size_t hidden = 0;
    std::size_t alike = 0;
    for (std::size_t i = 0; i < image.samples.size(); i += 4) {
        const std::uint8_t* texel = &image.samples[i];
        if (texel[3] <= hiddenAlpha) {
            filling = filling == nullptr ? texel : filling;
            hidden++;
            alike += std::equal(texel, texel + 3, filling) ? 1 : 0;
        }
    }
    return alike * 10 > hidden * 9;
}

/// Gives hidden texels the colour of a near one that is seen: what is drawn solid shows them all.
void SpreadColour(engine::Image& image) {
    if (image.channels != 4 || !HidesFilling(image)) {
        return;
    }
    constexpr int far = 1 << 20;
    std::vector<int> distance(image.samples.size() / 4);
    for (std::size_t i = 0; i < distance.size(); i++) {
        distance[i] = image.samples[4 * i + 3] <= hiddenAlpha ? far : 0;
    }
    const auto take = [&](int x, int y, int fromX, int fromY) {
        if (fromX < 0 || fromY < 0 || fromX >= image.width || fromY >= image.height) {
            return;
        }
        int& own = distance[y * image.width + x];
        const int other = distance[fromY * image.width + fromX] + 1;
        if (other < own) {
            own = other;
            std::copy_n(&image.At(fromX, fromY, 0), 3, &image.At(x, y, 0));
        }
    };
    for (int y = 0; y < image.height; y++) {
        for (int x = 0; x < image.width; x++) {
            take(x, y, x - 1, y);
            take(x, y, x, y - 1);
        }
    }
    for (int y = image.height - 1; y >= 0; y--) {
        for (int x = image.width - 1; x >= 0; x--) {
            take(x, y, x + 1, y);
            take(x, y, x, y + 1);
        }
    }
}

}  // namespace

engine::Image Scaled(const engine::Image& image, int width, int height, bool repeatX, bool repeatY) {
    engine::Image scaled(width, height, image.channels);
    const auto edge = [](bool repeat) { return repeat ? STBIR_EDGE_WRAP : STBIR_EDGE_CLAMP; };
    if (stbir_resize(image.samples.data(), image.width, image.height, 0, scaled.samples.data(), width,
                     height, 0, STBIR_TYPE_UINT8, image.channels,
                     image.channels == 4 ? 3 : STBIR_ALPHA_CHANNEL_NONE, 0, edge(repeatX), edge(repeatY),
                     STBIR_FILTER_CATMULLROM, STBIR_FILTER_CATMULLROM, STBIR_COLORSPACE_SRGB,
                     nullptr) == 0) {
        throw std::bad_alloc();
    }
    return scaled;
}

engine::Image ScaledForTexture(const engine::Image& image, int longestSide, bool repeatX, bool repeatY) {
    engine::Image scaled = Scaled(image, NearestPowerOfTwo(image.width, longestSide),
                                  NearestPowerOfTwo(image.height, longestSide), repeatX, repeatY);
    SpreadColour(scaled);
    return scaled;
}

engine::Image Mirrored(const engine::Image& image, bool mirrorX, bool mirrorY) {
    engine::Image mirrored(image.width * (mirrorX ? 2 : 1), image.height * (mirrorY ? 2 : 1),
                           image.channels);
    for (int y = 0; y < mirrored.height; y++) {
        for (int x = 0; x < mirrored.width; x++) {
            const int fromX = x < image.width ? x : 2 * image.width - 1 - x;
            const int fromY = y < image.height ? y : 2 * image.height - 1 - y;
            for (int channel = 0; channel < image.channels; channel++) {
                mirrored.At(x, y, channel) = image.At(fromX, fromY, channel);
            }
        }
    }
    return mirrored;
}

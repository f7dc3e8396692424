#include "import_scene/image_scaling.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "import_scene/colour_space.h"

namespace {

/// What one sample of the result takes: weights for the samples from `first` on.
struct Taps {
    int first = 0;
    std::vector<float> weights;
};

/// Catmull and Rom's cubic, 1 at 0 and 0 from 2 on.
float Cubic(float distance) {
    const float x = std::fabs(distance);
    if (x < 1.0f) {
        return 1.0f + x * x * (1.5f * x - 2.5f);
    }
    return x < 2.0f ? 2.0f + x * (-4.0f + x * (2.5f - 0.5f * x)) : 0.0f;
}

std::vector<Taps> MakeTaps(int from, int to) {
    const float step = static_cast<float>(from) / static_cast<float>(to);
    const float width = std::max(step, 1.0f);
    std::vector<Taps> all(to);
    for (int i = 0; i < to; i++) {
        const float middle = (static_cast<float>(i) + 0.5f) * step - 0.5f;
        Taps& taps = all[i];
        taps.first = static_cast<int>(std::floor(middle - 2.0f * width)) + 1;
        float sum = 0.0f;
        for (int at = taps.first; static_cast<float>(at) < middle + 2.0f * width; at++) {
            taps.weights.push_back(Cubic((static_cast<float>(at) - middle) / width));
            sum += taps.weights.back();
        }
        for (float& weight : taps.weights) {
            weight /= sum;
        }
    }
    return all;
}

int Inside(int at, int size, bool repeat) {
    return repeat ? (at % size + size) % size : std::clamp(at, 0, size - 1);
}

using Pixel = std::array<float, 4>;  ///< amounts of light times alpha, and alpha

std::array<float, 256> LinearTable() {
    std::array<float, 256> table;
    for (int i = 0; i < 256; i++) {
        table[i] = ToLinear(static_cast<float>(i) / 255.0f);
    }
    return table;
}

std::vector<Pixel> LinearRow(const engine::Image& image, int y) {
    static const std::array<float, 256> linear = LinearTable();
    std::vector<Pixel> row(image.width);
    for (int x = 0; x < image.width; x++) {
        const float alpha = image.channels == 4 ? static_cast<float>(image.At(x, y, 3)) / 255.0f : 1.0f;
        // A trace of the colour stays where nothing is to be seen of it.
        const float weight = std::max(alpha, 1e-4f);
        for (int channel = 0; channel < 3; channel++) {
            row[x][channel] = linear[image.At(x, y, channel)] * weight;
        }
        row[x][3] = weight;
    }
    return row;
}

std::uint8_t ToByte(float value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
}

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
    if (width == image.width && height == image.height) {
        return image;
    }
    const std::vector<Taps> tapsX = MakeTaps(image.width, width);
    const std::vector<Taps> tapsY = MakeTaps(image.height, height);
    std::vector<Pixel> sums(static_cast<std::size_t>(width) * height);
    // The rows of the result to which a row of the image contributes are near one another: each row is
    // filtered across once and added to all of them.
    std::vector<std::vector<std::pair<int, float>>> takers(image.height);
    for (int y = 0; y < height; y++) {
        for (std::size_t tap = 0; tap < tapsY[y].weights.size(); tap++) {
            const int from = Inside(tapsY[y].first + static_cast<int>(tap), image.height, repeatY);
            takers[from].emplace_back(y, tapsY[y].weights[tap]);
        }
    }
    std::vector<Pixel> narrow(width);
    for (int from = 0; from < image.height; from++) {
        const std::vector<Pixel> row = LinearRow(image, from);
        for (int x = 0; x < width; x++) {
            narrow[x] = {};
            for (std::size_t tap = 0; tap < tapsX[x].weights.size(); tap++) {
                const Pixel& pixel =
                    row[Inside(tapsX[x].first + static_cast<int>(tap), image.width, repeatX)];
                for (int channel = 0; channel < 4; channel++) {
                    narrow[x][channel] += pixel[channel] * tapsX[x].weights[tap];
                }
            }
        }
        for (const auto& [y, weight] : takers[from]) {
            for (int x = 0; x < width; x++) {
                for (int channel = 0; channel < 4; channel++) {
                    sums[static_cast<std::size_t>(y) * width + x][channel] += narrow[x][channel] * weight;
                }
            }
        }
    }
    engine::Image scaled(width, height, image.channels);
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            const Pixel& pixel = sums[static_cast<std::size_t>(y) * width + x];
            const float alpha = std::max(pixel[3], 1e-6f);
            for (int channel = 0; channel < 3; channel++) {
                scaled.At(x, y, channel) = ToByte(ToDisplay(std::max(pixel[channel] / alpha, 0.0f)));
            }
            if (image.channels == 4) {
                scaled.At(x, y, 3) = ToByte(pixel[3]);
            }
        }
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

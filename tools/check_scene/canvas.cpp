#include "check_scene/canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace {

/// Of each digit five rows of three pixels, from the upper left one on, the first the highest bit.
constexpr std::uint16_t digits[10] = {
    0b111101101101111, 0b010110010010111, 0b111001111100111, 0b111001111001111, 0b101101111001001,
    0b111100111001111, 0b111100111101111, 0b111001001001001, 0b111101111101111, 0b111101111001111};
constexpr int digitColumns = 3;
constexpr int digitRows = 5;
constexpr int digitScale = 2;                               ///< pixels for one of the digit's
constexpr int digitStep = (digitColumns + 1) * digitScale;  ///< from one digit to the next

}  // namespace

Canvas::Canvas(int newWidth, int newHeight, Colour ground)
    : width(newWidth),
      height(newHeight),
      pixels(std::size_t{3} * static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight)) {
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            Set(x, y, ground);
        }
    }
}

void Canvas::Set(int x, int y, Colour colour) {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return;
    }
    std::uint8_t* pixel = &pixels[3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                       static_cast<std::size_t>(x))];
    pixel[0] = colour.red;
    pixel[1] = colour.green;
    pixel[2] = colour.blue;
}

void Canvas::Line(float x0, float y0, float x1, float y1, Colour colour) {
    // What leads far out is cut, so that there is an end to its pixels.
    const auto limit = [this](float& value) {
        value = std::clamp(value, -10.0f * static_cast<float>(width), 10.0f * static_cast<float>(width));
    };
    limit(x0);
    limit(y0);
    limit(x1);
    limit(y1);
    const int steps = 1 + static_cast<int>(std::max(std::fabs(x1 - x0), std::fabs(y1 - y0)));
    for (int i = 0; i <= steps; i++) {
        const float share = static_cast<float>(i) / static_cast<float>(steps);
        Set(static_cast<int>(std::lround(x0 + share * (x1 - x0))),
            static_cast<int>(std::lround(y0 + share * (y1 - y0))), colour);
    }
}

void Canvas::Circle(float x, float y, float radius, Colour colour, bool isFilled) {
    if (isFilled) {
        const int reach = static_cast<int>(std::ceil(radius));
        for (int row = -reach; row <= reach; row++) {
            const float half = std::sqrt(std::max(0.0f, radius * radius - static_cast<float>(row * row)));
            Line(x - half, y + static_cast<float>(row), x + half, y + static_cast<float>(row), colour);
        }
        return;
    }
    constexpr int sides = 64;
    for (int side = 0; side < sides; side++) {
        const auto angle = [](int corner) {
            return 2.0f * std::numbers::pi_v<float> * static_cast<float>(corner) / sides;
        };
        Line(x + radius * std::cos(angle(side)), y + radius * std::sin(angle(side)),
             x + radius * std::cos(angle(side + 1)), y + radius * std::sin(angle(side + 1)), colour);
    }
}

void Canvas::Number(float x, float y, int number, Colour colour) {
    if (number < 0) {
        return;
    }
    const std::string text = std::to_string(number);
    const int left = static_cast<int>(x) - (static_cast<int>(text.size()) * digitStep - digitScale) / 2;
    const int top = static_cast<int>(y) + digitRows * digitScale / 2 - 1;
    for (std::size_t place = 0; place < text.size(); place++) {
        const std::uint16_t bits = digits[text[place] - '0'];
        for (int i = 0; i < digitColumns * digitRows * digitScale * digitScale; i++) {
            const int column = i % (digitColumns * digitScale);
            const int row = i / (digitColumns * digitScale);
            const int bit = row / digitScale * digitColumns + column / digitScale;
            if ((bits >> (digitColumns * digitRows - 1 - bit) & 1) != 0) {
                Set(left + static_cast<int>(place) * digitStep + column, top - row, colour);
            }
        }
    }
}

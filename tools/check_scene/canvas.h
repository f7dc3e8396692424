#pragma once

#include <cstdint>
#include <vector>

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

/// A picture that is drawn in memory. Pixels are counted from the lower left corner; what lies outside is
/// passed over.
struct Canvas {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;  ///< red, green, blue, row by row from the bottom one

    Canvas(int newWidth, int newHeight, Colour ground);
    void Set(int x, int y, Colour colour);
    void Line(float x0, float y0, float x1, float y1, Colour colour);
    /// A circle, or with `isFilled` all that it encloses.
    void Circle(float x, float y, float radius, Colour colour, bool isFilled = false);
    /// The digits of a number around a place; below 0 nothing.
    void Number(float x, float y, int number, Colour colour);
};

#pragma once

#include <cmath>
#include <cstdint>

// Noise that is the same on every machine, so that the world is, too.

/// A number from 0 to 1 that belongs to the three integers.
inline float Random(int x, int y, int seed) {
    auto bits = static_cast<std::uint32_t>(x) * 374761393u + static_cast<std::uint32_t>(y) * 668265263u +
                static_cast<std::uint32_t>(seed) * 2246822519u;
    bits = (bits ^ bits >> 13) * 1274126177u;
    bits = (bits ^ bits >> 16) * 2654435769u;
    return static_cast<float>((bits ^ bits >> 15) & 0xFFFF) / 65535.0f;
}

/// Smooth noise from 0 to 1 that repeats after `period` units in both directions.
inline float Noise(float x, float y, int period, int seed) {
    const float column = std::floor(x);
    const float row = std::floor(y);
    const auto corner = [&](int right, int up) {
        const int wrappedX = ((static_cast<int>(column) + right) % period + period) % period;
        const int wrappedY = ((static_cast<int>(row) + up) % period + period) % period;
        return Random(wrappedX, wrappedY, seed);
    };
    const auto ease = [](float t) { return t * t * (3.0f - 2.0f * t); };
    const float acrossX = ease(x - column);
    const float acrossY = ease(y - row);
    const float lower = corner(0, 0) + (corner(1, 0) - corner(0, 0)) * acrossX;
    const float upper = corner(0, 1) + (corner(1, 1) - corner(0, 1)) * acrossX;
    return lower + (upper - lower) * acrossY;
}

/// Four octaves of it, from 0 to 1 with most values about the middle.
inline float Clouds(float x, float y, int period, int seed) {
    float sum = 0.0f;
    float share = 0.5f;
    for (int octave = 0; octave < 4; octave++) {
        sum += share * Noise(x, y, period, seed + octave);
        x *= 2.0f;
        y *= 2.0f;
        period *= 2;
        share *= 0.5f;
    }
    return sum / 0.9375f;
}

#pragma once

#include <cmath>
#include <cstdint>
#include <random>

#include "math/vector.h"

/// Seeded, and straight from the generator, whose sequence every library shares.
struct RandomNumbers {
    std::mt19937 generator;

    explicit RandomNumbers(std::uint32_t seed) : generator(seed) {}
    /// From 0 to count - 1.
    std::int32_t Pick(std::int32_t count) {
        return static_cast<std::int32_t>(generator() % static_cast<std::uint32_t>(count));
    }
    bool Chance(std::int32_t oneIn) { return Pick(oneIn) == 0; }
    float Random(float low, float high) {
        return low + (high - low) * (static_cast<float>(generator() >> 8) / 16777216.0f);
    }
    /// Of a size anywhere between 10 to the powers of `low` and `high`.
    float RandomSize(float low, float high) { return std::pow(10.0f, Random(low, high)); }
    Vector RandomVector(float size) {
        const float x = Random(-size, size);
        const float y = Random(-size, size);
        return Vector(x, y, Random(-size, size));
    }
};

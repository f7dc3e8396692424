#pragma once

#include <cmath>

namespace engine {

/// A position, a direction, a colour (0 to 1) or a texture coordinate.
struct Float3 {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};

inline Float3 operator+(Float3 a, Float3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Float3 operator-(Float3 a, Float3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Float3 operator*(Float3 a, float s) {
    return {a.x * s, a.y * s, a.z * s};
}

/// Component by component, as light falls on a colour.
inline Float3 operator*(Float3 a, Float3 b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

inline Float3 operator/(Float3 a, Float3 b) {
    return {a.x / b.x, a.y / b.y, a.z / b.z};
}

inline float Dot(Float3 a, Float3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Float3 Cross(Float3 a, Float3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float Length(Float3 a) {
    return std::sqrt(Dot(a, a));
}

/// Of length 1; a zero stays zero.
inline Float3 Normalised(Float3 a) {
    const float length = Length(a);
    return length == 0.0f ? a : a * (1.0f / length);
}

/// From a at 0 to b at 1.
inline Float3 Mixed(Float3 a, Float3 b, float share) {
    return a + (b - a) * share;
}

}  // namespace engine

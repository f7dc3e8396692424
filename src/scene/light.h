#pragma once

#include <cstdint>

/// The master copy of one OpenGL light, which gl_lights/ uploads. Position and spot direction are world
/// coordinates, sent again for every viewport.
struct Light {
    std::int32_t glLight = -1;  ///< GL_LIGHT0 + i while it holds one, -1 otherwise
    float ambient[3] = {0.0f, 0.0f, 0.0f};
    float diffuse[3] = {1.0f, 1.0f, 1.0f};
    float specular[3] = {1.0f, 1.0f, 1.0f};
    float position[4] = {0.0f, 0.0f, 1.0f, 0.0f};  ///< w 0: a direction, w 1: a point
    float spotDirection[3] = {0.0f, 0.0f, -1.0f};
    float spotExponent = 0.0f;
    float spotCutoff = 180.0f;  ///< degrees; 180 means no spot
    float constantAttenuation = 1.0f;
    float linearAttenuation = 0.0f;
    float quadraticAttenuation = 0.0f;

    void CopyTo(Light& destination) const { destination = *this; }
};

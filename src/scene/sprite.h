#pragma once

#include <cstdint>

#include "math/vector.h"

/// A textured square that always faces the camera.
struct Sprite {
    std::int32_t textureIndex = -1;  ///< into the scene's textures; -1 binds none
    Vector position;                 ///< middle of the lower edge, in world coordinates
    float size = 1.0f;               ///< width and height in world units
    std::int32_t blendMode = 1;      ///< 1: cut out by the texture's alpha, 0: added to the picture

    void CopyTo(Sprite& destination) const { destination = *this; }
};

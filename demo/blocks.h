#pragma once

#include <string>

#include "scene_writer/scene_file.h"

using engine::Float3;
using engine::SceneObject;

// Solid pieces of masonry. Their sides are divided into cells, since the engine lights corners only: a
// lamp in the middle of a large face would not show. No textures and no markers yet.

/// The sides of a block, to be combined. East is towards +x, north towards +y.
enum Side : unsigned {
    south = 1,
    north = 2,
    west = 4,
    east = 8,
    top = 16,
    bottom = 32,
    upright = south | north | west | east,
    allSides = upright | top | bottom
};

/// A block between two corners.
/// @param cell about how large the parts of its sides are, in world units
/// @param sides those that can be seen or met; the others are left out
SceneObject MakeBlock(const std::string& name, Float3 low, Float3 high, float cell,
                      unsigned sides = allSides);

/// A slab whose top falls from `low.x` to `high.x`.
/// @param topAtLow,topAtHigh height of the top at the two ends
SceneObject MakeLeanTo(const std::string& name, Float3 low, Float3 high, float topAtLow, float topAtHigh,
                       float cell);

/// A wall along x with a round opening, on the ground.
struct ArchShape {
    float middle = 0.0f;     ///< x
    float front = 0.0f;      ///< y of the southern face
    float back = 0.0f;       ///< y of the northern face
    float opening = 5.0f;    ///< half the width of the opening
    float outer = 8.0f;      ///< half the width of the whole
    float springing = 8.0f;  ///< height where the round part begins
    float height = 18.0f;    ///< of the whole
};

SceneObject MakeArch(const std::string& name, const ArchShape& shape);

/// A low wall with a coping that stands out a little.
SceneObject MakeParapet(const std::string& name, Float3 low, Float3 high);

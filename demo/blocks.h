#pragma once

#include <string>

#include "scene_writer/cut_shapes.h"

using engine::Float3;
using engine::SceneObject;

// Solid pieces of masonry. Their sides are divided into cells, since the engine lights corners only: a
// lamp in the middle of a large face would not show. No textures and no markers yet.

using engine::allSides, engine::upright, engine::Side;
using engine::south, engine::north, engine::west, engine::east, engine::top, engine::bottom;

/// A block between two corners, as `engine::MakeCutBox`.
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

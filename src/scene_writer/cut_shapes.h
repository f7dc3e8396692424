#pragma once

#include <string>

#include "scene_writer/scene_file.h"

namespace engine {

// Shapes whose sides are cut into cells. The engine lights corners only: a lamp in front of a large side
// without any shows nothing. As in shapes.h they come without markers, and `tiles` is how often a texture
// repeats along each side, 0 for no texture coordinates.

/// The sides of a box, to be combined. East is towards +x, north towards +y.
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

/// A box between two corners.
/// @param cell about how large the parts of its sides are, in world units, above 0
/// @param sides those that can be seen or met; the others are left out
SceneObject MakeCutBox(const std::string& name, Float3 low, Float3 high, float cell, float tiles = 0.0f,
                       unsigned sides = allSides);
/// A ramp, closed on all sides: its top rises from the edge at low.y, at the height low.z, to the one at
/// high.y and high.z. Turn it with `TurnAboutZ`.
/// @param cell about how large the parts of its top are, in world units, above 0
SceneObject MakeWedge(const std::string& name, Float3 low, Float3 high, float cell, float tiles = 0.0f);

}  // namespace engine

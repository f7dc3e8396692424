#pragma once

#include "scene_writer/scene_file.h"

namespace engine {

// Texture coordinates for meshes that were made without, or with others. To be done before the markers;
// `ProjectTexture` refuses what has some.

/// Lays a texture on from all six sides: each triangle takes it along the axis that it faces most, so that
/// objects side by side continue one another's pattern. Drops the coordinates that the mesh has.
/// @param size world units for one repeat
void ProjectTexture(SceneObject& object, float size);
/// Multiplies all texture coordinates.
void ScaleTexture(SceneObject& object, float u, float v);

}  // namespace engine

#pragma once

#include <vector>

#include "import_scene/world_object.h"

/// Joins scenery of one texture, and cuts it into pieces that are compact in space: drawing costs a call
/// for each object, and collision passes over objects that are out of reach.
/// @param mostTriangles of a piece
std::vector<WorldObject> MergeScenery(std::vector<WorldObject> objects, int mostTriangles);

#pragma once

#include <cstdint>
#include <string>

#include "scene/scene.h"

// Scenes to measure, made with the scene writer in the working directory.

/// One textured patch of uneven ground; the number of triangles is rounded to a full grid.
/// @return the path of the scene file
std::string WriteGround(std::int64_t triangles);
/// Small boxes, each with a block of its own in the attribute file.
/// @param equalNames all are called the same in the file
/// @param fillerBytes of free text in each block
std::string WriteBoxes(std::int64_t objects, bool equalNames, std::int64_t fillerBytes = 0);

/// Ground of `patches` objects with `triangles` in all, and bodies with collider and physics on or above
/// it, too far from one another to meet.
/// @param height of the bodies' centres above the ground, in world units
void MakeWorld(Scene& scene, std::int64_t bodies, std::int64_t triangles, std::int64_t patches,
               float height);

#pragma once

#include <assimp/types.h>

#include <cstdint>
#include <vector>

/// Finds which corners of a mesh without normals shade smoothly together: those that meet in a point and
/// whose triangles hang together there over edges that are less sharp than the angle.
/// @param corners for each corner, three a triangle, the number of its position; equal positions, equal
/// numbers
/// @param normals of the triangles, of unit length
/// @return for each corner a number that is equal for corners of one position that go together
std::vector<std::uint32_t> SmoothGroups(const std::vector<std::uint32_t>& corners,
                                        const std::vector<aiVector3D>& normals, std::size_t positionCount,
                                        float creaseAngle);

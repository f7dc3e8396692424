#pragma once

#include <cstdint>
#include <string>

#include "scene/scene.h"

// Scenes to measure, made with the scene writer in the working directory.

/// A scene on disk and what is in it.
struct SceneFiles {
    std::string mesh;        ///< path
    std::string attributes;  ///< path
    std::int64_t objects = 0;
    std::int64_t triangles = 0;
};

/// What small boxes are like.
struct BoxKind {
    bool equalNames = false;       ///< all are called the same in the file
    bool blocks = true;            ///< each has a block of its own in the attribute file
    bool textured = true;          ///< with texture coordinates
    std::int64_t fillerBytes = 0;  ///< free text in each block
};

// Each writes its files once in a run.

/// One patch of uneven ground; the number of triangles is rounded to a full grid.
/// @param tiles 0 for no texture coordinates
SceneFiles WriteGround(std::int64_t triangles, float tiles);
/// Boxes of 12 triangles side by side.
SceneFiles WriteBoxes(std::int64_t objects, const BoxKind& kind);
/// One box with key tracks of 100 keys each.
SceneFiles WriteKeyTracks(std::int64_t keys);

/// Ground of `patches` objects with `triangles` in all, and bodies with collider and physics on or above
/// it, too far from one another to meet.
/// @param height of the bodies' centres above the ground, in world units
/// @param spacing distance of the bodies from one another, which decides on the size of the ground
void MakeWorld(Scene& scene, std::int64_t bodies, std::int64_t triangles, std::int64_t patches,
               float height, float spacing = 20.0f);
/// Adds boxes of 12 triangles and 4 units, as far from one another, in a square that starts at this x.
void AddBoxes(Scene& scene, std::int64_t count, float x);

#pragma once

#include <cstdint>
#include <string>

#include "math/vector.h"

struct Scene;

/// How a body begins and comes to rest.
struct Drop {
    Vector start;  ///< centre of the body, where the world puts it
    Vector rest;   ///< centre of the body at the end
    bool fallsForEver = false;
    std::string obstacle;  ///< object that it begins inside of; empty if none
    float depth = 0.0f;    ///< how deep, as a share of the body: 0 touches, 1 has its centre in it
    std::string floor;     ///< object whose triangles lie below, but look down; empty if none
};

/// Drops an object of the scene, which has collider and physics, with the engine's own simulation, on a
/// copy of what stands around it. The scene stays as it is.
/// @param triangleBudget so many triangles are looked at in all frames together; a million take about 5 ms
Drop DropBody(const Scene& scene, std::int32_t objectId, std::int64_t triangleBudget = 20'000'000);

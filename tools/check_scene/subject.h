#pragma once

#include <cstdint>

#include "check_scene/findings.h"
#include "check_scene/world.h"

// Where in the world things are, as opposed to in files.

/// The body's middle where the player starts; false if the player moves nothing.
bool FindStart(const Scene& scene, std::int32_t player, Vector& start);
/// The middle of an object at the start; of an object without triangles its first vertex.
Vector PlaceOf(const World& world, std::int32_t id);
/// Where the object or the lamp stands that the finding is about; false if it is about none.
bool FindSubject(const World& world, const Finding& finding, Vector& place);

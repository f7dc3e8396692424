#pragma once

#include <iosfwd>

#include "check_scene/world.h"

/// What the world costs: objects, triangles, texture memory, draw calls, the most expensive objects.
void PrintCost(std::ostream& out, const World& world);
/// The world, line by line: settings, players, objects, textures, lights, groups, key tracks.
void PrintWorld(std::ostream& out, const World& world);

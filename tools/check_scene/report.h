#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>

#include "check_scene/world.h"

/// What the world costs: objects, triangles, texture memory, draw calls, the most expensive objects.
void PrintCost(std::ostream& out, const World& world);
/// What is in the world: settings, and lists of players, objects, textures, lights and groups.
nlohmann::ordered_json JsonOf(const World& world);
/// That as text, a line for each thing.
void PrintListing(std::ostream& out, const nlohmann::ordered_json& listing);

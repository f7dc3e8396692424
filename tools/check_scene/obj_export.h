#pragma once

#include <string>

#include "check_scene/world.h"

/// Writes the geometry of the world as OBJ, its materials beside it as MTL and its textures as PNG. The
/// scene is as loaded, so a player stands where it was modelled.
/// @return what couldn't be written; empty if all was
std::string ExportObj(const World& world, const std::string& path);

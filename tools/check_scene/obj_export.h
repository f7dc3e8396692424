#pragma once

#include <map>
#include <string>

#include "check_scene/world.h"

/// The geometry of the world as an OBJ file of that path, its materials beside it as MTL and its textures
/// as PNG. The scene is as loaded, so a player stands where it was modelled.
/// @return the bytes of each file by its path
std::map<std::string, std::string> ObjFiles(const World& world, const std::string& path);

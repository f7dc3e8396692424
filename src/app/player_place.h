#pragma once

#include <cstdint>
#include <string>

struct Scene;

/// What is wrong with the place where a player's body is, such as "stands inside of Wall" or "has nothing
/// below"; empty if nothing, or if the player has no body that collides.
std::string PlaceFault(const Scene& scene, std::int32_t playerIndex);

#pragma once

#include <cstdint>

inline constexpr std::int32_t startSpriteCount = 20;

/// Loads the scenes that the settings name, and adds what every world has: 20 sprites, one of them
/// additive.
void LoadWorld();

/// Stands 20 sprites of the scene at the positions that the fixed seed of the generator gives.
void PlaceSprites();

inline constexpr const char* settingsFile = "settings.atr";

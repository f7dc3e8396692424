#pragma once

#include "world.h"

// The parts of the courtyard. North is +y, east +x. Its ground reaches from (-42, -36) to (42, 36) and lies
// at height 0; a body is 4 wide and 10 high.

inline constexpr float westWall = -42.0f;
inline constexpr float eastWall = 42.0f;
inline constexpr float southWall = -36.0f;
inline constexpr float northWall = 36.0f;
inline constexpr float wallHeight = 18.0f;
inline constexpr float terraceHeight = 8.0f;

/// Height of the ground: flat but for some mounds and a hollow.
float GroundHeight(float x, float y);

void AddGround(World& world);     ///< grass, and the path from the gate to the stairs
void AddWalls(World& world);      ///< around it all, with the gate, which an invisible wall closes
void AddTerrace(World& world);    ///< in the north-east, with its stairs and its ramp
void AddArch(World& world);       ///< over the path, with the lamp
void AddLoggia(World& world);     ///< a row of columns and a roof along the western wall
void AddChamber(World& world);    ///< the dark room in the north-west, with the spot light and a curtain
void AddGarden(World& world);     ///< the tree in its ring of stone; sprites show its leaves: add it last
void AddLandscape(World& world);  ///< the sky, and what is seen through the gate
void AddBodies(World& world);     ///< crates and balls that fall, bounce and come to rest

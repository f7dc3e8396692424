#pragma once

#include <string>

#include "check_scene/findings.h"
#include "check_scene/world.h"

/// The world from above as a PNG image, north at the top: what is below head height in its colours, roofs
/// half seen through, an outline around each object; players with their directions, bodies, lamps with
/// their reach, groups, floor that no player reaches; and a mark for each finding that has a place, with
/// its number in the list from 1.
std::string DrawPlan(const World& world, const Findings& findings);

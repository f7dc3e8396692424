#pragma once

#include <map>

#include "check_scene/floor_net.h"
#include "check_scene/walker.h"

/// What bars the larger parts of the floor that nobody has reached: where a body of half the size gets
/// through, or one that climbs higher.
/// @param stands where bodies stood that came to a square; their middles
std::vector<Walks::Barrier> FindBarriers(Walker& walker, const FloorNet& net,
                                         const std::vector<Walks::Square>& floor,
                                         const std::map<Cell, Vector>& stands);
/// Whether walls stand on all sides of the place.
bool IsWithinWalls(Walker& walker, const FloorNet& net, Vector place);

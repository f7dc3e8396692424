#pragma once

#include <vector>

#include "import_scene/model.h"
#include "import_scene/world_object.h"

/// Makes key tracks of the animations of nodes: a key for each frame, first the turn and then the move, in
/// the axes of the object that leads the group. A player's object gets empty tracks where members of its
/// group have tracks, since the engine asks it whether one is to play.
void AddKeyTracks(const Model& model, std::vector<WorldObject>& objects, const Options& options,
                  Report& report);

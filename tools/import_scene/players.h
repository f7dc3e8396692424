#pragma once

#include <vector>

#include "import_scene/groups.h"
#include "import_scene/world_object.h"

/// Gives the scene its players. A player's object without a camera gets one of the model's, as a member of
/// its group; and if nobody is player 0, a body is made for a camera, in front of the whole model if it has
/// none. Bodies that are made, and empty spawn points, are set down on what lies below; where nothing does,
/// a floor is laid.
void AddPlayers(const Model& model, std::vector<WorldObject>& objects, GroupIds& groups,
                const Options& options, Report& report);

/// How many players the objects name.
int PlayerCount(const std::vector<WorldObject>& objects);

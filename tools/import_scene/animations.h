#pragma once

#include <string>
#include <vector>

#include "import_scene/model.h"
#include "import_scene/world_object.h"

/// Gives what moves, and is in no group, a player without a body that leads it all: while its key is held,
/// the animations play. To be done once the other players are there.
/// @return lines of the settings for that player; none if nothing is left to lead
std::vector<std::string> AddAnimator(const Model& model, std::vector<WorldObject>& objects, Report& report);

/// Makes key tracks of the animations of nodes: a key for each frame, first the turn and then the move, in
/// the axes of the object that leads the group. A player's object gets empty tracks where members of its
/// group have tracks, since the engine asks it whether one is to play.
void AddKeyTracks(const Model& model, std::vector<WorldObject>& objects, const Options& options,
                  Report& report);

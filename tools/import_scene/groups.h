#pragma once

#include <set>
#include <vector>

#include "import_scene/world_object.h"

/// Group ids of a scene: those that its objects have, and new ones.
class GroupIds {
public:
    explicit GroupIds(const std::vector<WorldObject>& objects);
    bool IsTaken(int id) const { return taken.contains(id); }
    /// The id itself if it is free, else the next free one above the players' own.
    int Take(int wish);

private:
    std::set<int> taken;
};

/// Makes the parts of a moving thing move along with it: the pieces of a node, and the nodes below it that
/// aren't bodies themselves. What leads no group yet gets one of its own, where it has such parts.
void CompleteGroups(const Model& model, std::vector<WorldObject>& objects, GroupIds& ids, Report& report);

#include "import_scene/groups.h"

#include <algorithm>
#include <map>

namespace {

/// More than these the engine drops.
constexpr std::size_t mostMembers = 50;
/// The engine hands the end of a walk to the group with the player's number: others keep away from those.
constexpr int firstFreeGroup = 64;

/// For each node the object that has its properties; -1 for none.
std::vector<int> MainObjects(const Model& model, const std::vector<WorldObject>& objects) {
    std::vector<int> mains(model.nodes.size(), -1);
    for (std::size_t i = 0; i < objects.size(); i++) {
        if (objects[i].node != -1 && objects[i].pieceOf == -1 && mains[objects[i].node] == -1) {
            mains[objects[i].node] = static_cast<int>(i);
        }
    }
    return mains;
}

bool Leads(const WorldObject& object) {
    return object.properties.IsBody() || object.properties.groupParent;
}

/// The object that an object goes along with by itself: that of its own node, or of the nearest one above
/// that leads; -1 for none.
int LeaderOf(const WorldObject& object, const Model& model, const std::vector<WorldObject>& objects,
             const std::vector<int>& mains) {
    if (object.node == -1 || !object.properties.groupMember.empty() || Leads(object)) {
        return -1;
    }
    if (object.pieceOf != -1 && !objects[object.pieceOf].properties.groupMember.empty()) {
        return object.pieceOf;
    }
    int node =
        object.pieceOf != -1 || mains[object.node] == -1 ? object.node : model.nodes[object.node].parent;
    for (; node != -1; node = model.nodes[node].parent) {
        if (mains[node] != -1 && Leads(objects[mains[node]])) {
            return mains[node];
        }
    }
    return -1;
}

}  // namespace

GroupIds::GroupIds(const std::vector<WorldObject>& objects) {
    for (const WorldObject& object : objects) {
        taken.insert(object.properties.groupMember.begin(), object.properties.groupMember.end());
        if (object.properties.groupParent) {
            taken.insert(*object.properties.groupParent);
        }
    }
}

int GroupIds::Take(int wish) {
    int id = wish;
    if (id < 0 || IsTaken(id)) {
        id = std::max(firstFreeGroup, taken.empty() ? 0 : *taken.rbegin() + 1);
    }
    taken.insert(id);
    return id;
}

void CompleteGroups(const Model& model, std::vector<WorldObject>& objects, GroupIds& ids, Report& report) {
    const std::vector<int> mains = MainObjects(model, objects);
    std::vector<int> leaders;
    leaders.reserve(objects.size());
    for (const WorldObject& object : objects) {
        leaders.push_back(LeaderOf(object, model, objects, mains));
    }
    for (std::size_t i = 0; i < objects.size(); i++) {
        if (leaders[i] == -1) {
            continue;
        }
        Properties& leader = objects[leaders[i]].properties;
        if (!leader.groupMember.empty() && !Leads(objects[leaders[i]])) {
            objects[i].properties.groupMember = leader.groupMember;
            continue;
        }
        if (!leader.groupParent) {
            leader.groupParent = ids.Take(leader.playerObject.value_or(-1));
        }
        objects[i].properties.groupMember = {*leader.groupParent};
        // The leader is a body, and would run against what moves along with it.
        objects[i].properties.noCollider |= leader.IsBody() && objects[i].HasTriangles();
    }
    std::map<int, std::size_t> members;
    for (const WorldObject& object : objects) {
        for (const int group : object.properties.groupMember) {
            if (++members[group] == mostMembers + 1) {
                report.Warn("only " + std::to_string(mostMembers) + " members of a group move",
                            std::to_string(group));
            }
        }
    }
}

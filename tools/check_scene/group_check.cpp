#include <map>
#include <vector>

#include "check_scene/checks.h"
#include "scene/scene.h"

// Groups: members, the parent that they follow, room for them, and that they have one level.

namespace {

struct Group {
    std::vector<std::int32_t> members;
    std::vector<std::int32_t> parents;
};

/// What the texts ask for, in the order in which the engine reads it.
std::map<std::int32_t, Group> FindGroups(const World& world) {
    std::map<std::int32_t, Group> groups;
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        const Block* block = world.BlockOf(id);
        if (block == nullptr) {
            continue;
        }
        for (const KeyUse& use : block->keys) {
            if (use.Is("*GROUPMEMBER")) {
                groups[use.Whole(0)].members.push_back(id);
            }
        }
        if (world.scene->objects[id].groupParent != -1) {
            groups[world.scene->objects[id].groupParent].parents.push_back(id);
        }
    }
    return groups;
}

void CheckMembers(Findings& findings, const World& world, std::int32_t number, const Group& group) {
    const Scene& scene = *world.scene;
    const std::string name = "group " + std::to_string(number);
    const auto at = [&](std::int32_t id) { return world.At(id, "*GROUPMEMBER", number); };
    if (group.parents.empty()) {
        findings.Error("group-without-parent", at(group.members.front()),
                       name + " has " + Counted(static_cast<std::int64_t>(group.members.size()), "member") +
                           " and no parent: some object needs *GROUPPARENT " + std::to_string(number));
        return;
    }
    const std::size_t capacity = static_cast<std::size_t>(IdList().capacity);
    if (group.members.size() > capacity) {
        findings.Error("group-too-large", at(group.members[capacity]),
                       name + " has " + std::to_string(group.members.size()) +
                           " members, and those after the first " + std::to_string(capacity) +
                           " stay behind");
    }
    for (const std::int32_t member : group.members) {
        const Object& object = scene.objects[member];
        const std::int32_t leader = group.parents.front();
        const Object& parent = scene.objects[leader];
        const bool isParent = object.groupParent == number;
        if (!isParent && object.faceValueCount > 0 && parent.collider != nullptr && !StandsStill(parent) &&
            object.attributes[collidableAttribute] != 0 && !world.Of(member).meshDropped) {
            findings.Error("member-in-the-way", at(member),
                           Named(object) + " needs *NOCOLLIDER: as a member of " + name +
                               " it stands in the way of its parent, " + Named(parent));
        }
        if (isParent || object.groupParent == -1) {
            continue;
        }
        const Place levels = world.At(member, "*GROUPPARENT");
        if (!IsMember(scene, object.groupParent, leader)) {
            findings.Warn(
                "group-of-group", levels,
                Named(object) + " follows " + Named(parent) +
                    ", and what follows it stays behind then: groups have one level. Make its members "
                    "those of " +
                    name + ", too");
        } else if (member < leader) {
            findings.Error("groups-in-circle", levels,
                           Named(object) + " and " + Named(parent) +
                               " lead each other: each moves the other; leave one leader");
        }
    }
}

}  // namespace

void CheckGroups(Findings& findings, const World& world) {
    for (const auto& [number, group] : FindGroups(world)) {
        const std::string name = "group " + std::to_string(number);
        if (number < 0 || number > maxGroupId) {
            continue;  // the number's range has been judged
        }
        if (group.parents.size() > 1) {
            findings.Warn("group-parents", world.At(group.parents[1], "*GROUPPARENT"),
                          name + " has several parents, and its members follow each of them");
        }
        if (group.members.empty()) {
            findings.Warn("group-empty", world.At(group.parents.front(), "*GROUPPARENT"),
                          name + " has no members: those that shall follow need *GROUPMEMBER " +
                              std::to_string(number));
        } else {
            CheckMembers(findings, world, number, group);
        }
    }
}

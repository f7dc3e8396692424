#include <set>

#include "check_scene/checks.h"
#include "scene/scene.h"
#include "simulation/group_members.h"

// Groups have one level: who follows a member doesn't follow that member's leader.

namespace {

/// The leader of a group; -1 for none.
std::int32_t LeaderOf(const Scene& scene, std::int32_t group) {
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        if (scene.objects[id].groupParent == group) {
            return id;
        }
    }
    return -1;
}

}  // namespace

void CheckGroupLevels(Findings& findings, const World& world) {
    const Scene& scene = *world.scene;
    for (std::int32_t group = 0; group < scene.groupCount; group++) {
        const std::int32_t leader = LeaderOf(scene, group);
        std::set<std::int32_t> seen;  // an object may stand on the list twice
        ForEachMember(scene, group, [&](std::int32_t id) {
            const Object& member = scene.objects[id];
            if (leader == -1 || member.groupParent == -1 || member.groupParent == group ||
                !seen.insert(id).second) {
                return;
            }
            const std::string both = Named(member) + " and " + Named(scene.objects[leader]);
            if (IsMember(scene, member.groupParent, leader)) {
                if (id < leader) {
                    findings.Error("groups-in-circle", world.At(id, "*GROUPPARENT"),
                                   both + " lead each other: each moves the other; leave one leader");
                }
                return;
            }
            findings.Warn(
                "group-of-group", world.At(id, "*GROUPPARENT"),
                Named(member) + " follows " + Named(scene.objects[leader]) +
                    ", and what follows it stays behind then: groups have one level. Make its members "
                    "those of group " +
                    std::to_string(group) + ", too");
        });
    }
}

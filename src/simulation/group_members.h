#pragma once

#include <cstdint>

#include "scene/scene.h"

/// Calls `function` with each object id on the list of the group, in slot order. Does nothing for a group
/// that doesn't exist, and passes over ids that name no object.
template <typename Function>
void ForEachMember(const Scene& scene, std::int32_t group, Function function) {
    if (group < 0 || group >= scene.groupCount) {
        return;
    }
    const IdList& list = scene.groups[group];
    for (std::int32_t slot = 0; slot < list.capacity; slot++) {
        const std::int32_t id = list.ids[slot];
        if (id >= 0 && id < scene.objectCount) {
            function(id);
        }
    }
}

#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "import_scene/report.h"

struct aiMetadata;

/// What the custom properties of a node make of it: the keys of its block, and the number of its key track.
struct Properties {
    bool collider = false;
    bool noCollider = false;
    bool invisible = false;
    std::optional<std::array<float, 3>> physics;  ///< gravity, bounce, friction
    std::optional<int> groupParent;
    std::vector<int> groupMember;
    std::optional<int> playerObject;
    std::optional<int> playerSpawnPoint;
    std::optional<int> cameraObject;  ///< the player; the vertices are found by who writes the key
    std::optional<int> track;         ///< for the node's animation

    /// Whether the node is more than scenery.
    bool Any() const {
        return collider || noCollider || invisible || physics || groupParent || !groupMember.empty() ||
               playerObject || playerSpawnPoint || cameraObject || track;
    }
    bool IsBody() const { return collider || physics || playerObject; }
};

/// Reads the properties of a node. What isn't understood is warned of, with the key that is next to it.
/// @param metadata may be null
Properties ReadProperties(const aiMetadata* metadata, const std::string& nodeName, Report& report);

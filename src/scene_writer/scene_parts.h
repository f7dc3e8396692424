#pragma once

#include <string>
#include <vector>

#include "scene_writer/attribute_text.h"
#include "scene_writer/scene_file.h"

namespace engine {

/// A scene while it is put together: objects, and the blocks that belong to them. The order of the objects
/// is that of the engine: what an attribute refers to comes first, members of a group before their leader.
struct SceneParts {
    std::vector<SceneObject> objects;
    std::string attributes;

    // Both refuse, with std::invalid_argument, a name that would find the block of an earlier object, and
    // a body that falls whose centre isn't 5 above its lowest point: it would float or sink.

    /// Adds an object that has no markers yet, and its block.
    /// @param centre what it turns about; of a body, 5 above its lowest point
    /// @param keys the lines of its block; none for scenery
    void Add(SceneObject object, Float3 centre, const std::vector<std::string>& keys);
    /// Adds an object that has its markers, or needs none, and its block.
    void Add(SceneObject object, const std::vector<std::string>& keys);
    /// Adds what has been put together elsewhere, such as a player.
    void Add(const SceneParts& parts);

    /// Writes the scene file and the attribute file beside it.
    /// @param path ends in ".bin"
    /// @param lights eight at most
    void Write(const std::string& path, const std::vector<SceneLight>& lights) const;
};

}  // namespace engine

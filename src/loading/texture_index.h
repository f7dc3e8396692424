#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

struct Scene;

/// Finds textures by name for the time of one load, in which textures are only appended to the scene.
struct TextureIndex {
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    /// Each name that a texture bears, with the first texture of that name.
    std::unordered_map<std::string, std::int32_t, Hash, std::equal_to<>> firstOfName;
    std::set<std::size_t> lengths;  ///< of these names
    std::int32_t knownCount = 0;    ///< textures of the scene that are in here so far

    /// What `Scene::FindTexture` gives, without a walk over all textures.
    std::int32_t Find(const Scene& scene, const std::string& name);
};

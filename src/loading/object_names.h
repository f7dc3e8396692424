#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

struct Scene;

/// The names that the objects of a scene bear, for the time of one load: gives what
/// `Scene::MakeUniqueObjectName` gives without a walk over all objects. While it lives, names change
/// through `Rename` alone.
struct ObjectNames {
    std::unordered_map<std::string, std::int32_t> bearers;  ///< how many objects bear the name
    /// For a name that was taken: all numbers up to this one are taken too, for names only come to stay.
    std::unordered_map<std::string, std::int32_t> lastNumbers;

    explicit ObjectNames(const Scene& scene);
    std::string MakeUnique(const std::string& name);
    /// Tells of an object that changes its name.
    void Rename(const std::string& before, const std::string& after);
};

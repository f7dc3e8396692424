#pragma once

#include <cstdint>
#include <memory_resource>
#include <string>
#include <unordered_map>

struct Scene;

/// The names that the objects of a scene bear, for the time of a load, in which names change through
/// `Rename` alone.
struct ObjectNames {
    using Numbers = std::pmr::unordered_map<std::string, std::int32_t>;

    /// Keeps the entries together; among the meshes, looking up a name would be a walk through far memory.
    std::pmr::monotonic_buffer_resource memory;
    Numbers bearers{&memory};  ///< how many objects bear the name
    /// For a name that was taken: all numbers up to this one are taken too, for names only come to stay.
    Numbers lastNumbers{&memory};

    std::int32_t knownCount = 0;  ///< objects of the scene that are in here so far

    /// Takes the names of objects in that have been added to the scene since.
    void TakeNewObjects(const Scene& scene);
    /// Takes down that an object changes its name to what `Scene::MakeUniqueObjectName` makes of the wanted
    /// one, found without a walk over all objects.
    /// @return the new name
    std::string Rename(const std::string& before, const std::string& wanted);

private:
    std::string TakeUnique(const std::string& wanted);
};

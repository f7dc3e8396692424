#pragma once

#include <cstdint>
#include <memory>

#include "scene/scene.h"
#include "simulation/bound_tree.h"
#include "simulation/id_marks.h"

/// Finds the objects that a sweep may meet without asking each of them.
///
/// It holds a bound of every object: of a mesh its centre vertex and radius, of a body its axis and its
/// radius as a cylinder. Meshes that stand still are in a tree; those that have moved lately, and all
/// bodies, are on lists, which are gone through.
///
/// The bounds must be those of the moment. So the first sweep of a world step looks all of them up, and
/// from then on the step reports each object that it moves. A sweep outside of a step looks them up for
/// itself.
struct ObjectBounds {
    /// The index of the scene, made at the first call.
    static ObjectBounds& Of(Scene& scene);

    void BeginStep() { inStep = true; }
    void EndStep() { inStep = current = false; }
    /// Within a step: the object has been moved.
    void Moved(const Scene& scene, std::int32_t id);
    /// The objects that the body's present sweep may meet, ready to be taken in the order of their ids, the
    /// body itself and some that it can't meet among them.
    IdMarks& FindNear(const Scene& scene, const Object& body);

private:
    bool inStep = false;
    bool current = false;  ///< the bounds are those of the moment

    /// What an object counts as.
    enum class Kind : std::uint8_t { absent, mesh, body };

    struct Entry {
        Vector centre;
        float reach = 0.0f;               ///< of a mesh its radius, of a body the larger horizontal one
        const float* vertices = nullptr;  ///< the array that `centre` comes from
        std::int32_t centreVertex = 0;    ///< the vertex
        std::uint32_t meshVersion = 0;    ///< of the object when `centre` was read
        std::int32_t listed = -1;         ///< place on its list, -1 for none
        std::int32_t lastChange = 0;      ///< number of the update that found the bound changed
        Kind kind = Kind::absent;
    };

    /// Bounds side by side, for the compiler to compute on several at once.
    struct List {
        std::int32_t count = 0;
        std::unique_ptr<float[]> x;
        std::unique_ptr<float[]> y;
        std::unique_ptr<float[]> z;
        std::unique_ptr<float[]> reach;
        std::unique_ptr<std::int32_t[]> ids;
    };

    std::int32_t objectCount = 0;
    std::int32_t updates = 0;       ///< of all objects, so far
    std::int32_t stillListed = 0;   ///< meshes on the list that could as well be in the tree
    std::int64_t listedInVain = 0;  ///< how many such meshes have been gone through since the last build
    std::unique_ptr<Entry[]> entries;
    List meshes;
    List bodies;
    BoundTree tree;
    IdMarks found;

    static bool IsUpToDate(const Entry& entry, const Object& object);
    bool HasStoodStill(const Entry& entry) const;
    void Resize(std::int32_t newCount);
    void Update(const Scene& scene);
    void Update(const Scene& scene, std::int32_t id);
    void BuildTree();
    List* ListOf(Kind kind);
    static void Append(List& list, Entry& entry, std::int32_t id);
    void Remove(List& list, Entry& entry);
    void FindListedMeshes(const Vector& centre, float reach);
    void FindBodies(const Collider& body, float travel);
};

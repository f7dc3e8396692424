#pragma once

#include <cstdint>

#include "scene/scene.h"
#include "simulation/bound_tree.h"
#include "simulation/id_marks.h"

/// Finds the faces of a mesh that a sweep may touch without looking at all of them.
///
/// It passes over a face only if `FaceFilter` would call it far, so it leaves no result changed: see
/// `FindCandidates`. Building takes as long as some passes over all faces. So a mesh has to stand still for
/// as many passes first, and the total is never more than twice that of the better choice. A mesh that
/// moves again before the index has paid must stand still for twice as many the next time.
struct FaceIndex {
    /// Meshes of fewer faces are as quickly looked through.
    static constexpr std::int32_t fewestFaces = 64;
    /// Passes over all faces that take as long as building the index.
    static constexpr std::int32_t buildCost = 12;
    /// Meshes of fewer faces take no longer than a millisecond or two.
    static constexpr std::int32_t fewestLarge = 16384;

    /// The index of the mesh, not necessarily built; null for a mesh of too few faces.
    static FaceIndex* Of(const Object& mesh);

    /// The faces that the body's present sweep may touch, ready to be taken in rising order, the last face
    /// of the mesh among them. A face that is left out surely lies out of reach.
    /// @param travel length of `sweepVelocity`
    /// @return null if all faces are to be looked at: the mesh hasn't stood still for long enough, or the
    /// sweep's figures are not of a size for which the limits hold
    IdMarks* FindCandidates(const Object& mesh, const Collider& body, float travel);
    /// Builds the indices of all large meshes that stop bodies, if there are any. In play that would hold
    /// up a frame, by 0.1 us a face.
    static void PrepareLarge(const Scene& scene);
    /// Bytes that the built index takes.
    std::int64_t Memory() const;

private:
    bool built = false;
    std::int32_t passes = 0;  ///< since the mesh changed or, if built, since the index was built
    std::int32_t passesToBuild = buildCost;  ///< how many the mesh has to stand still for
    // What the index was built of, or the passes counted for: another version or other arrays are another
    // mesh.
    std::uint32_t meshVersion = 0;
    const float* vertices = nullptr;
    const std::int32_t* faces = nullptr;
    std::int32_t faceCount = 0;
    BoundTree tree;
    IdMarks candidates;

    /// Starts anew if the mesh isn't what it was.
    void Follow(const Object& mesh);
    void Build();
};

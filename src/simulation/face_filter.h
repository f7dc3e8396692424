#pragma once

#include <cstdint>

#include "scene/collider.h"
#include "scene/object.h"

/// Sorts out the faces that a sweep can't touch, so that few are left for the exact steps of collision.
///
/// It multiplies by reciprocals where those divide and compares squares where they take roots, so its
/// figures differ from theirs by rounding. All its limits therefore have margins, more than twice what such
/// differences can come to, and whatever is closer to a limit, or not a number, is left to the exact
/// steps. Faces go through it in batches whose values lie side by side, for the compiler to compute on
/// several at once.
struct FaceFilter {
    static constexpr std::int32_t batchSize = 16;

    /// For the body's present sweep. The body is to outlive the filter.
    /// @param travel length of `sweepVelocity`
    FaceFilter(const Collider& body, float travel);

    /// Takes up the faces with these ids, at most `batchSize`, and fills `far` for them.
    /// @param faces three vertex indices each
    void Load(const float* vertices, const std::int32_t* faces, const std::int32_t* ids,
              std::int32_t count);

    /// Corner 0 to 2 of face i of the batch, in world coordinates.
    Vector Corner(std::int32_t i, int corner) const {
        return Vector(x[corner][i], y[corner][i], z[corner][i]);
    }

    /// Whether the sweep surely meets neither the front nor an edge of face i of the batch before the
    /// contact that the body has found so far.
    bool CantTouch(std::int32_t i) const;

    /// Not 0 for a face whose bounding sphere the sweep surely doesn't reach.
    std::int32_t far[batchSize];

private:
    const Collider& body;
    Vector scale;   ///< from world into ellipsoid space
    Vector origin;  ///< of the sweep, in ellipsoid space
    float travel;
    float originSize;  ///< bound of the origin's coordinates, to which their rounding is in proportion
    bool ordinary;     ///< the sweep's figures are of a size for which the margins of `CantTouch` hold
    float x[3][batchSize] = {};
    float y[3][batchSize] = {};
    float z[3][batchSize] = {};

    void FindFar();
};

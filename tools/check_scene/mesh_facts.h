#pragma once

#include <cstdint>
#include <vector>

#include "scene/object.h"

/// The vertex, as modelled; the origin if the object has none of that number.
inline Vector VertexOf(const Object& object, std::int32_t index) {
    Vector vertex;
    object.GetVertex(vertex, index);
    return vertex;
}
/// The vertex that a corner of a triangle names; each triangle has three corners.
inline Vector CornerOf(const Object& object, std::int32_t corner) {
    return VertexOf(object, object.faces[corner]);
}
inline Vector CentreOf(const Object& object) {
    return VertexOf(object, object.centreVertex);
}
/// How far its spawn point moves the object in the first frame.
inline Vector ShiftOf(const Object& object) {
    const float* m = object.transform.m;
    return Vector(m[3], m[7], m[11]);
}
/// Makes the box from `low` to `high` hold the point.
void Widen(Vector& low, Vector& high, Vector point);

/// What one walk over an object's triangles shows.
struct MeshFacts {
    std::vector<bool> isUsed;  ///< for each vertex, whether a triangle names it
    std::int32_t usedCount = 0;
    Vector low;   ///< smallest and largest coordinates of the vertices that triangles name;
    Vector high;  ///< both zero without triangles
    std::int32_t degenerateCount = 0;  ///< triangles without an area
    std::int32_t firstDegenerate = -1;
    std::int32_t doubledCount = 0;  ///< triangles whose corners another one has, too
    std::int32_t firstDoubled = -1;
    double area = 0.0;
    double facing =
        0.0;  ///< length of the sum of all area vectors: 0 for a closed mesh, `area` for a flat one
    double volume = 0.0;    ///< that the mesh encloses; negative if it looks inwards
    double facingUp = 0.0;  ///< z of that sum

    explicit MeshFacts(const Object& object);

    /// Whether a triangle names the vertex, which has to exist.
    bool Uses(std::int32_t vertex) const { return isUsed[static_cast<std::size_t>(vertex)]; }
    bool Contains(Vector point) const {
        return point.x >= low.x && point.y >= low.y && point.z >= low.z && point.x <= high.x &&
               point.y <= high.y && point.z <= high.z;
    }
    float LargestSide() const;
    /// Whether the mesh is closed, or nearly so, and seen from inside.
    bool LooksInwards() const;
};

#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>
#include <vector>

#include "check_scene/walk.h"
#include "scene/scene.h"

/// Column, row and level of a square of floor.
using Cell = std::tuple<int, int, int>;

/// The cell, or else the one below or above it, among the keys; the end if none of them is.
template <typename Cells>
auto FindNear(const Cells& cells, Cell cell) {
    const auto [column, row, level] = cell;
    auto found = cells.find(cell);
    for (const int other : {level - 1, level + 1}) {
        found = found == cells.end() ? cells.find({column, row, other}) : found;
    }
    return found;
}

/// Where a triangle crosses the middle of a square.
struct Surface {
    float height = 0.0f;
    bool looksUp = false;
    bool isFloor = false;  ///< not too steep for it
};

/// The floor as a net of squares: where triangles look up, nothing hangs lower than a body is high, and
/// there is no solid, whose top would be the next above.
struct FloorNet {
    static constexpr float infinity = std::numeric_limits<float>::infinity();
    float side = 4.0f;  ///< of a square, in world units: a body's width at least
    Vector low{infinity, infinity, infinity};
    Vector high{-infinity, -infinity, -infinity};
    int columns = 0;
    int rows = 0;
    std::vector<std::vector<Surface>> surfaces;  ///< of each square

    void Measure(const Scene& scene, const std::vector<std::int32_t>& obstacles);
    void Add(const Object& object);
    void AddTriangle(const Vector (&corners)[3]);
    std::vector<Walks::Square> Squares() const;
    Cell CellOf(Vector feet) const {
        return {static_cast<int>(std::floor((feet.x - low.x) / side)),
                static_cast<int>(std::floor((feet.y - low.y) / side)),
                static_cast<int>(std::lround(feet.z / side))};
    }
    /// The middle of the square that the place is in, at its height.
    Vector MiddleOf(Vector place) const {
        const auto [column, row, level] = CellOf(place);
        return Vector(low.x + (static_cast<float>(column) + 0.5f) * side,
                      low.y + (static_cast<float>(row) + 0.5f) * side, place.z);
    }
};

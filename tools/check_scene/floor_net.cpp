#include "check_scene/floor_net.h"

#include <algorithm>
#include <set>

#include "check_scene/mesh_facts.h"

namespace {

constexpr float mostSquares = 450.0f;  ///< about so many lie on the floor, in larger worlds larger ones
constexpr float bodyHeight = 10.0f;

}  // namespace

void FloorNet::Measure(const Scene& scene, const std::vector<std::int32_t>& obstacles) {
    for (const std::int32_t id : obstacles) {
        const Object& object = scene.objects[id];
        for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
            const Vector vertex = CornerOf(object, corner);
            if (std::isfinite(vertex.x + vertex.y + vertex.z)) {
                Widen(low, high, vertex);
            }
        }
    }
    if (low.x < high.x && low.y < high.y) {
        side = std::max(side, std::sqrt((high.x - low.x) * (high.y - low.y) / mostSquares));
        constexpr int most = 500;  // a long and narrow world has many squares without any floor
        side = std::max(side, std::max(high.x - low.x, high.y - low.y) / most);
        columns = 1 + static_cast<int>((high.x - low.x) / side);
        rows = 1 + static_cast<int>((high.y - low.y) / side);
        surfaces.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    }
}

void FloorNet::AddTriangle(const Vector (&corners)[3]) {
    const auto [a, b, c] = std::tuple(corners[0], corners[1], corners[2]);
    const Vector normal = (b - a).Cross(c - a);
    const float steepness = normal.z / std::max(normal.Length(), 1e-12f);
    constexpr float walkable = 0.7f;
    if (!(std::fabs(steepness) > 0.1f)) {
        return;
    }
    const auto first = [this](float value, float from) {
        return static_cast<int>(std::ceil((value - from) / side - 0.5f));
    };
    const auto last = [this](float value, float from) {
        return static_cast<int>(std::floor((value - from) / side - 0.5f));
    };
    const int right = std::min(columns - 1, last(std::max({a.x, b.x, c.x}), low.x));
    const int top = std::min(rows - 1, last(std::max({a.y, b.y, c.y}), low.y));
    for (int row = std::max(0, first(std::min({a.y, b.y, c.y}), low.y)); row <= top; row++) {
        for (int column = std::max(0, first(std::min({a.x, b.x, c.x}), low.x)); column <= right; column++) {
            const float x = low.x + (static_cast<float>(column) + 0.5f) * side;
            const float y = low.y + (static_cast<float>(row) + 0.5f) * side;
            const float u = ((x - a.x) * (c.y - a.y) - (y - a.y) * (c.x - a.x)) / normal.z;
            const float v = ((b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x)) / normal.z;
            if (u < 0.0f || v < 0.0f || u + v > 1.0f) {
                continue;
            }
            const float height = a.z + u * (b.z - a.z) + v * (c.z - a.z);
            const std::size_t square = static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                                       static_cast<std::size_t>(column);
            surfaces[square].push_back({height, steepness > 0.0f, steepness > walkable});
        }
    }
}

void FloorNet::Add(const Object& object) {
    for (std::int32_t corner = 0; corner + 2 < object.faceValueCount; corner += 3) {
        AddTriangle({CornerOf(object, corner), CornerOf(object, corner + 1), CornerOf(object, corner + 2)});
    }
}

std::vector<Walks::Square> FloorNet::Squares() const {
    std::vector<Walks::Square> squares;
    std::set<Cell> cells;
    for (std::size_t square = 0; square < surfaces.size(); square++) {
        for (const auto& [height, looksUp, isFloor] : surfaces[square]) {
            Surface next{infinity};
            for (const Surface& other : surfaces[square]) {
                if (other.height > height + 0.01f && other.height < next.height) {
                    next = other;
                }
            }
            const bool isBuried = next.looksUp || next.height < height + 0.95f * bodyHeight;
            const auto column = static_cast<float>(square % static_cast<std::size_t>(columns));
            const auto row = static_cast<float>(square / static_cast<std::size_t>(columns));
            const Vector place(low.x + (column + 0.5f) * side, low.y + (row + 0.5f) * side, height);
            if (isFloor && !isBuried && cells.insert(CellOf(place)).second) {
                squares.push_back({place, false});
            }
        }
    }
    // What is one square wide is the top of a wall, and no floor.
    std::erase_if(squares, [&](const Walks::Square& square) {
        const auto [column, row, level] = CellOf(square.place);
        int neighbours = -1;
        for (int i = 0; i < 9; i++) {
            neighbours +=
                FindNear(cells, {column + i % 3 - 1, row + i / 3 - 1, level}) != cells.end() ? 1 : 0;
        }
        return neighbours < 3;
    });
    return squares;
}

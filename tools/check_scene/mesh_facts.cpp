#include "check_scene/mesh_facts.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Triangle {
    std::int32_t middle;
    std::int32_t last;
    std::int32_t number;
};

/// Counts the triangles that have the same three corners as another. The triangles are gathered by their
/// smallest corner first, so that few are left to be compared.
void CountDoubled(const Object& object, MeshFacts& facts) {
    const std::int32_t count = object.faceValueCount / 3;
    std::vector<std::int32_t> ends(facts.isUsed.size() + 1);
    const auto sorted = [&](std::int32_t number) {
        const std::int32_t* face = &object.faces[3 * static_cast<std::size_t>(number)];
        std::array<std::int32_t, 3> corners{face[0], face[1], face[2]};
        if (corners[0] > corners[1]) {
            std::swap(corners[0], corners[1]);
        }
        if (corners[1] > corners[2]) {
            std::swap(corners[1], corners[2]);
        }
        if (corners[0] > corners[1]) {
            std::swap(corners[0], corners[1]);
        }
        return corners;
    };
    for (std::int32_t number = 0; number < count; number++) {
        ends[static_cast<std::size_t>(sorted(number)[0]) + 1]++;
    }
    for (std::size_t i = 1; i < ends.size(); i++) {
        ends[i] += ends[i - 1];
    }
    std::vector<Triangle> triangles(static_cast<std::size_t>(count));
    for (std::int32_t number = 0; number < count; number++) {
        const auto corners = sorted(number);
        std::int32_t& slot = ends[static_cast<std::size_t>(corners[0])];
        triangles[static_cast<std::size_t>(slot++)] = {corners[1], corners[2], number};
    }
    // By now each entry is the end of its own triangles, and the start of the next one's.
    std::int32_t begin = 0;
    for (std::size_t smallest = 0; smallest + 1 < ends.size(); smallest++) {
        const auto first = triangles.begin() + begin;
        const auto last = triangles.begin() + ends[smallest];
        begin = ends[smallest];
        std::sort(first, last, [](const Triangle& left, const Triangle& right) {
            if (left.middle != right.middle) {
                return left.middle < right.middle;
            }
            return left.last != right.last ? left.last < right.last : left.number < right.number;
        });
        for (auto triangle = first; triangle != last && triangle + 1 != last; triangle++) {
            const Triangle& next = triangle[1];
            const bool isDegenerate = triangle->middle == triangle->last ||
                                      triangle->middle == static_cast<std::int32_t>(smallest);
            if (triangle->middle == next.middle && triangle->last == next.last && !isDegenerate) {
                facts.doubledCount++;
                if (facts.firstDoubled == -1 || next.number < facts.firstDoubled) {
                    facts.firstDoubled = next.number;
                }
            }
        }
    }
}

}  // namespace

MeshFacts::MeshFacts(const Object& object) {
    const std::int32_t vertexCount = object.vertexValueCount / 3;
    const std::int32_t triangleCount = object.faceValueCount / 3;
    std::vector<char> used(static_cast<std::size_t>(vertexCount));
    for (std::int32_t i = 0; i < 3 * triangleCount; i++) {
        used[static_cast<std::size_t>(object.faces[i])] = 1;
    }
    isUsed.assign(used.begin(), used.end());
    for (std::int32_t i = 0; i < vertexCount; i++) {
        if (used[static_cast<std::size_t>(i)] == 0) {
            continue;
        }
        const Vector vertex = VertexOf(object, i);
        if (usedCount++ == 0) {
            low = vertex;
            high = vertex;
        }
        Widen(low, high, vertex);
    }
    const Vector middle((low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2);
    double sum[3] = {};
    for (std::int32_t i = 0; i < triangleCount; i++) {
        const Vector a = CornerOf(object, 3 * i);
        const Vector b = CornerOf(object, 3 * i + 1);
        const Vector c = CornerOf(object, 3 * i + 2);
        const float ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
        const float vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
        const double nx = double{uy} * vz - double{uz} * vy;
        const double ny = double{uz} * vx - double{ux} * vz;
        const double nz = double{ux} * vy - double{uy} * vx;
        const double twice = std::sqrt(nx * nx + ny * ny + nz * nz);
        if (!(twice > 0.0)) {
            if (firstDegenerate == -1) {
                firstDegenerate = i;
            }
            degenerateCount++;
            continue;
        }
        area += twice / 2;
        sum[0] += nx / 2;
        sum[1] += ny / 2;
        sum[2] += nz / 2;
        volume += ((a.x - middle.x) * nx + (a.y - middle.y) * ny + (a.z - middle.z) * nz) / 6;
    }
    facing = std::sqrt(sum[0] * sum[0] + sum[1] * sum[1] + sum[2] * sum[2]);
    facingUp = sum[2];
    CountDoubled(object, *this);
}

void Widen(Vector& low, Vector& high, Vector point) {
    low = Vector(std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z));
    high = Vector(std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z));
}

float MeshFacts::LargestSide() const {
    return std::max({high.x - low.x, high.y - low.y, high.z - low.z});
}

bool MeshFacts::LooksInwards() const {
    const double box = double{high.x - low.x} * (high.y - low.y) * (high.z - low.z);
    constexpr double nearlyClosed = 0.35;
    constexpr double leastShare = 0.05;
    return facing < nearlyClosed * area && volume < -leastShare * box;
}

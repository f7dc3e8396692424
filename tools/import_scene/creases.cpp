#include "import_scene/creases.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// A triangle seen from one of its corners: the edge to another one.
struct Spoke {
    std::uint32_t neighbour;  ///< position at the edge's other end
    std::uint32_t corner;
};

std::uint32_t RootOf(std::vector<std::uint32_t>& group, std::uint32_t corner) {
    while (group[corner] != corner) {
        group[corner] = group[group[corner]];
        corner = group[corner];
    }
    return corner;
}

/// The corners of each position, one after the other: those of position p are from starts[p] to starts[p +
/// 1].
struct CornersByPosition {
    std::vector<std::uint32_t> starts;
    std::vector<std::uint32_t> order;

    CornersByPosition(const std::vector<std::uint32_t>& corners, std::size_t positionCount)
        : starts(positionCount + 1), order(corners.size()) {
        for (const std::uint32_t position : corners) {
            starts[position + 1]++;
        }
        for (std::size_t i = 0; i < positionCount; i++) {
            starts[i + 1] += starts[i];
        }
        std::vector<std::uint32_t> next = starts;
        for (std::uint32_t corner = 0; corner < corners.size(); corner++) {
            order[next[corners[corner]]++] = corner;
        }
    }
};

}  // namespace

std::vector<std::uint32_t> SmoothGroups(const std::vector<std::uint32_t>& corners,
                                        const std::vector<aiVector3D>& normals, std::size_t positionCount,
                                        float creaseAngle) {
    const float leastCosine = std::cos(creaseAngle * std::numbers::pi_v<float> / 180.0f);
    const CornersByPosition byPosition(corners, positionCount);
    std::vector<std::uint32_t> group(corners.size());
    for (std::uint32_t corner = 0; corner < group.size(); corner++) {
        group[corner] = corner;
    }
    std::vector<Spoke> spokes;
    for (std::size_t position = 0; position < positionCount; position++) {
        spokes.clear();
        for (std::uint32_t i = byPosition.starts[position]; i < byPosition.starts[position + 1]; i++) {
            const std::uint32_t corner = byPosition.order[i];
            const std::uint32_t first = corner - corner % 3;
            spokes.push_back({corners[first + (corner + 1) % 3], corner});
            spokes.push_back({corners[first + (corner + 2) % 3], corner});
        }
        std::sort(spokes.begin(), spokes.end(), [](const Spoke& a, const Spoke& b) {
            return a.neighbour != b.neighbour ? a.neighbour < b.neighbour : a.corner < b.corner;
        });
        for (std::size_t i = 1; i < spokes.size(); i++) {
            if (spokes[i].neighbour == spokes[i - 1].neighbour &&
                normals[spokes[i].corner / 3] * normals[spokes[i - 1].corner / 3] >= leastCosine) {
                group[RootOf(group, spokes[i].corner)] = RootOf(group, spokes[i - 1].corner);
            }
        }
    }
    for (std::uint32_t corner = 0; corner < group.size(); corner++) {
        group[corner] = RootOf(group, corner);
    }
    return group;
}

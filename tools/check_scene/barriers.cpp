#include "check_scene/barriers.h"

#include <algorithm>
#include <cmath>

namespace {

using Squares = std::vector<std::pair<Cell, Vector>>;

const Vector ahead[] = {{1.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, {-1.0f, 0.0f, 0.0f}, {0.0f, -1.0f, 0.0f}};

Cell Neighbour(Cell cell, Vector direction, int rise = 0) {
    const auto [column, row, level] = cell;
    return {column + static_cast<int>(direction.x), row + static_cast<int>(direction.y), level + rise};
}

/// Takes the squares out that hang together with the first one.
Squares TakePart(std::map<Cell, Vector>& squares) {
    Squares part{*squares.begin()};
    squares.erase(squares.begin());
    for (std::size_t i = 0; i < part.size(); i++) {
        for (const Vector& direction : ahead) {
            const auto next = FindNear(squares, Neighbour(part[i].first, direction));
            if (next != squares.end()) {
                part.push_back(*next);
                squares.erase(next);
            }
        }
    }
    return part;
}

/// Whether the body gets straight on from one square to the next, anywhere over their width.
/// @param feet where it stands
/// @param lift how far it is raised first
bool GetsAcross(Walker& walker, Vector feet, Vector to, Vector direction, float lift, float side) {
    const Vector aside(direction.y, -direction.x, 0.0f);
    const float height = walker.Body().radii.z;
    constexpr float gap = 0.2f;
    for (float offset = -0.5f * side; offset <= 0.5f * side; offset += 1.0f) {
        walker.PlaceAt(feet + Vector(0.0f, 0.0f, height + gap));
        walker.Sweep(Vector(0.0f, 0.0f, lift));
        walker.Sweep(aside * ((to - walker.position).Dot(aside) + offset));
        walker.Sweep(direction * (to - walker.position).Dot(direction));
        const bool isAcross = (to - walker.position).Dot(direction) < 0.1f * side;
        walker.Settle();
        if (isAcross && std::fabs(walker.position.z - height - to.z) < 1.0f) {
            return true;
        }
    }
    return false;
}

/// Gives a barrier before the part, if one is found.
std::vector<Walks::Barrier> FindBarrier(Walker& walker, const FloorNet& net, const Squares& part,
                                        const std::map<Cell, Vector>& stands) {
    constexpr float climb = 2.5f;     ///< bodies do that
    constexpr float mostLift = 6.5f;  ///< what is higher is meant as a wall or a table
    const Vector radii = walker.Body().radii;
    for (const auto& [cell, place] : part) {
        for (const Vector& direction : ahead) {
            auto stand = FindNear(stands, Neighbour(cell, direction * -1.0f));
            if (stand == stands.end()) {
                stand = FindNear(stands, Neighbour(cell, direction * -1.0f, -2));
            }
            if (stand == stands.end()) {
                continue;
            }
            const Vector feet = stand->second - Vector(0.0f, 0.0f, radii.z);
            const float step = place.z - feet.z;
            const bool isLevel = std::fabs(step) < climb;
            if (!isLevel && (step < 0.0f || step > mostLift)) {
                continue;
            }
            walker.Body().radii = isLevel ? radii * 0.5f : radii;
            const bool isBarrier =
                GetsAcross(walker, feet, place, direction, isLevel ? 0.0f : step + 0.5f, net.side);
            walker.Body().radii = radii;
            if (isBarrier) {
                return {{feet, isLevel ? 0.0f : step}};
            }
        }
    }
    return {};
}

}  // namespace

std::vector<Walks::Barrier> FindBarriers(Walker& walker, const FloorNet& net,
                                         const std::vector<Walks::Square>& floor,
                                         const std::map<Cell, Vector>& stands) {
    constexpr std::size_t fewSquares = 12;
    constexpr double small = 0.08;
    std::map<Cell, Vector> unreached;
    for (const Walks::Square& square : floor) {
        if (!square.isReached) {
            unreached.emplace(net.CellOf(square.place), square.place);
        }
    }
    std::vector<Walks::Barrier> barriers;
    while (!unreached.empty()) {
        const Squares part = TakePart(unreached);
        const double share = static_cast<double>(part.size()) / static_cast<double>(floor.size());
        if (part.size() < fewSquares || share < small) {
            continue;
        }
        for (Walks::Barrier& barrier : FindBarrier(walker, net, part, stands)) {
            barrier.share = share;
            barriers.push_back(barrier);
        }
    }
    return barriers;
}

bool IsWithinWalls(Walker& walker, const FloorNet& net, Vector place) {
    return std::ranges::all_of(ahead, [&](const Vector& direction) {
        for (Vector from = place + Vector(0.0f, 0.0f, 1.0f);;) {  // clear of the floor
            walker.PlaceAt(from);
            walker.Sweep(direction * net.side);
            if ((walker.position - from).Dot(direction) < 0.5f * net.side) {
                return true;
            }
            from = from + direction * net.side;
            if (!(from.x > net.low.x && from.x < net.high.x && from.y > net.low.y && from.y < net.high.y)) {
                return false;
            }
        }
    });
}

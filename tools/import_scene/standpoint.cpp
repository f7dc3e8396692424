#include "import_scene/standpoint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

/// Rooms that a body can turn round in, and ground that is more than a pedestal.
constexpr float smallestRoom = 12.0f;
constexpr float smallestGround = 100.0f;
/// Ground is at most so high for its width.
constexpr float steepestGround = 0.4f;
/// A wall that is nearer than this fills the picture.
constexpr float closeWall = 15.0f;

aiVector3D At(const engine::SceneObject& mesh, std::int32_t vertex) {
    const engine::Float3& place = mesh.vertices[vertex];
    return {place.x, place.y, place.z};
}

/// The height of a triangle above a point of the ground, if it is above it and seen from above.
std::optional<float> HeightOver(const engine::SceneObject& mesh, const engine::Int3& face, float x,
                                float y) {
    const aiVector3D a = At(mesh, face.a);
    const aiVector3D b = At(mesh, face.b);
    const aiVector3D c = At(mesh, face.c);
    const float area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    if (!(area > 0.0f)) {
        return {};
    }
    const float shareB = ((x - a.x) * (c.y - a.y) - (y - a.y) * (c.x - a.x)) / area;
    const float shareC = ((b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x)) / area;
    if (shareB < 0.0f || shareC < 0.0f || shareB + shareC > 1.0f) {
        return {};
    }
    return a.z + shareB * (b.z - a.z) + shareC * (c.z - a.z);
}

/// Eight, around.
std::array<aiVector3D, 8> Horizon() {
    std::array<aiVector3D, 8> directions;
    for (std::size_t i = 0; i < directions.size(); i++) {
        const float angle = std::numbers::pi_v<float> / 4.0f * static_cast<float>(i);
        directions[i] = {std::cos(angle), std::sin(angle), 0.0f};
    }
    return directions;
}

/// Towards what is farthest away: there is most between it and the eye. Where there is only sky, there is
/// nothing.
aiVector3D BestView(const std::vector<WorldObject>& objects, const aiVector3D& eye,
                    const aiVector3D& middle) {
    aiVector3D best = middle - eye;
    best.z = 0.0f;
    float farthest = closeWall;
    for (const aiVector3D& direction : Horizon()) {
        const std::optional<Hit> hit = FirstHit(objects, eye, direction);
        if (hit && hit->distance > farthest) {
            farthest = hit->distance;
            best = direction;
        }
    }
    return best.Length() > 1e-3f ? best : aiVector3D(0.0f, 1.0f, 0.0f);
}

/// Whether walls, floor and ceiling around the point all look at it.
bool IsRoom(const std::vector<WorldObject>& objects, const aiVector3D& point) {
    const auto looksHere = [&](const aiVector3D& direction) {
        const std::optional<Hit> hit = FirstHit(objects, point, direction);
        return hit && hit->isFront;
    };
    if (!looksHere({0.0f, 0.0f, 1.0f}) || !looksHere({0.0f, 0.0f, -1.0f})) {
        return false;
    }
    const std::array<aiVector3D, 8> around = Horizon();
    return std::ranges::all_of(around, looksHere);
}

bool IsUnderTheSky(const std::vector<WorldObject>& objects, const aiVector3D& eye) {
    return !FirstHit(objects, eye, {0.0f, 0.0f, 1.0f});
}

}  // namespace

/// The highest floor below a point.
std::optional<float> FloorBelow(const std::vector<WorldObject>& objects, const aiVector3D& point) {
    std::optional<float> highest;
    for (const WorldObject& object : objects) {
        if (!object.IsSolid()) {
            continue;
        }
        for (const engine::Int3& face : object.mesh.faces) {
            const std::optional<float> height = HeightOver(object.mesh, face, point.x, point.y);
            if (height && *height <= point.z && (!highest || *height > *highest)) {
                highest = height;
            }
        }
    }
    return highest;
}

std::optional<Hit> FirstHit(const std::vector<WorldObject>& objects, const aiVector3D& from,
                            const aiVector3D& direction) {
    std::optional<Hit> nearest;
    for (const WorldObject& object : objects) {
        for (const engine::Int3& face : object.mesh.faces) {
            const aiVector3D a = At(object.mesh, face.a);
            const aiVector3D ab = At(object.mesh, face.b) - a;
            const aiVector3D ac = At(object.mesh, face.c) - a;
            const aiVector3D across = direction ^ ac;
            const float determinant = ab * across;
            const aiVector3D offset = from - a;
            const aiVector3D other = offset ^ ab;
            const float u = (offset * across) / determinant;
            const float v = (direction * other) / determinant;
            const float distance = (ac * other) / determinant;
            if (u >= 0.0f && v >= 0.0f && u + v <= 1.0f && distance > 0.0f &&
                (!nearest || distance < nearest->distance)) {
                nearest = {distance, determinant > 0.0f};
            }
        }
    }
    return nearest;
}

bool IsFree(const std::vector<WorldObject>& objects, const aiVector3D& eye) {
    const std::array<aiVector3D, 8> around = Horizon();
    return std::ranges::none_of(around, [&](const aiVector3D& direction) {
        const std::optional<Hit> hit = FirstHit(objects, eye, direction);
        return hit && hit->distance < bodyReach;
    });
}

std::optional<Standpoint> FindStandpoint(const std::vector<WorldObject>& objects) {
    const Bounds bounds = BoundsOf(objects);
    if (bounds.IsEmpty()) {
        return {};
    }
    const aiVector3D size = bounds.Size();
    const float width = std::min(size.x, size.y);
    const aiVector3D middle = bounds.Middle();
    const bool mayBeRoom = width > smallestRoom && size.z > standing + eyeAboveCentre;
    const bool isRoom = mayBeRoom && IsRoom(objects, middle);
    const bool mayBeGround = width > smallestGround && size.z < steepestGround * width;
    if (!isRoom && !mayBeGround) {
        return {};
    }
    // In the middle, or between it and a corner.
    for (const auto& [x, y] : {std::pair(0.0f, 0.0f), std::pair(0.25f, 0.25f), std::pair(-0.25f, 0.25f),
                               std::pair(-0.25f, -0.25f), std::pair(0.25f, -0.25f)}) {
        const aiVector3D above = middle + aiVector3D(x * size.x, y * size.y, isRoom ? 0.0f : size.z);
        const std::optional<float> floor = FloorBelow(objects, above);
        if (!floor) {
            continue;
        }
        const aiVector3D eye(above.x, above.y, *floor + standing + eyeAboveCentre);
        if ((isRoom || IsUnderTheSky(objects, eye)) && IsFree(objects, eye)) {
            return Standpoint{eye, BestView(objects, eye, middle)};
        }
    }
    return {};
}

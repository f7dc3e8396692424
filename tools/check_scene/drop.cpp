#include "check_scene/drop.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

namespace {

/// Half the side of the column around the body whose triangles can matter, in world units.
constexpr float columnReach = 15.0f;
constexpr std::int64_t mostFrames = 1500;
constexpr std::int64_t leastFrames = 60;
/// A body that moves less than this in a frame, for so many frames, rests.
constexpr float stillness = 0.01f;
constexpr int framesOfRest = 12;

bool IsObstacle(const Object& object) {
    return object.attributes[collidableAttribute] != 0;
}

/// Copies the triangles of the obstacle within the column. Each keeps vertices of its own.
void CopyNear(const Object& obstacle, Vector place, Object& copy) {
    std::vector<float> vertices;
    const Vector centre = CentreOf(obstacle);
    vertices.insert(vertices.end(), {centre.x, centre.y, centre.z});
    for (std::int32_t corner = 0; corner + 2 < obstacle.faceValueCount; corner += 3) {
        const float* a = &obstacle.vertices[std::ptrdiff_t{3} * obstacle.faces[corner]];
        const float* b = &obstacle.vertices[std::ptrdiff_t{3} * obstacle.faces[corner + 1]];
        const float* c = &obstacle.vertices[std::ptrdiff_t{3} * obstacle.faces[corner + 2]];
        const auto isBeside = [&](int axis, float middle) {
            const auto [least, most] = std::minmax({a[axis], b[axis], c[axis]});
            return least > middle + columnReach || most < middle - columnReach;
        };
        if (isBeside(0, place.x) || isBeside(1, place.y) ||
            !std::isfinite(a[0] + a[1] + a[2] + b[0] + b[1] + b[2] + c[0] + c[1] + c[2])) {
            continue;
        }
        for (const float* vertex : {a, b, c}) {
            vertices.insert(vertices.end(), vertex, vertex + 3);
        }
    }
    const auto vertexCount = static_cast<std::int32_t>(vertices.size() / 3);
    copy.ResizeVertices(vertexCount);
    std::ranges::copy(vertices, copy.vertices.get());
    copy.ResizeFaces((vertexCount - 1) / 3);
    for (std::int32_t i = 0; i < copy.faceValueCount; i++) {
        copy.faces[i] = i + 1;
    }
    copy.centreVertex = 0;
    copy.name = obstacle.name;
    std::ranges::copy(obstacle.attributes, copy.attributes);
    copy.ComputeRadius();
}

/// The body alone with what stands around it: object 0 is the body.
void CopyColumn(const Scene& scene, std::int32_t objectId, Vector place, Scene& column) {
    std::int32_t count = 1;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        count += id != objectId && IsObstacle(scene.objects[id]) ? 1 : 0;
    }
    column.AddObjects(count);
    scene.objects[objectId].CopyTo(column.objects[0]);
    column.objects[0].groupParent = -1;
    std::int32_t next = 1;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& obstacle = scene.objects[id];
        if (id == objectId || !IsObstacle(obstacle)) {
            continue;
        }
        Object& copy = column.objects[next++];
        if (obstacle.collider == nullptr) {
            CopyNear(obstacle, place, copy);
            continue;
        }
        // Another body counts as a cylinder about its centre, and stays where it begins.
        copy.ResizeFaces(0);
        copy.SetVertex(CentreOf(obstacle), 0);
        copy.name = obstacle.name;
        copy.MakeCollider();
    }
}

/// Looks for what the body stands in: triangles within its ellipsoid.
void FindObstacle(const Scene& column, Drop& drop) {
    const Vector radii = column.objects[0].collider->radii;
    const Vector centre = drop.start / radii;
    float least = 0.9f;  // touching is no fault
    for (std::int32_t id = 1; id < column.objectCount; id++) {
        const Object& obstacle = column.objects[id];
        for (std::int32_t corner = 0; corner < obstacle.faceValueCount; corner += 3) {
            const Vector a = CornerOf(obstacle, corner) / radii;
            const Vector b = CornerOf(obstacle, corner + 1) / radii;
            const Vector c = CornerOf(obstacle, corner + 2) / radii;
            Vector normal = (b - a).Cross(c - a);
            normal.Normalise();
            const float height = (centre - a).Dot(normal);
            if (!(std::fabs(height) < least)) {
                continue;
            }
            const Vector foot = centre - normal * height;
            const Vector nearest =
                foot.IsPointInTriangle(a, b, c) ? foot : centre.ClosestPointOnTriangleEdges(a, b, c);
            const float distance = (centre - nearest).Length();
            if (distance < least) {
                least = distance;
                drop.obstacle = obstacle.name;
                drop.depth = 1.0f - distance;
            }
        }
    }
}

/// Twice the area of the triangle as seen from above, negative if its corners run clockwise.
float AreaFromAbove(Vector a, Vector b, Vector c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Whether the point lies straight above or below the triangle, its border included.
bool IsAboveOrBelow(Vector point, Vector a, Vector b, Vector c) {
    const auto [least, most] =
        std::minmax({AreaFromAbove(a, b, point), AreaFromAbove(b, c, point), AreaFromAbove(c, a, point)});
    return least >= 0.0f || most <= 0.0f;
}

/// Looks at the first triangles straight below the start: whether they are seen from below only.
void FindTurnedFloor(const Scene& column, Drop& drop) {
    float highest = -std::numeric_limits<float>::max();
    bool looksUp = false;
    for (std::int32_t id = 1; id < column.objectCount; id++) {
        const Object& obstacle = column.objects[id];
        for (std::int32_t corner = 0; corner < obstacle.faceValueCount; corner += 3) {
            const Vector a = CornerOf(obstacle, corner);
            const Vector b = CornerOf(obstacle, corner + 1);
            const Vector c = CornerOf(obstacle, corner + 2);
            const Vector normal = (b - a).Cross(c - a);
            const Vector start = drop.start;
            if (std::fabs(normal.z) < 0.5f * normal.Length() || !IsAboveOrBelow(start, a, b, c)) {
                continue;
            }
            const float height = a.z - ((start.x - a.x) * normal.x + (start.y - a.y) * normal.y) / normal.z;
            if (height < start.z && height > highest) {
                highest = height;
                looksUp = normal.z > 0.0f;
                drop.floor = obstacle.name;
            }
        }
    }
    if (looksUp) {
        drop.floor.clear();
    }
}

float LowestVertex(const Scene& column) {
    float lowest = CentreOf(column.objects[0]).z;
    for (std::int32_t id = 1; id < column.objectCount; id++) {
        const Object& obstacle = column.objects[id];
        for (std::int32_t i = 2; i < obstacle.vertexValueCount; i += 3) {
            lowest = std::min(lowest, obstacle.vertices[i]);
        }
    }
    return lowest;
}

}  // namespace

Drop DropBody(const Scene& scene, std::int32_t objectId, std::int64_t triangleBudget) {
    const Object& original = scene.objects[objectId];
    Drop drop;
    drop.start = CentreOf(original) + ShiftOf(original);
    Scene column;
    CopyColumn(scene, objectId, drop.start, column);
    FindObstacle(column, drop);
    FindTurnedFloor(column, drop);
    const float bottom = LowestVertex(column) - 2.0f * original.collider->radii.z;

    Object& body = column.objects[0];
    Vector before = drop.start;
    int still = 0;
    std::int64_t triangles = 1;
    for (std::int32_t id = 1; id < column.objectCount; id++) {
        triangles += column.objects[id].faceValueCount / 3;
    }
    const std::int64_t frames = std::clamp(triangleBudget / triangles, leastFrames, mostFrames);
    for (std::int64_t frame = 0; frame < frames && still < framesOfRest; frame++) {
        column.StepWorld();
        drop.rest = CentreOf(body);
        const bool isPlacing = frame == 0;
        still = !isPlacing && (drop.rest - before).Length() < stillness ? still + 1 : 0;
        before = drop.rest;
        const float slid = std::hypot(drop.rest.x - drop.start.x, drop.rest.y - drop.start.y);
        if (slid > columnReach - 2.0f * original.collider->radii.x) {
            break;  // at least it doesn't fall; what comes next was not copied
        }
        if (!(drop.rest.z > bottom)) {
            drop.fallsForEver = true;
            break;
        }
    }
    return drop;
}

#include "app/player_place.h"

#include <cassert>

#include "scene/scene.h"

namespace {

/// In the body's radii: one that stands on a floor or leans on a wall is a hundredth beyond 1.
constexpr float tooNear = 0.9f;

struct Triangle {
    Vector a, b, c;
};

Triangle TriangleOf(const Object& object, std::int32_t first) {
    Triangle triangle;
    object.GetVertex(triangle.a, object.faces[first]);
    object.GetVertex(triangle.b, object.faces[first + 1]);
    object.GetVertex(triangle.c, object.faces[first + 2]);
    return triangle;
}

/// How near the triangle comes to the place, in units of the radii.
float Nearness(const Triangle& triangle, Vector place, Vector radii) {
    const Vector a = (triangle.a - place) / radii;
    const Vector b = (triangle.b - place) / radii;
    const Vector c = (triangle.c - place) / radii;
    const Vector normal = (b - a).Cross(c - a);
    const Vector foot = normal * (a.Dot(normal) / normal.Dot(normal));
    return foot.IsPointInTriangle(a, b, c) ? foot.Length()
                                           : Vector().ClosestPointOnTriangleEdges(a, b, c).Length();
}

/// Twice the area of a, b, c as seen from above, with a sign.
float AreaFromAbove(Vector a, Vector b, Vector c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool IsBelow(const Triangle& triangle, Vector place) {
    const float area = AreaFromAbove(triangle.a, triangle.b, triangle.c);
    const float shareOfA = AreaFromAbove(place, triangle.b, triangle.c) / area;
    const float shareOfB = AreaFromAbove(triangle.a, place, triangle.c) / area;
    const float shareOfC = 1.0f - shareOfA - shareOfB;
    const float height = triangle.a.z * shareOfA + triangle.b.z * shareOfB + triangle.c.z * shareOfC;
    return shareOfA >= 0.0f && shareOfB >= 0.0f && shareOfC >= 0.0f && height < place.z;
}

}  // namespace

std::string PlaceFault(const Scene& scene, std::int32_t playerIndex) {
    assert(playerIndex >= 0 && playerIndex < scene.playerCount);
    const std::int32_t bodyIndex = scene.players[playerIndex].playerObject;
    if (bodyIndex < 0 || bodyIndex >= scene.objectCount || scene.objects[bodyIndex].collider == nullptr) {
        return {};
    }
    const Object& body = scene.objects[bodyIndex];
    Vector centre;
    body.GetVertex(centre, body.centreVertex);
    bool hasGround = body.physics == nullptr || body.physics->gravity == 0.0f;
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        if (i == bodyIndex || object.attributes[collidableAttribute] == 0) {
            continue;
        }
        for (std::int32_t first = 0; first + 2 < object.faceValueCount; first += 3) {
            const Triangle triangle = TriangleOf(object, first);
            if (Nearness(triangle, centre, body.collider->radii) < tooNear) {
                return "stands inside of " + object.name;
            }
            hasGround = hasGround || IsBelow(triangle, centre);
        }
    }
    return hasGround ? "" : "has nothing below";
}

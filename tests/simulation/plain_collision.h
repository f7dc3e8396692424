#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "simulation/test_world.h"

/// `Object::CollideWithObject` for a mesh in the plainest words, every step on every face. The engine's
/// version may leave out work, but never changes a bit of what this one records.
inline void PlainCollideWithMesh(Object& object, const Object& obstacle) {
    Collider& body = *object.collider;
    const Vector v = body.sweepVelocity;
    const Vector s = body.sweepOrigin;
    const Vector r = body.radii;
    const float travel = v.Length();
    Vector d = v;
    d.Normalise();

    const auto record = [&body, travel](float distance, Vector spherePoint, Vector contact) {
        if (distance <= 0.0f) {
            return;
        }
        if (distance > travel) {
            return;
        }
        if (body.foundCollision && body.nearestDistance <= distance) {
            return;
        }
        body.nearestDistance = distance;
        body.nearestSpherePoint = spherePoint;
        body.nearestContactPoint = contact;
        body.foundCollision = 1;
        body.airborne = 0;
    };

    const float apart = CentreOf(object).Distance(CentreOf(obstacle));
    if (obstacle.radius + travel + std::max({r.x, r.y, r.z}) <= apart) {
        return;
    }

    for (std::int32_t face = 0; face < obstacle.faceValueCount / 3; face++) {
        body.edgeContact = 0;
        const Vector a = VertexOf(obstacle, obstacle.faces[3 * face]) / r;
        const Vector b = VertexOf(obstacle, obstacle.faces[3 * face + 1]) / r;
        const Vector c = VertexOf(obstacle, obstacle.faces[3 * face + 2]) / r;
        const Vector centroid = (a + b + c) / 3.0f;
        const float faceRadius =
            std::max({centroid.Distance(a), centroid.Distance(b), centroid.Distance(c)});
        if (faceRadius + travel + 1.0f <= s.Distance(centroid)) {
            continue;
        }

        const Vector e1 = b - a;
        const Vector e2 = c - a;
        if (e1.IsZero() || e2.IsZero()) {
            continue;
        }
        Vector n = e1.Cross(e2);
        n.Normalise();
        if (n.Dot(d) > 1.0f) {
            continue;
        }

        const Vector p = s - n;
        const Vector ray = p.ClassifyPoint(a, n) == PlaneBehind ? n : d;
        float distance = p.IntersectRayPlane(ray, a, n);
        const Vector q = p + ray * distance;
        if (q.IsPointInTriangle(a, b, c)) {
            record(distance, p, q);
            continue;
        }

        body.edgeContact = 1;
        Vector e0;
        Vector eEnd;
        s.ClosestTriangleEdge(a, b, c, &e0, &eEnd);
        Vector edge = eEnd - e0;
        edge.Normalise();
        Vector m = edge.Cross(d);
        m.Normalise();
        Vector contact = e0;
        if (!m.IsZero()) {
            const Vector f = s.ProjectOntoPlane(m, e0);
            if (f.Distance(s) >= 0.99f) {
                continue;
            }
            contact = (f + v).ClosestPointOnSegment(e0, eEnd);
        }
        distance = contact.IntersectRaySphere(-d, s, 1.0f);
        record(distance, contact + (-d) * distance, contact);
    }
}

/// The same bits, or both not a number: which one is up to the compiler.
inline bool Same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

inline bool Same(Vector a, Vector b) {
    return Same(a.x, b.x) && Same(a.y, b.y) && Same(a.z, b.z);
}

inline bool Same(const Collider& a, const Collider& b) {
    return Same(a.sweepVelocity, b.sweepVelocity) && Same(a.sweepOrigin, b.sweepOrigin) &&
           Same(a.radii, b.radii) && Same(a.safePosition, b.safePosition) &&
           a.foundCollision == b.foundCollision && a.airborne == b.airborne &&
           a.edgeContact == b.edgeContact && Same(a.nearestDistance, b.nearestDistance) &&
           Same(a.nearestSpherePoint, b.nearestSpherePoint) &&
           Same(a.nearestContactPoint, b.nearestContactPoint) && a.recursionDepth == b.recursionDepth;
}

#pragma once

#include <cstdint>

#include "scene/object.h"

/// `Object::CollideWithObject` in the plainest words, every step on every face. The engine's version may
/// leave out work, but never changes a bit of what this one records.
inline void PlainCollideWithObject(Object& object, const Object& obstacle) {
    Collider& body = *object.collider;
    const Vector v = body.sweepVelocity;
    const Vector s = body.sweepOrigin;
    const Vector r = body.radii;
    const float travel = v.Length();
    Vector d = v;
    d.Normalise();

    const auto record = [&body, travel](float distance, Vector spherePoint, Vector contact) {
        if (distance <= 0.0f) return;
        if (distance > travel) return;
        if (body.foundCollision && body.nearestDistance <= distance) return;
        body.nearestDistance = distance;
        body.nearestSpherePoint = spherePoint;
        body.nearestContactPoint = contact;
        body.foundCollision = 1;
        body.airborne = 0;
    };
    const auto largest = [](float a, float b, float c) {
        float result = a;
        if (b > result) result = b;
        if (c > result) result = c;
        return result;
    };

    Vector obstacleCentre;
    obstacle.GetVertex(obstacleCentre, obstacle.centreVertex);

    if (obstacle.collider) {
        const Vector c = obstacleCentre / r;
        const Vector o = obstacle.collider->radii;
        float cylinderRadius = o.x / r.x;
        if (o.y / r.y > cylinderRadius) cylinderRadius = o.y / r.y;
        const float halfHeight = (r.z + o.z) / r.z;
        const float t = s.IntersectRayUprightCylinder(v, c, cylinderRadius, halfHeight);
        Vector toCentre = c - s;
        toCentre.Normalise();
        record(t, s + toCentre, s + d * t);
        return;
    }

    Vector centre;
    object.GetVertex(centre, object.centreVertex);
    if (obstacle.radius + travel + largest(r.x, r.y, r.z) <= centre.Distance(obstacleCentre)) return;

    for (std::int32_t face = 0; face < obstacle.faceValueCount / 3; face++) {
        body.edgeContact = 0;
        Vector a;
        Vector b;
        Vector c;
        obstacle.GetVertex(a, obstacle.faces[3 * face]);
        obstacle.GetVertex(b, obstacle.faces[3 * face + 1]);
        obstacle.GetVertex(c, obstacle.faces[3 * face + 2]);
        a = a / r;
        b = b / r;
        c = c / r;
        const Vector centroid = (a + b + c) / 3.0f;
        const float faceRadius = largest(centroid.Distance(a), centroid.Distance(b), centroid.Distance(c));
        if (faceRadius + travel + 1.0f <= s.Distance(centroid)) continue;

        const Vector e1 = b - a;
        const Vector e2 = c - a;
        if (e1.IsZero() || e2.IsZero()) continue;
        Vector n = e1.Cross(e2);
        n.Normalise();
        if (n.Dot(d) > 1.0f) continue;

        const Vector p = s - n;
        float distance;
        Vector q;
        if (p.ClassifyPoint(a, n) == PlaneBehind) {
            distance = p.IntersectRayPlane(n, a, n);
            q = p + n * distance;
        } else {
            distance = p.IntersectRayPlane(d, a, n);
            q = p + d * distance;
        }
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
            if (f.Distance(s) >= 0.99f) continue;
            const Vector g = f + v;
            contact = g.ClosestPointOnSegment(e0, eEnd);
        }
        distance = contact.IntersectRaySphere(-d, s, 1.0f);
        record(distance, contact + (-d) * distance, contact);
    }
}

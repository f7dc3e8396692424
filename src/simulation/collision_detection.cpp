#include <algorithm>
#include <cassert>
#include <cmath>
#include <numeric>

#include "scene/collider.h"
#include "scene/object.h"
#include "simulation/face_filter.h"
#include "simulation/face_index.h"

namespace {

/// A sphere whose path passes an edge at this distance or more clears it; a little less than its radius.
constexpr float edgeReach = 0.99f;

struct Contact {
    float distance = 0.0f;  ///< along the sweep
    Vector spherePoint;     ///< of the sphere at the start of the sweep
    Vector point;           ///< of the obstacle
};

/// A nearer contact than the one recorded so far; of two at the same distance the first one stands.
/// Comparisons with NaN are false, so a distance that is NaN is not turned away here.
bool IsNearer(const Collider& body, float distance, float travel) {
    return !(distance <= 0.0f) && !(distance > travel) &&
           !(body.foundCollision != 0 && body.nearestDistance <= distance);
}

void Record(Collider& body, const Contact& contact) {
    body.nearestDistance = contact.distance;
    body.nearestSpherePoint = contact.spherePoint;
    body.nearestContactPoint = contact.point;
    body.foundCollision = 1;
    body.airborne = 0;
}

/// The contact with the nearest edge of a face that the sphere doesn't meet in its middle.
/// @return false if the sphere's path passes clear of the edge
bool FindEdgeContact(const Collider& body, Vector a, Vector b, Vector c, Vector direction,
                     Contact& contact) {
    const Vector s = body.sweepOrigin;
    Vector start;
    Vector end;
    s.ClosestTriangleEdge(a, b, c, &start, &end);
    Vector edge = end - start;
    edge.Normalise();
    // The normal of the plane that holds the edge and the direction of travel, if the two span one.
    Vector m = edge.Cross(direction);
    m.Normalise();
    contact.point = start;
    if (!m.IsZero()) {
        const Vector foot = s.ProjectOntoPlane(m, start);
        if (foot.Distance(s) >= edgeReach) {
            return false;
        }
        contact.point = (foot + body.sweepVelocity).ClosestPointOnSegment(start, end);
    }
    contact.distance = contact.point.IntersectRaySphere(-direction, s, 1.0f);
    contact.spherePoint = contact.point + (-direction) * contact.distance;
    return true;
}

/// @param a,b,c in ellipsoid space
/// @param last takes all steps, since `edgeContact` stays as the last face leaves it
void CollideWithFace(Collider& body, Vector a, Vector b, Vector c, Vector direction, float travel,
                     bool last) {
    body.edgeContact = 0;
    const Vector s = body.sweepOrigin;
    const Vector centroid = (a + b + c) / 3.0f;
    const float faceRadius = std::max({centroid.Distance(a), centroid.Distance(b), centroid.Distance(c)});
    if (faceRadius + travel + 1.0f <= s.Distance(centroid)) {
        return;
    }
    const Vector e1 = b - a;
    const Vector e2 = c - a;
    if (e1.IsZero() || e2.IsZero()) {
        return;
    }
    Vector n = e1.Cross(e2);
    n.Normalise();
    if (n.Dot(direction) > 1.0f) {
        return;
    }
    // The point of the sphere that leads when the sphere moves against n, and where it meets the plane: on
    // its way or, if it is through already, at the foot of the perpendicular.
    Contact onFace;
    onFace.spherePoint = s - n;
    const bool through = onFace.spherePoint.ClassifyPoint(a, n) == PlaneBehind;
    const Vector ray = through ? n : direction;
    onFace.distance = onFace.spherePoint.IntersectRayPlane(ray, a, n);
    onFace.point = onFace.spherePoint + ray * onFace.distance;

    // The test of the triangle costs most, so it comes last and only where it decides.
    const bool faceCounts = IsNearer(body, onFace.distance, travel);
    const bool asked = faceCounts || last;
    if (asked && onFace.point.IsPointInTriangle(a, b, c)) {
        if (faceCounts) {
            Record(body, onFace);
        }
        return;
    }
    body.edgeContact = 1;
    Contact onEdge;
    if (!FindEdgeContact(body, a, b, c, direction, onEdge) || !IsNearer(body, onEdge.distance, travel)) {
        return;
    }
    if (asked || !onFace.point.IsPointInTriangle(a, b, c)) {
        Record(body, onEdge);
    }
}

void CollideWithMesh(const Object& object, const Object& obstacle) {
    Collider& body = *object.collider;
    const Vector radii = body.radii;
    const float travel = body.sweepVelocity.Length();
    Vector centre;
    Vector obstacleCentre;
    object.GetVertex(centre, object.centreVertex);
    obstacle.GetVertex(obstacleCentre, obstacle.centreVertex);
    // Travel is a length of ellipsoid space among world lengths.
    const float limit = obstacle.radius + travel + std::max({radii.x, radii.y, radii.z});
    if (limit <= centre.Distance(obstacleCentre)) {
        return;
    }
    Vector direction = body.sweepVelocity;
    direction.Normalise();
    FaceFilter filter(body, travel);
    const float* vertices = obstacle.vertices.get();
    const std::int32_t* faces = obstacle.faces.get();
    const std::int32_t faceCount = obstacle.faceValueCount / 3;
    FaceIndex* const index = FaceIndex::Of(obstacle);
    IdMarks* const candidates = index == nullptr ? nullptr : index->FindCandidates(obstacle, body, travel);
    std::int32_t ids[FaceFilter::batchSize];
    std::int32_t next = 0;
    const auto take = [&] {
        if (candidates != nullptr) {
            return candidates->Take(ids, FaceFilter::batchSize);
        }
        const std::int32_t count = std::min(FaceFilter::batchSize, faceCount - next);
        std::iota(ids, ids + count, next);
        next += count;
        return count;
    };
    while (const std::int32_t count = take()) {
        filter.Load(vertices, faces, ids, count);
        for (std::int32_t i = 0; i < count; i++) {
            const bool last = ids[i] == faceCount - 1;
            if (last || (filter.far[i] == 0 && !filter.CantTouch(i))) {
                CollideWithFace(body, filter.Corner(i, 0) / radii, filter.Corner(i, 1) / radii,
                                filter.Corner(i, 2) / radii, direction, travel, last);
            }
        }
    }
}

/// Another moving body: an upright cylinder of which only the wall stops, and only from outside.
void CollideWithBody(const Object& object, const Object& obstacle) {
    Collider& body = *object.collider;
    const Vector radii = body.radii;
    const Vector obstacleRadii = obstacle.collider->radii;
    const Vector s = body.sweepOrigin;
    Vector centre;
    obstacle.GetVertex(centre, obstacle.centreVertex);
    centre = centre / radii;
    const float cylinderRadius = std::max(obstacleRadii.x / radii.x, obstacleRadii.y / radii.y);
    const float halfHeight = (radii.z + obstacleRadii.z) / radii.z;
    const float distance =
        s.IntersectRayUprightCylinder(body.sweepVelocity, centre, cylinderRadius, halfHeight);
    if (!IsNearer(body, distance, body.sweepVelocity.Length())) {
        return;
    }
    Vector toCentre = centre - s;
    toCentre.Normalise();
    Vector direction = body.sweepVelocity;
    direction.Normalise();
    Record(body, {distance, s + toCentre, s + direction * distance});
}

}  // namespace

void Object::CollideWithObject(const Object& obstacle) {
    assert(collider != nullptr);
    if (obstacle.collider != nullptr) {
        CollideWithBody(*this, obstacle);
    } else {
        CollideWithMesh(*this, obstacle);
    }
}

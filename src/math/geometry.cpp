#include <cmath>
#include <initializer_list>
#include <limits>

#include "math/trigonometry.h"
#include "math/vector.h"

namespace {

constexpr float planeTolerance = 0.01f;

/// Sums of angles around a point; the value is this literal and not the nearest one to two pi.
constexpr float fullCircle = 6.283185307178f;
constexpr float angleTolerance = 0.01f;

Vector Flat(Vector v) {
    return Vector(v.x, v.y, 0.0f);
}

float AngleBetween(Vector a, Vector b) {
    float cosine = a.Dot(b);
    if (cosine < -1.0f) {
        cosine = -1.0f;
    }
    if (cosine > 1.0f) {
        cosine = 1.0f;
    }
    return ArcCosine(cosine);
}

}  // namespace

int Vector::ClassifyPoint(Vector planeOrigin, Vector planeNormal) const {
    const float d = (planeOrigin - *this).Dot(planeNormal);
    if (d < -planeTolerance) {
        return PlaneInFront;
    }
    if (d > planeTolerance) {
        return PlaneBehind;
    }
    return PlaneOn;
}

float Vector::IntersectRayPlane(Vector rayVector, Vector planeOrigin, Vector planeNormal) const {
    const float planeD = -planeNormal.Dot(planeOrigin);
    const float numerator = planeNormal.Dot(*this) + planeD;
    const float denominator = planeNormal.Dot(rayVector);
    if (denominator == 0.0f) {
        return -1.0f;
    }
    return -(numerator / denominator);
}

float Vector::IntersectRaySphere(Vector rayVector, Vector sphereCentre, float radius) const {
    const Vector toCentre = sphereCentre - *this;
    const float c = toCentre.Length();
    const float v = toCentre.Dot(rayVector);
    const float d = radius * radius - (c * c - v * v);
    if (d < 0.0f) {
        return -1.0f;
    }
    return v - std::sqrt(d);
}

float Vector::IntersectRayCircle(Vector rayVector, Vector circleCentre, float radius) const {
    Vector direction = Flat(rayVector);
    direction.Normalise();
    return Flat(*this).IntersectRaySphere(direction, Flat(circleCentre), radius);
}

bool Vector::IntersectRayCylinder(Vector rayVector, Vector base, Vector axis, float radius, float& tIn,
                                  float& tOut) const {
    const Vector fromBase = *this - base;
    Vector n = rayVector.Cross(axis);
    const float nLength = n.Length();
    if (nLength == 0.0f) {
        const float d = fromBase.Dot(axis);
        const Vector fromAxis = fromBase - axis * d;
        tIn = -std::numeric_limits<float>::infinity();
        tOut = std::numeric_limits<float>::infinity();
        return fromAxis.Length() <= radius;
    }
    n.Normalise();
    const float d = std::fabs(fromBase.Dot(n));
    if (d > radius) {
        return false;
    }
    Vector o = fromBase.Cross(axis);
    const float t = -o.Dot(n) / nLength;
    o = n.Cross(axis);
    o.Normalise();
    const float s = std::fabs(std::sqrt(radius * radius - d * d) / rayVector.Dot(o));
    tIn = t - s;
    tOut = t + s;
    return true;
}

float Vector::IntersectRayUprightCylinder(Vector rayVector, Vector centre, float radius,
                                          float halfHeight) const {
    rayVector.Normalise();
    float tIn = 0.0f;
    float tOut = 0.0f;
    if (!IntersectRayCylinder(rayVector, centre, Vector(0.0f, 0.0f, 1.0f), radius, tIn, tOut)) {
        return -1.0f;
    }
    if (tIn < 0.0f) {
        return -1.0f;
    }
    return CylinderSpanHit(rayVector, centre, halfHeight, tIn, tOut) ? tIn : -1.0f;
}

bool Vector::CylinderSpanHit(Vector rayVector, Vector centre, float halfHeight, float tIn,
                             float tOut) const {
    const float zIn = z + rayVector.z * tIn;
    const float zOut = z + rayVector.z * tOut;
    const float top = centre.z + halfHeight;
    const float bottom = centre.z - halfHeight;
    if (zIn > top && zOut > top) {
        return false;
    }
    return !(zIn < bottom && zOut < bottom);
}

bool Vector::ClipRayToPlanes(Vector rayVector, const float (&plane1)[4], const float (&plane2)[4],
                             float& tIn, float& tOut, int& surfaceIn, int& surfaceOut) const {
    surfaceIn = 0;
    surfaceOut = 0;
    float in = tIn;
    float out = tOut;
    int number = 0;
    for (const auto& plane : {plane1, plane2}) {
        number++;
        const Vector normal(plane[0], plane[1], plane[2]);
        const float dc = normal.Dot(rayVector);
        const float dw = normal.Dot(*this) + plane[3];
        if (dc == 0.0f) {
            if (dw >= 0.0f) {
                return false;
            }
            continue;
        }
        const float t = -dw / dc;
        const bool inside = t > in && t < out;
        if (dc < 0.0f) {
            if (t > out) {
                return false;
            }
            if (inside) {
                in = t;
                surfaceIn = number;
            }
        } else {
            if (t < in) {
                return false;
            }
            if (inside) {
                out = t;
                surfaceOut = number;
            }
        }
    }
    tIn = in;
    tOut = out;
    return in < out;
}

bool Vector::IsPointInTriangle(Vector a, Vector b, Vector c) const {
    Vector fromA = *this - a;
    Vector fromB = *this - b;
    Vector fromC = *this - c;
    fromA.Normalise();
    fromB.Normalise();
    fromC.Normalise();
    const float sum = AngleBetween(fromB, fromC) + AngleBetween(fromC, fromA) + AngleBetween(fromA, fromB);
    return std::fabs(sum - fullCircle) <= angleTolerance;
}

Vector Vector::ClosestPointOnSegment(Vector a, Vector b) const {
    const Vector c = *this - a;
    Vector direction = b - a;
    const float length = direction.Length();
    direction.Normalise();
    const float t = direction.Dot(c);
    if (t < 0.0f) {
        return a;
    }
    if (t <= length) {
        return a + direction * t;
    }
    return b;
}

Vector Vector::ClosestPointOnTriangleEdges(Vector a, Vector b, Vector c) const {
    Vector nearest = ClosestPointOnSegment(a, b);
    float distance = Distance(nearest);
    for (const Vector candidate : {ClosestPointOnSegment(b, c), ClosestPointOnSegment(c, a)}) {
        const float candidateDistance = Distance(candidate);
        if (candidateDistance < distance) {
            nearest = candidate;
            distance = candidateDistance;
        }
    }
    return nearest;
}

void Vector::ClosestTriangleEdge(Vector a, Vector b, Vector c, Vector* edgeStart, Vector* edgeEnd) const {
    *edgeStart = a;
    *edgeEnd = b;
    float distance = Distance(ClosestPointOnSegment(a, b));
    const float distanceBC = Distance(ClosestPointOnSegment(b, c));
    if (distanceBC < distance) {
        *edgeStart = b;
        *edgeEnd = c;
        distance = distanceBC;
    }
    if (Distance(ClosestPointOnSegment(c, a)) < distance) {
        *edgeStart = c;
        *edgeEnd = a;
    }
}

Vector Vector::ProjectOntoPlane(Vector planeNormal, Vector planeOrigin) const {
    const float planeD = -planeOrigin.Dot(planeNormal);
    const float distance = std::fabs(Dot(planeNormal) + planeD) / planeNormal.Length();
    return *this + planeNormal * distance;
}

bool Vector::IsWithinDistance(Vector other, float limit) const {
    return (other - *this).Length() <= limit;
}

bool Vector::IsWithinDistanceXY(Vector other, float limit) const {
    return Flat(*this).IsWithinDistance(Flat(other), limit);
}

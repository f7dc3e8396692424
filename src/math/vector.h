#pragma once

#include <cmath>

/// Where a point lies against a plane.
inline constexpr int PlaneBehind = 1;    ///< on the side the normal points away from
inline constexpr int PlaneInFront = 16;  ///< on the side the normal points to
inline constexpr int PlaneOn = 256;      ///< within 0.01 of it, limits included

/// Three floats: a position, a direction, a size. Never normalised by itself; a length of exactly 0.0
/// is a legal value everywhere. Every operation rounds to single precision, in the order written.
struct Vector {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;  ///< up in the world

    Vector() = default;
    Vector(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}
    /// All three components take the value.
    Vector& operator=(float value);
    Vector& operator=(int value);

    float Length() const;
    /// A length of exactly 0.0 leaves the vector as it is.
    void Normalise();
    /// Keeps the direction; a negative length reverses it. A current length of exactly 0.0 leaves the
    /// vector as it is.
    void SetLength(float length);
    float Distance(Vector other) const;
    /// Exact, without a tolerance; negative zero counts as zero.
    bool IsZero() const;
    /// Right-handed: (1, 0, 0) x (0, 1, 0) is (0, 0, 1).
    Vector Cross(Vector other) const;
    float Dot(Vector other) const;

    // Plane and sphere geometry, in math/geometry.cpp: this vector is the point under test or the
    // origin of the ray. A ray operation that returns a distance returns -1.0 for a miss; since other
    // negative values can come too, a caller that wants a hit ahead tests for more than 0.0.

    /// `PlaneBehind`, `PlaneInFront` or `PlaneOn`. The tolerance of 0.01 is a distance only for a
    /// normal of unit length.
    int ClassifyPoint(Vector planeOrigin, Vector planeNormal) const;
    /// @return t such that this + rayVector * t lies in the plane, of either sign; -1.0 if parallel.
    float IntersectRayPlane(Vector rayVector, Vector planeOrigin, Vector planeNormal) const;
    /// @param rayVector of unit length
    /// @return distance to the first crossing of the whole line, negative if that lies behind the origin
    /// (from inside the sphere too); -1.0 if the line misses.
    float IntersectRaySphere(Vector rayVector, Vector sphereCentre, float radius) const;
    /// As `IntersectRaySphere`, in the plane z = 0; the vector may be of any length.
    float IntersectRayCircle(Vector rayVector, Vector circleCentre, float radius) const;
    /// The line against an infinite cylinder.
    /// @param axis of unit length
    /// @param tIn,tOut entry and exit in lengths of rayVector, infinities if the line runs along the
    /// axis inside the cylinder; untouched if a line at an angle to it misses.
    bool IntersectRayCylinder(Vector rayVector, Vector base, Vector axis, float radius, float& tIn,
                              float& tOut) const;
    /// A finite cylinder with its axis along z; its end caps are not tested.
    /// @param rayVector of any length
    /// @return distance to the wall, 0.0 or more; -1.0 for no hit and from inside.
    float IntersectRayUprightCylinder(Vector rayVector, Vector centre, float radius,
                                      float halfHeight) const;
    /// Whether the span of the ray from tIn to tOut overlaps the cylinder's height, ends included.
    bool CylinderSpanHit(Vector rayVector, Vector centre, float halfHeight, float tIn, float tOut) const;
    /// Narrows the span from tIn to tOut by two planes a, b, c, d; surfaceIn and surfaceOut take the
    /// number of the plane (1 or 2) that cut the entry or the exit, 0 if none did.
    /// @return false if nothing of the span remains.
    bool ClipRayToPlanes(Vector rayVector, const float (&plane1)[4], const float (&plane2)[4], float& tIn,
                         float& tOut, int& surfaceIn, int& surfaceOut) const;
    /// By the sum of angles; this point must lie in the triangle's plane. False at a corner, true on an
    /// edge away from the corners.
    bool IsPointInTriangle(Vector a, Vector b, Vector c) const;
    /// A segment of zero length gives a.
    Vector ClosestPointOnSegment(Vector a, Vector b) const;
    /// A tie keeps the earlier of the edges a-b, b-c, c-a.
    Vector ClosestPointOnTriangleEdges(Vector a, Vector b, Vector c) const;
    /// Writes the ends of the nearest edge: (a, b), (b, c) or (c, a). A tie keeps the earlier.
    void ClosestTriangleEdge(Vector a, Vector b, Vector c, Vector* edgeStart, Vector* edgeEnd) const;
    /// This point moved along the normal by its unsigned distance: the foot of the perpendicular for a
    /// point behind the plane; a point in front moves as far again away from it.
    Vector ProjectOntoPlane(Vector planeNormal, Vector planeOrigin) const;
    bool IsWithinDistance(Vector other, float limit) const;
    /// As `IsWithinDistance`, with both z taken as 0.
    bool IsWithinDistanceXY(Vector other, float limit) const;
};

static_assert(sizeof(Vector) == 3 * sizeof(float), "mesh arrays are read three floats at a time");

inline Vector operator+(Vector a, Vector b) {
    return Vector(a.x + b.x, a.y + b.y, a.z + b.z);
}
inline Vector operator-(Vector a, Vector b) {
    return Vector(a.x - b.x, a.y - b.y, a.z - b.z);
}
inline Vector operator*(Vector a, Vector b) {
    return Vector(a.x * b.x, a.y * b.y, a.z * b.z);
}
/// No guard against a zero divisor.
inline Vector operator/(Vector a, Vector b) {
    return Vector(a.x / b.x, a.y / b.y, a.z / b.z);
}
inline Vector operator*(Vector a, float s) {
    return Vector(a.x * s, a.y * s, a.z * s);
}
inline Vector operator/(Vector a, float s) {
    return Vector(a.x / s, a.y / s, a.z / s);
}
inline Vector operator-(Vector a) {
    return Vector(-a.x, -a.y, -a.z);
}

// In the header, since meshes take them a million times and collision does little else.

inline Vector& Vector::operator=(float value) {
    x = value;
    y = value;
    z = value;
    return *this;
}
inline Vector& Vector::operator=(int value) {
    return *this = static_cast<float>(value);
}
inline float Vector::Length() const {
    return std::sqrt(std::fabs(x * x + y * y + z * z));
}
inline bool Vector::IsZero() const {
    return x == 0.0f && y == 0.0f && z == 0.0f;
}
inline Vector Vector::Cross(Vector other) const {
    return Vector(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
}
inline float Vector::Dot(Vector other) const {
    return x * other.x + y * other.y + z * other.z;
}
inline void Vector::Normalise() {
    const float length = Length();
    if (length != 0.0f) {
        *this = *this / length;
    }
}
inline void Vector::SetLength(float length) {
    const float current = Length();
    if (current != 0.0f) {
        *this = *this * (length / current);
    }
}
inline float Vector::Distance(Vector other) const {
    return (other - *this).Length();
}

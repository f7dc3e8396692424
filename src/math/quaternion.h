#pragma once

#include "math/matrix.h"
#include "math/vector.h"

/// A rotation: the vector part first, the scalar last. Its sense of rotation is that of `Matrix`.
struct Quaternion {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;

    Quaternion() = default;
    Quaternion(float newX, float newY, float newZ, float newW) : x(newX), y(newY), z(newZ), w(newW) {}

    /// Angle in radians, 0 to two pi, NaN if w lies outside -1 to 1; without a rotation the axis is
    /// (0, 0, 1). It gives the axis opposite to the one that `SetAxisAngle` was given.
    void GetAxisAngle(float* angle, Vector* axis) const;
    void GetAxisAngle(float* angle, float* axisX, float* axisY, float* axisZ) const;
    /// `ToMatrix` of the result has the 3x3 block of `Matrix::Rotate` with the same arguments.
    /// @param angle radians
    /// @param axis of any length; a zero axis gives (0, 0, 0) for the vector part
    void SetAxisAngle(float angle, Vector axis);
    void SetAxisAngle(float angle, float axisX, float axisY, float axisZ);
    /// All in radians.
    void SetFromEuler(float yaw, float pitch, float roll);
    /// The inverse of `ToMatrix`, up to the sign of all four components.
    void SetFromMatrix(Matrix matrix);
    /// Writes all 16 elements, without a translation.
    void ToMatrix(Matrix& destination) const;
    /// Hamilton product a b.
    void Multiply(Quaternion a, Quaternion b);
    /// Spherical linear interpolation from a (t = 0) to b (t = 1), the shorter way; not normalised.
    void Slerp(Quaternion a, Quaternion b, float t);
};

inline Quaternion operator+(Quaternion a, Quaternion b) {
    return Quaternion(a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w);
}
inline Quaternion operator-(Quaternion a, Quaternion b) {
    return Quaternion(a.x - b.x, a.y - b.y, a.z - b.z, a.w - b.w);
}
inline Quaternion operator-(Quaternion a) {
    return Quaternion(-a.x, -a.y, -a.z, -a.w);
}

#pragma once

#include "math/vector.h"

/// A transform: 4x4 floats, row by row, for column vectors, with the translation at m[3], m[7], m[11]
/// and (0, 0, 0, 1) in the bottom row. Each `Translate`, `Rotate`, `Scale` and `Multiply` appends a
/// step to the end of the transform.
struct Matrix {
    float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    void SetIdentity();
    /// All 16 elements equal the identity's, by value and exactly: a negative zero is a zero.
    bool IsIdentity() const;
    /// As `IsIdentity`, but for the last column, so that a pure translation counts.
    bool IsIdentityRotation() const;
    /// Transposes the 3x3 block and negates the translation: the inverse of a matrix that is either a
    /// pure rotation or a pure translation, and of no other.
    void Invert();
    void CopyTo(Matrix& destination) const;
    void CopyTransposedTo(Matrix& destination) const;
    /// This becomes other x this: what was here happens first, `other` after it.
    void Multiply(Matrix other);
    /// Multiplies the 3x3 blocks alone, and adds the translations.
    void MultiplySeparate(Matrix other);
    void Translate(float x, float y, float z);
    /// Turns by minus the angle in the right-handed sense. The axis may have any length; an angle or a
    /// length of exactly 0.0 changes nothing.
    /// @param angle radians
    void Rotate(float angle, float x, float y, float z);
    void Scale(float x, float y, float z);
    /// No division by a fourth coordinate; the bottom row is not read.
    void TransformPoint(Vector& point) const;
};

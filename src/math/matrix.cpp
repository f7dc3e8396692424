#include "math/matrix.h"

#include <algorithm>
#include <utility>

#include "math/trigonometry.h"

namespace {

constexpr Matrix identity;

}  // namespace

void Matrix::SetIdentity() {
    *this = identity;
}

bool Matrix::IsIdentity() const {
    // Without an early end, for the compiler to compare several at once: the world step asks every object.
    int different = 0;
    for (int i = 0; i < 16; i++) {
        different |= m[i] != identity.m[i] ? 1 : 0;
    }
    return different == 0;
}

bool Matrix::IsIdentityRotation() const {
    for (int row = 0; row < 4; row++) {
        if (!std::equal(m + 4 * row, m + 4 * row + 3, identity.m + 4 * row)) {
            return false;
        }
    }
    return true;
}

void Matrix::Invert() {
    std::swap(m[1], m[4]);
    std::swap(m[2], m[8]);
    std::swap(m[6], m[9]);
    m[3] = -m[3];
    m[7] = -m[7];
    m[11] = -m[11];
}

void Matrix::CopyTo(Matrix& destination) const {
    destination = *this;
}

void Matrix::CopyTransposedTo(Matrix& destination) const {
    const Matrix source = *this;
    for (int row = 0; row < 4; row++) {
        for (int column = 0; column < 4; column++) {
            destination.m[4 * column + row] = source.m[4 * row + column];
        }
    }
}

void Matrix::Multiply(Matrix other) {
    const Matrix old = *this;
    for (int i = 0; i < 4; i++) {
        for (int j = 0; j < 4; j++) {
            m[4 * i + j] = other.m[4 * i] * old.m[j] + other.m[4 * i + 1] * old.m[4 + j] +
                           other.m[4 * i + 2] * old.m[8 + j] + other.m[4 * i + 3] * old.m[12 + j];
        }
    }
}

void Matrix::MultiplySeparate(Matrix other) {
    const Matrix old = *this;
    for (int i = 0; i < 3; i++) {
        for (int j = 0; j < 3; j++) {
            m[4 * i + j] = other.m[4 * i] * old.m[j] + other.m[4 * i + 1] * old.m[4 + j] +
                           other.m[4 * i + 2] * old.m[8 + j];
        }
        m[4 * i + 3] = other.m[4 * i + 3] + old.m[4 * i + 3];
    }
}

void Matrix::Translate(float x, float y, float z) {
    Matrix step;
    step.m[3] = x;
    step.m[7] = y;
    step.m[11] = z;
    Multiply(step);
}

void Matrix::Rotate(float angle, float x, float y, float z) {
    if (angle == 0.0f) {
        return;
    }
    const float s = Sine(angle);
    const float c = Cosine(angle);
    Vector axis(x, y, z);
    const float length = axis.Length();
    if (length == 0.0f) {
        return;
    }
    axis = axis / length;
    const float t = 1.0f - c;
    Matrix step;
    step.m[0] = axis.x * axis.x * t + c;
    step.m[1] = axis.x * axis.y * t + axis.z * s;
    step.m[2] = axis.x * axis.z * t - axis.y * s;
    step.m[4] = axis.x * axis.y * t - axis.z * s;
    step.m[5] = axis.y * axis.y * t + c;
    step.m[6] = axis.y * axis.z * t + axis.x * s;
    step.m[8] = axis.x * axis.z * t + axis.y * s;
    step.m[9] = axis.y * axis.z * t - axis.x * s;
    step.m[10] = axis.z * axis.z * t + c;
    Multiply(step);
}

void Matrix::Scale(float x, float y, float z) {
    Matrix step;
    step.m[0] = x;
    step.m[5] = y;
    step.m[10] = z;
    Multiply(step);
}

void Matrix::TransformPoint(Vector& point) const {
    const Vector p = point;
    point.x = m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3];
    point.y = m[4] * p.x + m[5] * p.y + m[6] * p.z + m[7];
    point.z = m[8] * p.x + m[9] * p.y + m[10] * p.z + m[11];
}

#include "math/quaternion.h"

#include <cmath>

#include "math/trigonometry.h"

void Quaternion::GetAxisAngle(float* angle, Vector* axis) const {
    *angle = 2.0f * ArcCosine(w);
    const float s = Sine(*angle * 0.5f);
    if (s == 0.0f) {
        *axis = Vector(0.0f, 0.0f, 1.0f);
    } else {
        *axis = Vector(x, y, z) * (1.0f / s);
    }
}

void Quaternion::GetAxisAngle(float* angle, float* axisX, float* axisY, float* axisZ) const {
    Vector axis;
    GetAxisAngle(angle, &axis);
    *axisX = axis.x;
    *axisY = axis.y;
    *axisZ = axis.z;
}

void Quaternion::SetAxisAngle(float angle, Vector axis) {
    axis.Normalise();
    w = Cosine(angle / 2.0f);
    // The minus gives the sense of rotation of `Matrix::Rotate`.
    const Vector part = axis * -Sine(angle / 2.0f);
    x = part.x;
    y = part.y;
    z = part.z;
}

void Quaternion::SetAxisAngle(float angle, float axisX, float axisY, float axisZ) {
    SetAxisAngle(angle, Vector(axisX, axisY, axisZ));
}

void Quaternion::SetFromEuler(float yaw, float pitch, float roll) {
    const float cy = Cosine(yaw / 2.0f);
    const float cp = Cosine(pitch / 2.0f);
    const float cr = Cosine(roll / 2.0f);
    const float sy = Sine(yaw / 2.0f);
    const float sp = Sine(pitch / 2.0f);
    const float sr = Sine(roll / 2.0f);
    w = cr * cp * cy + sr * sp * sy;
    x = sr * cp * cy - cr * sp * sy;
    y = cr * sp * cy + sr * cp * sy;
    z = cr * cp * sy - sr * sp * cy;
}

void Quaternion::SetFromMatrix(Matrix matrix) {
    Matrix transposed;
    matrix.CopyTransposedTo(transposed);
    const auto at = [&transposed](int row, int column) { return transposed.m[4 * row + column]; };

    const float trace = at(0, 0) + at(1, 1) + at(2, 2);
    if (trace > 0.0f) {
        float s = std::sqrt(trace + 1.0f);
        w = s / 2.0f;
        s = 0.5f / s;
        x = (at(1, 2) - at(2, 1)) * s;
        y = (at(2, 0) - at(0, 2)) * s;
        z = (at(0, 1) - at(1, 0)) * s;
        return;
    }
    int i = 0;
    if (at(1, 1) > at(0, 0)) {
        i = 1;
    }
    if (at(2, 2) > at(i, i)) {
        i = 2;
    }
    const int j = (i + 1) % 3;
    const int k = (i + 2) % 3;
    float s = std::sqrt(at(i, i) - (at(j, j) + at(k, k)) + 1.0f);
    float part[3];
    part[i] = s * 0.5f;
    if (s != 0.0f) {
        s = 0.5f / s;
    }
    w = (at(j, k) - at(k, j)) * s;
    part[j] = (at(i, j) + at(j, i)) * s;
    part[k] = (at(i, k) + at(k, i)) * s;
    x = part[0];
    y = part[1];
    z = part[2];
}

void Quaternion::ToMatrix(Matrix& destination) const {
    destination.SetIdentity();
    float* m = destination.m;
    m[0] = 1.0f - 2.0f * y * y - 2.0f * z * z;
    m[1] = 2.0f * x * y - 2.0f * w * z;
    m[2] = 2.0f * x * z + 2.0f * w * y;
    m[4] = 2.0f * x * y + 2.0f * w * z;
    m[5] = 1.0f - 2.0f * x * x - 2.0f * z * z;
    m[6] = 2.0f * y * z - 2.0f * w * x;
    m[8] = 2.0f * x * z - 2.0f * w * y;
    m[9] = 2.0f * y * z + 2.0f * w * x;
    m[10] = 1.0f - 2.0f * x * x - 2.0f * y * y;
}

void Quaternion::Multiply(Quaternion a, Quaternion b) {
    w = a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z;
    x = a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y;
    y = a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x;
    z = a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w;
}

void Quaternion::Slerp(Quaternion a, Quaternion b, float t) {
    float c = a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
    if (c < 0.0f) {
        c = -c;
        b = -b;
    }
    float weightA = 1.0f - t;
    float weightB = t;
    if (1.0f - c > 0.0f) {
        const float omega = ArcCosine(c);
        const float s = Sine(omega);
        weightA = Sine((1.0f - t) * omega) / s;
        weightB = Sine(t * omega) / s;
    }
    x = a.x * weightA + b.x * weightB;
    y = a.y * weightA + b.y * weightB;
    z = a.z * weightA + b.z * weightB;
    w = a.w * weightA + b.w * weightB;
}

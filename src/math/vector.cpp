#include "math/vector.h"

#include <cmath>

Vector& Vector::operator=(float value) {
    x = value;
    y = value;
    z = value;
    return *this;
}

Vector& Vector::operator=(int value) {
    return *this = static_cast<float>(value);
}

float Vector::Length() const {
    return std::sqrt(std::fabs(x * x + y * y + z * z));
}

void Vector::Normalise() {
    const float length = Length();
    if (length != 0.0f) {
        *this = *this / length;
    }
}

void Vector::SetLength(float length) {
    const float current = Length();
    if (current != 0.0f) {
        *this = *this * (length / current);
    }
}

float Vector::Distance(Vector other) const {
    return (other - *this).Length();
}

bool Vector::IsZero() const {
    return x == 0.0f && y == 0.0f && z == 0.0f;
}

Vector Vector::Cross(Vector other) const {
    return Vector(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
}

float Vector::Dot(Vector other) const {
    return x * other.x + y * other.y + z * other.z;
}

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

void Vector::SetLength(float length) {
    const float current = Length();
    if (current != 0.0f) {
        *this = *this * (length / current);
    }
}

bool Vector::IsZero() const {
    return x == 0.0f && y == 0.0f && z == 0.0f;
}

#pragma once

#include <gtest/gtest.h>

#include "math/matrix.h"

inline void ExpectNear(Vector actual, Vector expected, float tolerance = 1e-5f) {
    EXPECT_LE(actual.Distance(expected), tolerance)
        << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") instead of (" << expected.x << ", "
        << expected.y << ", " << expected.z << ")";
}

inline void ExpectNear(const Matrix& actual, const Matrix& expected) {
    for (int i = 0; i < 16; i++) {
        EXPECT_NEAR(actual.m[i], expected.m[i], 1e-6f) << i;
    }
}

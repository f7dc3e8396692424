#include "math/trigonometry.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

float FloatOf(std::uint32_t bits) {
    return std::bit_cast<float>(bits);
}

/// How many of some hundred thousand floats from all sizes and both signs aren't what the C library's
/// function in double precision says, rounded. That is not to be trusted where it lies in the middle
/// between two floats, which happens for one in some ten million.
int Differences(float (*ours)(float), double (*reference)(double), std::uint32_t end) {
    int different = 0;
    for (std::uint32_t bits = 0; bits < end; bits += 9973) {
        for (const float x : {FloatOf(bits), -FloatOf(bits)}) {
            different += ours(x) != static_cast<float>(reference(x)) ? 1 : 0;
        }
    }
    return different;
}

TEST(Trigonometry, GivesTheNearestFloatForAllSizes) {
    const std::uint32_t infinity = 0x7f800000;
    EXPECT_EQ(Differences(Sine, std::sin, infinity), 0);
    EXPECT_EQ(Differences(Cosine, std::cos, infinity), 0);
    EXPECT_EQ(Differences(ArcCosine, std::acos, 0x3f800001), 0);
}

TEST(Trigonometry, DecidesWhereTheValueIsNearlyInTheMiddleBetweenTwoFloats) {
    EXPECT_EQ(Sine(FloatOf(0x46199998)), FloatOf(0xbeb1fa5d));
    EXPECT_EQ(Sine(FloatOf(0xc6199998)), FloatOf(0x3eb1fa5d));
    EXPECT_EQ(Cosine(FloatOf(0x5922aa80)), FloatOf(0x3f08aebf));
    EXPECT_EQ(Cosine(FloatOf(0xdf18b878)), FloatOf(0x3f7f14bb));
    EXPECT_EQ(Cosine(FloatOf(0x6115cb11)), FloatOf(0x3f78142f));
    EXPECT_EQ(ArcCosine(FloatOf(0x328885a3)), FloatOf(0x3fc90fdb));
    EXPECT_EQ(ArcCosine(FloatOf(0x39826222)), FloatOf(0x3fc907b5));
}

TEST(Trigonometry, IsExactWhereItCanBe) {
    EXPECT_EQ(Sine(0.0f), 0.0f);
    EXPECT_TRUE(std::signbit(Sine(-0.0f)));
    EXPECT_EQ(Sine(std::numeric_limits<float>::denorm_min()), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(Cosine(0.0f), 1.0f);
    EXPECT_EQ(ArcCosine(1.0f), 0.0f);
    EXPECT_EQ(ArcCosine(0.0f), FloatOf(0x3fc90fdb)) << "pi / 2";
    EXPECT_EQ(ArcCosine(-1.0f), FloatOf(0x40490fdb)) << "pi";
    EXPECT_EQ(ArcCosine(-0.5f), FloatOf(0x40060a92)) << "2 pi / 3, at a seam of the method";
}

TEST(Trigonometry, HasTheSameSignOfNaNOnEveryProcessor) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float x : {Sine(infinity), Sine(-infinity), Cosine(infinity), Cosine(-infinity)}) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(x), 0xffc00000u);
    }
    for (const float x : {1.0000001f, -1.0000001f, infinity}) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(ArcCosine(x)), 0x7fc00000u);
    }
    for (const float x : {FloatOf(0x7fc12345), FloatOf(0xffc12345)}) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(Sine(x)), std::bit_cast<std::uint32_t>(x));
        EXPECT_EQ(std::bit_cast<std::uint32_t>(ArcCosine(x)), std::bit_cast<std::uint32_t>(x));
    }
}

}  // namespace

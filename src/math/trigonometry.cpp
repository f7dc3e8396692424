#include "math/trigonometry.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

// All steps are double operations that IEEE 754 defines to the last bit, in the order written, so that
// every processor takes the same. They are right to some 52 bits, and a float has 24: only where the true
// value is all but in the middle between two floats could the wrong one come out. A check of all floats has
// found where it does.

namespace {

constexpr double piHalf = 0x1.921fb54442d18p+0;
constexpr double piHalfRest = 0x1.1a62633145c07p-54;  // of pi / 2, beyond a double
/// The signs of NaN that come out of a calculation differ between processors: these are always the same
/// ones.
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// The nearest float. Where a double can't tell whether the value is below or above the middle between two
/// floats, rounding to the even one is wrong for these arguments alone.
float RoundResult(double value, float argument) {
    constexpr struct {
        std::uint32_t argument;
        float result;
    } exceptions[] = {{0x46199998, -0x1.63f4bap-2f}, {0xc6199998, 0x1.63f4bap-2f},  // of sines
                      {0x5922aa80, 0x1.115d7ep-1f},  {0xd922aa80, 0x1.115d7ep-1f},  // of cosines
                      {0x5f18b878, 0x1.fe2976p-1f},  {0xdf18b878, 0x1.fe2976p-1f},
                      {0x6115cb11, 0x1.f0285ep-1f},  {0xe115cb11, 0x1.f0285ep-1f},
                      {0x328885a3, 0x1.921fb6p+0f},  {0x39826222, 0x1.920f6ap+0f}};  // of arc cosines
    constexpr std::uint64_t belowFloat = 0x1fffffff;
    constexpr std::uint64_t middle = 0x10000000;
    if ((std::bit_cast<std::uint64_t>(value) & belowFloat) == middle) {
        for (const auto& exception : exceptions) {
            if (exception.argument == std::bit_cast<std::uint32_t>(argument)) {
                return exception.result;
            }
        }
    }
    return static_cast<float>(value);
}

/// An angle as quarter turns and a rest of at most an eighth turn, in radians.
struct ReducedAngle {
    std::uint32_t quarters;  ///< modulo 2^32, and only the last two bits count
    double rest;
};

/// The method of Payne and Hanek, for floats from 0.125 up: the binary digits of 2 / pi whose products with
/// the angle are whole turns are left out, and of the others 128 bits are taken.
ReducedAngle ReduceLarge(float angle) {
    constexpr std::uint32_t twoOverPi[] = {0,          0xa2f9836e, 0x4e441529, 0xfc2757d1, 0xf534ddc0,
                                           0xdb629599, 0x3c439041, 0xfe5163ab, 0xdebbc561};
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(angle);
    const std::uint32_t mantissa = (bits & 0x7fffff) | 0x800000;
    // The angle is mantissa * 2^(exponent - 150); the first digit taken, times that, is 2 * mantissa.
    const std::uint32_t firstDigit = (bits >> 23 & 0xff) - 120;
    std::uint32_t product[4];
    std::uint64_t carry = 0;
    for (std::uint32_t i = 4; i-- > 0;) {
        const std::uint32_t* words = &twoOverPi[firstDigit / 32 + i];
        const std::uint64_t pair = std::uint64_t{words[0]} << 32 | words[1];
        carry += mantissa * (pair << firstDigit % 32 >> 32);
        product[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    const std::uint64_t high = std::uint64_t{product[0]} << 32 | product[1];
    const std::uint64_t low = std::uint64_t{product[2]} << 32 | product[3];
    const std::uint64_t quarters = (high + (std::uint64_t{1} << 61)) >> 62;
    const double fraction = static_cast<double>(static_cast<std::int64_t>(high - (quarters << 62))) +
                            static_cast<double>(low) * 0x1p-64;
    return {static_cast<std::uint32_t>(quarters), fraction * 0x1p-62 * piHalf};
}

/// The method of Cody and Waite: pi / 2 in three parts, of which whole multiples of the first two have room
/// in a double.
ReducedAngle Reduce(float angle) {
    constexpr double mostReduced = 0x1p20;
    constexpr double wholeShift = 0x1.8p52;  // added to a number, it leaves whole ones in the last bits
    const double x = angle;
    if (std::fabs(x) >= mostReduced) {
        const ReducedAngle positive = ReduceLarge(std::fabs(angle));
        return angle > 0 ? positive : ReducedAngle{0 - positive.quarters, -positive.rest};
    }
    const double shifted = x * 0x1.45f306dc9c883p-1 + wholeShift;
    const double quarters = shifted - wholeShift;
    const double rest =
        x - quarters * 0x1.921fb544p+0 - quarters * 0x1.0b4611a6p-34 - quarters * 0x1.3198a2e037073p-69;
    return {static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(shifted)), rest};
}

// The polynomials are interpolated at Chebyshev's points, and wrong by at most 2^-55.

/// The sine or the cosine of up to an eighth turn, by one polynomial in the square with other coefficients:
/// which of both is wanted can't be foreseen, and a wrongly foreseen branch takes longer than all the rest.
float SineOf(ReducedAngle angle, float argument) {
    constexpr double coefficients[2][7] = {
        {-0x1.5555555555555p-3, 0x1.1111111111110p-7, -0x1.a01a01a01992fp-13, 0x1.71de3a545f836p-19,
         -0x1.ae645410e937bp-26, 0x1.61217d9252c03p-33, -0x1.ab16f5caa198ap-41},
        {-0.5, 0x1.5555555555555p-5, -0x1.6c16c16c16963p-10, 0x1.a01a019f4ddfdp-16, -0x1.27e4fa16cc2d1p-22,
         0x1.1eeb67d026ec6p-29, -0x1.907cd8ff5ede7p-37}};
    const std::uint32_t kind = angle.quarters & 1;
    const double* c = coefficients[kind];
    const double x = angle.rest;
    const double z = x * x;
    const double z2 = z * z;
    const double polynomial =
        (c[0] + z * c[1]) + z2 * ((c[2] + z * c[3]) + z2 * ((c[4] + z * c[5]) + z2 * c[6]));
    const double firstTerm[2] = {x, 1.0};
    const double sine = firstTerm[kind] + firstTerm[kind] * (z * polynomial);
    const double signs[2] = {1.0, -1.0};
    return RoundResult(sine * signs[angle.quarters >> 1 & 1], argument);
}

/// What the arc sine of the root of z has beyond that root, as a share of it; z up to 0.25.
double ArcSineExcess(double z) {
    const double z2 = z * z;
    const double z4 = z2 * z2;
    const double first = (0x1.5555555555556p-3 + z * 0x1.3333333332ecap-4) +
                         z2 * (0x1.6db6db6e31f13p-5 + z * 0x1.f1c71c1db0623p-6);
    const double second = (0x1.6e8bb1c8209a2p-6 + z * 0x1.1c4d35cf95421p-6) +
                          z2 * (0x1.c9cf07674736ap-7 + z * 0x1.782651caa6547p-7);
    const double third = (0x1.52420b04b37bep-7 + z * 0x1.65a9c4dfcf8b2p-8) +
                         z2 * (0x1.1d189408314eep-6 + z * -0x1.e6aaa8a0a04ccp-7);
    return z * (first + z4 * (second + z4 * (third + z4 * 0x1.d72b2bc8155f8p-6)));
}

}  // namespace

float Sine(float angle) {
    if (!std::isfinite(angle)) {
        return std::isnan(angle) ? angle + angle : -notANumber;
    }
    return angle == 0.0f ? angle : SineOf(Reduce(angle), angle);  // -0 keeps its sign
}

float Cosine(float angle) {
    if (!std::isfinite(angle)) {
        return std::isnan(angle) ? angle + angle : -notANumber;
    }
    ReducedAngle reduced = Reduce(angle);
    reduced.quarters++;
    return SineOf(reduced, angle);
}

float ArcCosine(float cosine) {
    const double x = cosine;
    const double size = std::fabs(x);
    if (!(size <= 1.0)) {
        return std::isnan(cosine) ? cosine + cosine : notANumber;
    }
    // The arc cosine is a quarter turn less the arc sine; near 1 and -1 it is twice the arc sine of half
    // the angle's sine.
    const std::uint32_t kind = (size > 0.5 ? 1u : 0u) + (x < -0.5 ? 1u : 0u);
    const double ofHalfAngle = (1.0 - size) * 0.5;
    const double squares[2] = {x * x, ofHalfAngle};
    const double sines[2] = {x, std::sqrt(ofHalfAngle)};
    const double z = squares[size > 0.5];
    const double sine = sines[size > 0.5];
    const double arcSine = sine + sine * ArcSineExcess(z);
    constexpr double starts[3] = {piHalf, 0.0, 2.0 * piHalf};
    constexpr double startRests[3] = {piHalfRest, 0.0, 2.0 * piHalfRest};
    constexpr double factors[3] = {-1.0, 2.0, -2.0};
    return RoundResult(starts[kind] + (startRests[kind] + factors[kind] * arcSine), cosine);
}

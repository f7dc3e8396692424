#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef ENGINE_HAS_MPFR
#include <mpfr.h>
#endif

#include "math/trigonometry.h"

// Compares sine, cosine or arc cosine of every float with the float that is nearest to the true value. That
// is the rounded result of the C library in double precision, but where this lies so near the middle
// between two floats that its own error matters: there MPFR decides, with 200 bits.
//   trigonometry_check sine|cosine|arccosine [FIRST END]     the floats' bits, hexadecimal

namespace {

struct Function {
    const char* name;
    float (*ours)(float);
    double (*reference)(double);
    float (*standard)(float);
#ifdef ENGINE_HAS_MPFR
    int (*exact)(mpfr_t, mpfr_srcptr, mpfr_rnd_t);
#endif
};

constexpr Function functions[] = {
#ifdef ENGINE_HAS_MPFR
    {"sine", Sine, std::sin, std::sin, mpfr_sin},
    {"cosine", Cosine, std::cos, std::cos, mpfr_cos},
    {"arccosine", ArcCosine, std::acos, std::acos, mpfr_acos},
#else
    {"sine", Sine, std::sin, std::sin},
    {"cosine", Cosine, std::cos, std::cos},
    {"arccosine", ArcCosine, std::acos, std::acos},
#endif
};

/// Within 16 units in the last place of the middle between two floats, or not a normal float.
bool IsHard(double value) {
    constexpr std::uint64_t margin = 16;
    constexpr std::uint64_t half = std::uint64_t{1} << 28;
    const std::uint64_t belowFloat = std::bit_cast<std::uint64_t>(value) & (2 * half - 1);
    return belowFloat - (half - margin) <= 2 * margin || std::fabs(value) < 0x1p-126;
}

struct Counts {
    std::uint64_t hard = 0;
    std::uint64_t different = 0;
    std::uint64_t standardDifferent = 0;
};

void Check(const Function& function, std::uint32_t bits, Counts& counts) {
    const auto x = std::bit_cast<float>(bits);
    const double reference = function.reference(x);
    auto wanted = static_cast<float>(reference);
    if (std::isnan(reference)) {
        wanted = function.standard(x);  // of which the sign counts, too
    } else if (IsHard(reference)) {
        counts.hard++;
#ifdef ENGINE_HAS_MPFR
        mpfr_t exact;
        mpfr_init2(exact, 200);
        mpfr_set_flt(exact, x, MPFR_RNDN);
        function.exact(exact, exact, MPFR_RNDN);
        wanted = mpfr_get_flt(exact, MPFR_RNDN);
        mpfr_clear(exact);
#else
        return;
#endif
    }
    const auto isOther = [wanted](float result) {
        return std::bit_cast<std::uint32_t>(result) != std::bit_cast<std::uint32_t>(wanted);
    };
    counts.standardDifferent += isOther(function.standard(x)) ? 1 : 0;
    if (isOther(function.ours(x)) && counts.different++ < 100) {
        std::printf("%s of %08x (%a): %a, not %a\n", function.name, bits, static_cast<double>(x),
                    static_cast<double>(function.ours(x)), static_cast<double>(wanted));
    }
}

}  // namespace

int main(int count, char** arguments) {
    for (const Function& function : functions) {
        if (count < 2 || std::strcmp(arguments[1], function.name) != 0) {
            continue;
        }
        const std::uint64_t first = count > 3 ? std::strtoull(arguments[2], nullptr, 16) : 0;
        const std::uint64_t end = count > 3 ? std::strtoull(arguments[3], nullptr, 16) : 1ull << 32;
        Counts counts;
        for (std::uint64_t bits = first; bits < end; bits++) {
            Check(function, static_cast<std::uint32_t>(bits), counts);
        }
#ifndef ENGINE_HAS_MPFR
        std::puts("Built without MPFR: the hard ones are left out.");
#endif
        std::printf(
            "%s: of %llu floats %llu differ; %llu are hard; of the C library's %llu are not the nearest\n",
            function.name, static_cast<unsigned long long>(end - first),
            static_cast<unsigned long long>(counts.different), static_cast<unsigned long long>(counts.hard),
            static_cast<unsigned long long>(counts.standardDifferent));
        return counts.different == 0 ? 0 : 1;
    }
    std::fputs("usage: trigonometry_check sine|cosine|arccosine [FIRST END]\n", stderr);
    return 2;
}

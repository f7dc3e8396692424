#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "math/trigonometry.h"

// Sine, cosine and arc cosine beside the C library's, each of random values.

namespace {

void trigonometry(benchmark::State& state, float (*function)(float), float range) {
    std::mt19937 generator(1);
    std::vector<float> values(100000);  // more than a processor learns the branches of
    for (float& value : values) {
        value = (static_cast<float>(generator() >> 8) * 0x1p-23f - 1.0f) * range;
    }
    for (auto _ : state) {
        for (const float value : values) {
            benchmark::DoNotOptimize(function(value));
        }
    }
    state.counters["per value"] = static_cast<double>(values.size());
}

BENCHMARK_CAPTURE(trigonometry, sine, Sine, 3.14f)->Name("sine");
BENCHMARK_CAPTURE(trigonometry, c_sine, std::sin, 3.14f)->Name("c_sine");
BENCHMARK_CAPTURE(trigonometry, cosine, Cosine, 3.14f)->Name("cosine");
BENCHMARK_CAPTURE(trigonometry, c_cosine, std::cos, 3.14f)->Name("c_cosine");
BENCHMARK_CAPTURE(trigonometry, sine_of_many_turns, Sine, 1000.0f)->Name("sine_of_many_turns");
BENCHMARK_CAPTURE(trigonometry, c_sine_of_many_turns, std::sin, 1000.0f)->Name("c_sine_of_many_turns");
BENCHMARK_CAPTURE(trigonometry, arc_cosine, ArcCosine, 1.0f)->Name("arc_cosine");
BENCHMARK_CAPTURE(trigonometry, c_arc_cosine, std::acos, 1.0f)->Name("c_arc_cosine");

}  // namespace

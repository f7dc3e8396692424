#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "allocations.h"
#include "paired_times.h"
#include "scene/scene.h"
#include "worlds.h"

// What a body's frame costs by the size of its world. One iteration is a frame of bodies that walk,
// in processor time.

namespace {

constexpr std::int64_t bodyCount = 64;
constexpr float restHeight = 5.2f;
/// Distance of the bodies from one another, world units.
constexpr float spacing = 20.0f;

/// To and fro, so that nobody leaves the ground.
void Walk(const std::vector<Physics*>& bodies, std::int64_t frame) {
    const float speed = frame / 100 % 2 == 0 ? 0.05f : -0.05f;
    for (Physics* body : bodies) {
        body->velocity.x = speed;
        body->velocity.y = -speed;
    }
}

/// @param change what else happens in each frame
template <typename Change>
void Play(benchmark::State& state, Scene& scene, Change change) {
    std::vector<Physics*> bodies;
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        if (scene.objects[i].physics != nullptr) {
            bodies.push_back(scene.objects[i].physics.get());
        }
    }
    std::int64_t frame = 0;
    const auto step = [&] {
        Walk(bodies, frame++);
        change();
        scene.StepWorld();
    };
    for (int i = 0; i < 100; i++) {  // until all have come down, and all indices are built
        step();
    }
    const std::int64_t before = AllocationCount();
    for (auto _ : state) {
        const double start = ThreadTime();
        step();
        state.SetIterationTime(ThreadTime() - start);
    }
    state.counters["allocations"] =
        static_cast<double>(AllocationCount() - before) / static_cast<double>(state.iterations());
    state.counters["per body"] = static_cast<double>(bodies.size());
}

void Nothing() {}

/// Ground of one size, made of more and more triangles: more and more of them are really near.
void FinerGround(benchmark::State& state, std::int64_t patches) {
    Scene scene;
    MakeWorld(scene, bodyCount, state.range(0), patches, restHeight, spacing);
    Play(state, scene, Nothing);
}

/// More and more ground of the same kind: as many triangles are near as before.
void LargerGround(benchmark::State& state, std::int64_t patches) {
    Scene scene;
    const float growth = std::sqrt(static_cast<float>(state.range(0)) / 1000.0f);
    MakeWorld(scene, bodyCount, state.range(0), patches, restHeight, spacing * growth);
    Play(state, scene, Nothing);
}

/// A ground of 10,000 triangles that moves every frame, so that nothing found out about it is good for
/// longer, by the number of bodies.
void ground_that_moves(benchmark::State& state) {
    Scene scene;
    MakeWorld(scene, state.range(0), 10000, 1, restHeight, spacing);
    float step = 0.001f;
    Play(state, scene, [&] {
        step = -step;
        scene.objects[0].transform.Translate(step, 0.0f, 0.0f);
    });
}

/// As many bodies on as much ground, and more and more boxes around.
void among_objects(benchmark::State& state) {
    Scene scene;
    MakeWorld(scene, bodyCount, 2000, 4, restHeight, spacing);
    AddBoxes(scene, state.range(0), 160.0f);
    Play(state, scene, Nothing);
}

void UpToAMillion(benchmark::internal::Benchmark* family) {
    family->RangeMultiplier(10)->Range(1000, 1000000)->UseManualTime();
}
BENCHMARK_CAPTURE(FinerGround, one, 1)->Name("finer_ground_in_one_mesh")->Apply(UpToAMillion);
BENCHMARK_CAPTURE(FinerGround, many, 100)->Name("finer_ground_in_100_meshes")->Apply(UpToAMillion);
BENCHMARK_CAPTURE(LargerGround, one, 1)->Name("larger_ground_in_one_mesh")->Apply(UpToAMillion);
BENCHMARK_CAPTURE(LargerGround, many, 100)->Name("larger_ground_in_100_meshes")->Apply(UpToAMillion);
BENCHMARK(ground_that_moves)->RangeMultiplier(2)->Range(1, 64)->UseManualTime();
BENCHMARK(among_objects)->RangeMultiplier(10)->Range(100, 100000)->UseManualTime();

}  // namespace

#include <benchmark/benchmark.h>

#include "paired_times.h"
#include "scene/scene.h"
#include "simulation/face_index.h"
#include "worlds.h"

// What the index over the faces of a mesh costs: time and memory.

namespace {

/// Building it, by the number of triangles, in processor time.
void build_face_index(benchmark::State& state) {
    Scene scene;
    scene.LoadMesh(WriteGround(state.range(0), 0.0f).mesh.c_str());
    const Object& mesh = scene.objects[0];
    Collider body;
    body.sweepVelocity = Vector(0.0f, 0.0f, -0.1f);
    body.sweepOrigin = Vector(100.0f, 100.0f, 1.0f);
    std::int64_t memory = 0;
    for (auto _ : state) {
        FaceIndex index;
        for (std::int32_t pass = 0; pass < FaceIndex::buildCost; pass++) {
            index.FindCandidates(mesh, body, 0.1f);
        }
        const double start = ThreadTime();
        benchmark::DoNotOptimize(index.FindCandidates(mesh, body, 0.1f));
        state.SetIterationTime(ThreadTime() - start);
        memory = index.Memory();
    }
    const auto faces = static_cast<double>(mesh.faceValueCount) / 3.0;
    state.counters["per face"] = faces;
    state.counters["bytes a face"] = static_cast<double>(memory) / faces;
}

BENCHMARK(build_face_index)->RangeMultiplier(10)->Range(1000, 1000000)->UseManualTime();

}  // namespace

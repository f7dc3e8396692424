#include <benchmark/benchmark.h>

#include "scene/scene.h"
#include "worlds.h"

// What is done to a mesh after it is read, by the number of its triangles.

namespace {

Object Mesh(std::int64_t triangles) {
    Scene scene;
    scene.LoadMesh(WriteGround(triangles, 8).mesh.c_str());
    return std::move(scene.objects[0]);
}

void compute_normals(benchmark::State& state) {
    Object object = Mesh(state.range(0));
    for (auto _ : state) {
        object.ComputeNormals();
        benchmark::ClobberMemory();
    }
}

void compute_radius(benchmark::State& state) {
    Object object = Mesh(state.range(0));
    for (auto _ : state) {
        object.ComputeRadius();
        benchmark::DoNotOptimize(object.radius);
    }
}

void reindex(benchmark::State& state) {
    const Object mesh = Mesh(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Object object;
        mesh.CopyTo(object);
        object.ResizeTexFaces(mesh.faceValueCount / 3);
        std::copy_n(mesh.faces.get(), mesh.faceValueCount, object.texFaces.get());
        state.ResumeTiming();
        object.ReindexByTexFaces();
        benchmark::ClobberMemory();
    }
}

void apply_rotation(benchmark::State& state) {
    Object object = Mesh(state.range(0));
    for (auto _ : state) {
        object.transform.Rotate(0.01f, 0, 0, 1);
        object.ApplyTransform();
        benchmark::ClobberMemory();
    }
}

BENCHMARK(compute_normals)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(compute_radius)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(reindex)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(apply_rotation)->RangeMultiplier(10)->Range(1000, 100000);

}  // namespace

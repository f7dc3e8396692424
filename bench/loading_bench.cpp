#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "allocations.h"
#include "scene/scene.h"
#include "worlds.h"

// Loading, each beside a plain read of the same files into fresh memory.

namespace {

std::string AttributePath(const std::string& path) {
    return path.substr(0, path.size() - 3) + "atr";
}

/// What no loader can do without: the bytes in memory of their own.
void ReadPlainly(const std::string& path) {
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(path));
    const auto bytes = std::make_unique_for_overwrite<char[]>(size);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    benchmark::DoNotOptimize(std::fread(bytes.get(), 1, size, file));
    std::fclose(file);
    benchmark::DoNotOptimize(bytes.get());
    benchmark::ClobberMemory();
}

void Load(benchmark::State& state, const std::string& path) {
    const auto fileSize = static_cast<double>(std::filesystem::file_size(path));
    for (auto _ : state) {
        const std::int64_t before = AllocatedBytes();
        Scene scene;
        benchmark::DoNotOptimize(scene.LoadMesh(path.c_str()));
        state.counters["memory_per_file_byte"] = static_cast<double>(AllocatedBytes() - before) / fileSize;
    }
}

void Read(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        ReadPlainly(path);
        ReadPlainly(AttributePath(path));
    }
}

void load_ground(benchmark::State& state) {
    Load(state, WriteGround(state.range(0)));
}
void read_ground(benchmark::State& state) {
    Read(state, WriteGround(state.range(0)));
}
void load_different_names(benchmark::State& state) {
    Load(state, WriteBoxes(state.range(0), false));
}
void read_different_names(benchmark::State& state) {
    Read(state, WriteBoxes(state.range(0), false));
}
void load_equal_names(benchmark::State& state) {
    Load(state, WriteBoxes(state.range(0), true));
}
void read_equal_names(benchmark::State& state) {
    Read(state, WriteBoxes(state.range(0), true));
}
// 1,000 objects; the size is the free text in each of their blocks, so up to 4 megabytes in all.
void load_attribute_text(benchmark::State& state) {
    Load(state, WriteBoxes(1000, false, state.range(0)));
}
void read_attribute_text(benchmark::State& state) {
    Read(state, WriteBoxes(1000, false, state.range(0)));
}

BENCHMARK(load_ground)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(read_ground)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(load_different_names)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(read_different_names)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(load_equal_names)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(read_equal_names)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(load_attribute_text)->RangeMultiplier(4)->Range(64, 4096);
BENCHMARK(read_attribute_text)->RangeMultiplier(4)->Range(64, 4096);

}  // namespace

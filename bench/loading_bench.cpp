#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "allocations.h"
#include "paired_times.h"
#include "scene/scene.h"
#include "worlds.h"

// Loading, each beside a plain read of the same two files. A scene is loaded once in the life of the
// program, into memory that it hasn't touched before; so is what is measured here: before each load and
// each plain read all free memory goes back to the system, and what they leave is released untimed.

namespace {

using Bytes = std::unique_ptr<char[]>;

bool ReadInto(const std::string& path, char* bytes, std::size_t size) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    const bool whole = std::fread(bytes, 1, size, file) == size;
    std::fclose(file);
    benchmark::ClobberMemory();
    return whole;
}

/// What no loader can do without: the bytes of the file in memory of their own.
Bytes ReadPlainly(const std::string& path) {
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(path));
    Bytes bytes = std::make_unique_for_overwrite<char[]>(size);
    ReadInto(path, bytes.get(), size);
    return bytes;
}

std::pair<Bytes, Bytes> ReadPlainly(const SceneFiles& files) {
    return {ReadPlainly(files.mesh), ReadPlainly(files.attributes)};
}

std::unique_ptr<Scene> LoadScene(const SceneFiles& files) {
    auto scene = std::make_unique<Scene>();
    scene->LoadMesh(files.mesh.c_str());
    return scene;
}

void Load(benchmark::State& state, const SceneFiles& files) {
    TimeInTurn(
        state, "plain reads", ThreadTime, [] { malloc_trim(0); }, [&] { return LoadScene(files); },
        [&] { return ReadPlainly(files); });
    const std::int64_t before = AllocatedBytes();
    const std::unique_ptr<Scene> scene = LoadScene(files);
    const std::int64_t memory = AllocatedBytes() - before;
    const auto fileBytes = static_cast<double>(std::filesystem::file_size(files.mesh) +
                                               std::filesystem::file_size(files.attributes));
    const auto triangles = static_cast<double>(files.triangles);
    state.counters["per object"] = static_cast<double>(files.objects);
    state.counters["per triangle"] = triangles;
    state.counters["bytes in memory a triangle"] = static_cast<double>(memory) / triangles;
    state.counters["bytes of the files a triangle"] = fileBytes / triangles;
}

/// How much of a plain read is taking memory into use: the same beside one into memory used before.
void read_textured_ground(benchmark::State& state) {
    const SceneFiles files = WriteGround(state.range(0), 8);
    const Bytes used = ReadPlainly(files.mesh);
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(files.mesh));
    TimeInTurn(
        state, "reads into used memory", ThreadTime, [] { malloc_trim(0); },
        [&] { return ReadPlainly(files.mesh); }, [&] { return ReadInto(files.mesh, used.get(), size); });
}

void Register(const std::string& name, SceneFiles (*write)(std::int64_t), int multiplier, std::int64_t from,
              std::int64_t to) {
    benchmark::RegisterBenchmark(("load_" + name).c_str(),
                                 [=](benchmark::State& state) { Load(state, write(state.range(0))); })
        ->RangeMultiplier(multiplier)
        ->Range(from, to)
        ->UseManualTime();
}

SceneFiles PlainGround(std::int64_t triangles) {
    return WriteGround(triangles, 0);
}
SceneFiles TexturedGround(std::int64_t triangles) {
    return WriteGround(triangles, 8);
}
SceneFiles DifferentNames(std::int64_t objects) {
    return WriteBoxes(objects, {});
}
SceneFiles EqualNames(std::int64_t objects) {
    return WriteBoxes(objects, {.equalNames = true});
}
SceneFiles WithoutBlocks(std::int64_t objects) {
    return WriteBoxes(objects, {.blocks = false});
}
SceneFiles WithoutTexture(std::int64_t objects) {
    return WriteBoxes(objects, {.textured = false});
}
/// 1,000 objects; the size is the free text in each of their blocks, so up to 4 megabytes in all.
SceneFiles AttributeText(std::int64_t fillerBytes) {
    return WriteBoxes(1000, {.fillerBytes = fillerBytes});
}

BENCHMARK(read_textured_ground)->RangeMultiplier(10)->Range(1000, 1000000)->UseManualTime();

[[maybe_unused]] const bool registered = [] {
    Register("plain_ground", PlainGround, 10, 1000, 1000000);
    Register("textured_ground", TexturedGround, 10, 1000, 1000000);
    Register("objects", DifferentNames, 10, 10, 10000);
    Register("objects_of_equal_name", EqualNames, 10, 10, 10000);
    Register("objects_without_blocks", WithoutBlocks, 10, 10, 10000);
    Register("objects_without_texture", WithoutTexture, 10, 10, 10000);
    Register("attribute_text", AttributeText, 4, 64, 4096);
    Register("keys", WriteKeyTracks, 10, 1000, 100000);
    return true;
}();

}  // namespace

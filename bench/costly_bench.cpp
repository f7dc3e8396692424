#include <benchmark/benchmark.h>

#include <memory>

#include "common/windowless.h"
#include "costly_files/costly_files.h"
#include "paired_times.h"
#include "support/temporary_folder.h"

// Loads of files that were made to be slow, one family each. The time of a byte has to stay what it is
// however large they are.

namespace {

void LoadCostly(benchmark::State& state, const CostlyFiles& files) {
    const TemporaryFolder folder;
    files.write(state.range(0));
    for (auto _ : state) {
        const auto world = std::make_unique<Windowless>();
        world->scene.AddPlayers(2);
        const double start = ThreadTime();
        files.load();
        state.SetIterationTime(ThreadTime() - start);
    }
    state.counters["per byte"] = static_cast<double>(state.range(0));
}

[[maybe_unused]] const bool registered = [] {
    for (const CostlyFiles& files : AllCostlyFiles()) {
        benchmark::RegisterBenchmark((std::string("costly_") + files.name).c_str(),
                                     [files](benchmark::State& state) { LoadCostly(state, files); })
            ->RangeMultiplier(2)
            ->Range(1 << 18, 1 << 20)
            ->UseManualTime();
    }
    return true;
}();

}  // namespace

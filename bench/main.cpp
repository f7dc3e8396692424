#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "results.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"

// Runs all benchmarks, their repetitions in random order, so that what is compared is measured under the
// same conditions, and prints the ratios at the end. Options are those of the benchmark library.

int main(int argumentCount, char** arguments) {
    std::vector<char*> all(arguments, arguments + argumentCount);
    char repetitions[] = "--benchmark_repetitions=5";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char shortRuns[] = "--benchmark_min_time=0.1";
    all.insert(all.begin() + 1, {repetitions, interleaving, shortRuns});  // the user's come later and win
    int count = static_cast<int>(all.size());
    benchmark::Initialize(&count, all.data());
    if (benchmark::ReportUnrecognizedArguments(count, all.data())) {
        return 2;
    }

    std::unique_ptr<VirtualDisplay> display;
    if (std::getenv("DISPLAY") == nullptr) {
        display = std::make_unique<VirtualDisplay>();
    }
    TemporaryFolder folder;
    ResultCollector results;
    benchmark::RunSpecifiedBenchmarks(&results);
    results.PrintTable();
    return 0;
}

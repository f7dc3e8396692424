#include "results.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "paired_times.h"

namespace {

void PrintTime(double nanoseconds) {
    if (nanoseconds < 1e4) {
        std::printf("%10.2f ns", nanoseconds);
    } else if (nanoseconds < 1e7) {
        std::printf("%10.2f us", nanoseconds / 1e3);
    } else {
        std::printf("%10.2f ms", nanoseconds / 1e6);
    }
}

}  // namespace

void ResultCollector::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        const std::string name = run.run_name.function_name;
        const std::size_t slash = name.find('/');
        const std::string size = slash == std::string::npos ? run.run_name.args : name.substr(slash + 1);
        Result& result = families[name.substr(0, slash)][std::atof(size.c_str())];
        result.times.push_back(run.GetAdjustedRealTime() *
                               (1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit)));
        for (const auto& [counter, value] : run.counters) {
            result.counters[counter].push_back(value.value);
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

void ResultCollector::PrintTable() const {
    std::printf("\nMedians of all repetitions, by family and size\n");
    for (const auto& [name, family] : families) {
        std::printf("\n%s\n", name.c_str());
        // Least squares through the logarithms: time grows like size to the power of the slope.
        double n = 0, sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
        for (const auto& [size, result] : family) {
            const double time = Median(result.times);
            std::printf("%10.0f", size);
            PrintTime(time);
            for (const auto& [counter, values] : result.counters) {
                if (counter.starts_with("per ")) {
                    PrintTime(time / Median(values));
                    std::printf(" %s", counter.c_str());
                } else {
                    std::printf("  %8.2f %s", Median(values), counter.c_str());
                }
            }
            std::printf("\n");
            if (size > 0.0) {
                const double x = std::log(size);
                const double y = std::log(time);
                n++;
                sumX += x;
                sumY += y;
                sumXX += x * x;
                sumXY += x * y;
            }
        }
        if (n >= 3) {
            std::printf("%10s time grows with exponent %.2f\n", "",
                        (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX));
        }
    }
}

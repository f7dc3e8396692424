#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

/// The middle one of some figures.
inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

/// Runs an action and its baseline in turn, so that both meet the same conditions, however these change
/// while a benchmark runs. The times are those of the action, the counter `ratioName` tells how many
/// times as long it takes. Destroying what the two return is not timed.
/// @param prepare comes before each of them, untimed
template <typename Prepare, typename Action, typename Baseline>
void TimeInTurn(benchmark::State& state, const std::string& ratioName, Prepare prepare, Action action,
                Baseline baseline) {
    const auto time = [&](auto& timed) {
        using Clock = std::chrono::steady_clock;
        prepare();
        const Clock::time_point start = Clock::now();
        auto result = timed();
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        benchmark::DoNotOptimize(&result);
        return seconds;
    };
    std::vector<double> actionTimes;
    std::vector<double> baselineTimes;
    for (auto _ : state) {
        baselineTimes.push_back(time(baseline));
        actionTimes.push_back(time(action));
        state.SetIterationTime(actionTimes.back());
    }
    state.counters[ratioName] = Median(actionTimes) / Median(baselineTimes);
}

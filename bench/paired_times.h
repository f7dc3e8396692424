#pragma once

#include <benchmark/benchmark.h>
#include <time.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

/// The middle one of some figures.
inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

/// A clock in seconds.
inline double WallTime() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}
/// The time that this thread has had a processor, in which other programs take no part.
inline double ThreadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Runs an action and its baseline in turn, so that both meet the same conditions, however these change
/// while a benchmark runs. The times are those of the action, the counter `ratioName` says how many
/// times as long it takes. Destroying what the two return is not timed.
/// @param now the clock to use
/// @param prepare comes before each of them, untimed
template <typename Prepare, typename Action, typename Baseline>
void TimeInTurn(benchmark::State& state, const std::string& ratioName, double (*now)(), Prepare prepare,
                Action action, Baseline baseline) {
    const auto time = [&](auto& timed) {
        prepare();
        const double start = now();
        auto result = timed();
        const double seconds = now() - start;
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

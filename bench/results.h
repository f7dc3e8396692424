#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Prints each run as usual and keeps the times, for the table at the end.
class ResultCollector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    /// Ratios of what belongs together, and the exponents by which costs grow.
    void PrintTable() const;

private:
    /// Median time of one iteration in nanoseconds; 0 if there was no such run.
    double Median(const std::string& name) const;
    void PrintRatio(const std::string& name, const std::string& baseline) const;
    void PrintGrowth(const std::string& family) const;

    std::map<std::string, std::vector<double>> times;  ///< nanoseconds by the name of the benchmark
    std::vector<std::string> names;                    ///< in the order of their first run
};

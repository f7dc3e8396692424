#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Prints each run as usual and keeps the figures, for the table at the end.
///
/// "load_objects/100" is size 100 of the family "load_objects". A counter called "per ..." is the number of
/// things that one iteration deals with; the table gives the time for one of them.
class ResultCollector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    /// By family and size: the medians, and the exponent by which the time of the family grows.
    void PrintTable() const;

private:
    struct Result {
        std::vector<double> times;  ///< nanoseconds of one iteration, one of each repetition
        std::map<std::string, std::vector<double>> counters;
    };
    using Family = std::map<double, Result>;  ///< by size, 0 for a benchmark without one

    std::map<std::string, Family> families;
};

#include "results.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

namespace {

/// "load_ground/1000" is size 1000 of the family "load_ground". Without a number the size is 0.
double Size(const std::string& name) {
    const std::size_t slash = name.find('/');
    return slash == std::string::npos ? 0.0 : std::atof(name.c_str() + slash + 1);
}

std::string Family(const std::string& name) {
    return name.substr(0, name.find('/'));
}

}  // namespace

void ResultCollector::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const std::string name =
            run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
        if (!times.contains(name)) names.push_back(name);
        times[name].push_back(run.GetAdjustedRealTime() *
                              (1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit)));
    }
    ConsoleReporter::ReportRuns(runs);
}

double ResultCollector::Median(const std::string& name) const {
    const auto found = times.find(name);
    if (found == times.end()) return 0.0;
    std::vector<double> sorted = found->second;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
}

void ResultCollector::PrintRatio(const std::string& name, const std::string& baseline) const {
    const double time = Median(name);
    const double other = Median(baseline);
    if (time > 0.0 && other > 0.0) {
        std::printf("%-34s %12.0f ns   %6.2f times %s\n", name.c_str(), time, time / other,
                    baseline.c_str());
    }
}

/// Least squares through the logarithms: time grows like size to the power of the slope.
void ResultCollector::PrintGrowth(const std::string& family) const {
    double n = 0, sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
    for (const std::string& name : names) {
        if (Family(name) != family || Size(name) <= 0.0) continue;
        const double x = std::log(Size(name));
        const double y = std::log(Median(name));
        n++;
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    if (n >= 3) {
        const double exponent = (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
        std::printf("%-34s grows with exponent %.2f\n", family.c_str(), exponent);
    }
}

void ResultCollector::PrintTable() const {
    std::printf("\nRatios, medians of all repetitions\n");
    // Whatever is called "load..." stands beside the read of the same bytes, a frame beside its bare calls.
    for (const std::string& name : names) {
        if (name.starts_with("load_")) PrintRatio(name, "read_" + name.substr(5));
        if (name.starts_with("frame_")) PrintRatio(name, "bare_" + name.substr(6));
    }
    std::printf("\nGrowth\n");
    std::set<std::string> done;
    for (const std::string& name : names) {
        if (done.insert(Family(name)).second) PrintGrowth(Family(name));
    }
}

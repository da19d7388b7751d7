#pragma once

#include <limits>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace quorvane {

/// Prints one table at the end. A benchmark called "decode/50/ours" belongs to the group "decode/50"; the first
/// registered of a group is its measure, 1.00, and a larger ratio is faster. Of several repetitions the fastest counts:
/// whatever else runs on the machine only adds time. Time is the CPU time of the measured thread, or of the process
/// or on the wall where the benchmark asks for that. A counter of a benchmark ("allocations") stands beside it.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Result {
        double nanoseconds = std::numeric_limits<double>::infinity();
        std::map<std::string, double> counters;
        std::string error;
    };
    struct Row {
        /// Where it stands among all benchmarks.
        std::int64_t family = 0;
        std::int64_t instance = 0;
        Result result;
    };

    void printGroup(const std::string& group) const;

    std::map<std::string, std::map<std::string, Row>> groups;
};

} // namespace quorvane

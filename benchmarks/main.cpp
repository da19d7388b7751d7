#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "benchmarks/support/RatioReporter.h"

/// Runs all benchmarks in turns, several times over, and prints each one's speed relative to the first of its group.
/// Takes the flags of Google Benchmark.
int main(int argc, char** argv) {
    std::vector<std::string> defaults{"--benchmark_repetitions=9", "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_min_time=0.02"};
    std::vector<char*> arguments{argv[0]};
    for (auto& argument : defaults) {
        arguments.push_back(argument.data());
    }
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);

    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    quorvane::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

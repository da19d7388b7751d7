#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "benchmarks/JSON/TaskList.h"
#include "benchmarks/support/Allocations.h"

namespace quorvane {

/// Runs @p operation, with the number of its allocations beside its time.
template <class Operation>
void measure(benchmark::State& state, Operation operation) {
    operation();
    const std::uint64_t before = allocationCount();
    operation();
    state.counters["allocations"] = static_cast<double>(allocationCount() - before);
    for (auto _ : state) {
        operation();
    }
}

/// The list that a benchmark works on, by its argument; made once.
inline const std::string& textFor(const benchmark::State& state) {
    return taskListText(static_cast<int>(state.range(0)));
}

/// Registers a benchmark for each length of list, so that "decode" and "ours" stand in the group
/// "decode a list of 50 tasks".
class Registration {
public:
    explicit Registration(std::string theVerb) : verb(std::move(theVerb)) {}

    void add(const std::string& name, void (*function)(benchmark::State&)) { entries.emplace_back(name, function); }
    void finish() const {
        for (const int count : {1, 50, 1000}) {
            for (const auto& [name, function] : entries) {
                const std::string full = verb + " a list of " + std::to_string(count) + " tasks/" + name;
                benchmark::RegisterBenchmark(full.c_str(), function)->Arg(count);
            }
        }
    }

private:
    std::string verb;
    std::vector<std::pair<std::string, void (*)(benchmark::State&)>> entries;
};

} // namespace quorvane

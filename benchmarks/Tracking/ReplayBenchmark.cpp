#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "benchmarks/support/Allocations.h"
#include "testing/TrackReader.h"
#include "tools/NamedOptions.h"
#include "tools/replay/ReplayRun.h"

namespace quorvane {
namespace {

using quorvane::testing::DecisionLog;
using quorvane::testing::TrackReader;
using tool::ReplayReaders;

/// A day, by the second.
constexpr std::int64_t fixes = 86'400;

/// A file that is gone with this object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& name)
        : path(std::filesystem::temp_directory_path() / (name + "-" + std::to_string(getpid()))) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    const std::filesystem::path path;
};

/// A recording of so many seconds of somebody who drives for ten minutes and stays for ten, again and again.
class Recording : public TemporaryFile {
public:
    explicit Recording(std::int64_t count) : TemporaryFile("quorvane-recording-" + std::to_string(count)) {
        constexpr std::int64_t start = 1'772'366'400;
        constexpr std::int64_t tenMinutes = 600;
        constexpr double metresASecond = 0.00013;
        std::ofstream file(path);
        double latitude = 46.05;
        for (std::int64_t i = 0; i < count; ++i) {
            const std::int64_t period = i / tenMinutes;
            latitude += period % 2 == 1 ? 0 : (period % 4 == 0 ? metresASecond : -metresASecond);
            char line[64];
            (void)std::snprintf(line, sizeof line, "%.6f,14.500000,%lld\n", latitude,
                                static_cast<long long>(start + i));
            file << line;
        }
    }
};

void rate(benchmark::State& state, std::int64_t count) {
    state.counters["fixes/s"] =
        benchmark::Counter(static_cast<double>(count), benchmark::Counter::kIsIterationInvariantRate);
}

void reading(benchmark::State& state) {
    const Recording recording(fixes);
    for (auto _ : state) {
        quorvane::testing::TrackError error;
        const auto reader = TrackReader::open(recording.path, error);
        while (const auto fix = reader->next()) {
            benchmark::DoNotOptimize(fix);
        }
    }
    rate(state, fixes);
}

void replay(const Recording& recording, const ReplayReaders& readers) {
    const tool::ReplayInput input{recording.path, tool::presets().front(), {}, nullptr, nullptr};
    benchmark::DoNotOptimize(tool::replay(input, readers, tool::GlobalOptions()));
}

void withoutLog(benchmark::State& state) {
    const Recording recording(fixes);
    for (auto _ : state) {
        replay(recording, {});
    }
    rate(state, fixes);
}

void withTextLog(benchmark::State& state) {
    const Recording recording(fixes);
    const TemporaryFile output("quorvane-replay.log");
    for (auto _ : state) {
        std::ofstream file(output.path, std::ios::binary | std::ios::trunc);
        ReplayReaders readers;
        readers.log = tool::ReplayLog{DecisionLog::Format::text, [&file](std::string_view line) { file << line; }};
        replay(recording, readers);
        file.close();
    }
    rate(state, fixes);
}

/// The most that a replay holds at a time.
void memory(benchmark::State& state, std::int64_t count) {
    const Recording recording(count);
    std::uint64_t peak = 0;
    for (auto _ : state) {
        startPeak();
        replay(recording, {});
        peak = std::max(peak, endPeak());
    }
    state.counters["peak KiB"] = static_cast<double>(peak) / 1024;
    rate(state, count);
}

void ofADay(benchmark::State& state) {
    memory(state, fixes);
}
void ofTenDays(benchmark::State& state) {
    memory(state, 10 * fixes);
}

BENCHMARK(reading)->Name("replay a day by the second/reading the recording alone")->Unit(benchmark::kMillisecond);
BENCHMARK(withoutLog)->Name("replay a day by the second/without a log")->Unit(benchmark::kMillisecond);
BENCHMARK(withTextLog)->Name("replay a day by the second/text log to a file")->Unit(benchmark::kMillisecond);
BENCHMARK(ofADay)->Name("memory of a replay/a day")->Iterations(1);
BENCHMARK(ofTenDays)->Name("memory of a replay/ten days")->Iterations(1);

} // namespace
} // namespace quorvane

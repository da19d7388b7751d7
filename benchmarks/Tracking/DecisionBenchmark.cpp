#include <array>
#include <chrono>

#include <benchmark/benchmark.h>

#include "Core/QVSettings.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/PreferencesStore.h"
#include "Tracking/QVLocationManager.h"
#include "testing/InstalledPlatform.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t fixCount = 4096;
constexpr platform::Date noon = quorvane::testing::SimulatedClock::start;

/// A fix every second of somebody who drives at some @p speed in degrees a second: 0.00013 is 14 metres.
std::array<platform::Location, fixCount> ride(double speed) {
    std::array<platform::Location, fixCount> fixes{};
    double latitude = 46.05;
    double longitude = 14.5;
    platform::Date time = noon;
    for (platform::Location& fix : fixes) {
        fix = {{latitude, longitude}, 5, 3, time};
        latitude += speed;
        longitude += speed / 3;
        time += 1s;
    }
    return fixes;
}

void distances(benchmark::State& state, double speed) {
    const auto fixes = ride(speed);
    std::size_t next = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fixes[next - 1].distance(fixes[next]));
        next = next + 1 < fixCount ? next + 1 : 1;
    }
}

/// Each fix is decided on, and everything that this posts to the main queue is run. The last sync is so recent that
/// none is due.
void pipeline(benchmark::State& state, double speed) {
    const auto fixes = ride(speed);
    const quorvane::testing::InstalledPlatform phone;
    phone->preferences().setString("quorvane_access_key", "key");
    phone->preferences().setBoolean("quorvane_background_tracking", true);
    phone->preferences().setDate("quorvane_last_sent_at", noon);
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    QVLocationManager& manager = QVLocationManager::shared();
    std::size_t next = 0;
    for (auto _ : state) {
        if (next == 0) {
            phone->preferences().setDate("quorvane_last_moved_at", noon);
        }
        manager.handleLocation(fixes[next], QVLocationSource::BACKGROUND_LOCATION);
        phone->runUntilIdle();
        next = (next + 1) % fixCount;
    }
}

void drivingDistances(benchmark::State& state) {
    distances(state, 0.00013);
}
void driving(benchmark::State& state) {
    pipeline(state, 0.00013);
}
void stayingDistances(benchmark::State& state) {
    distances(state, 1e-9);
}
void staying(benchmark::State& state) {
    pipeline(state, 1e-9);
}

BENCHMARK(drivingDistances)->Name("decide on a fix, driving/its distance computation");
BENCHMARK(driving)->Name("decide on a fix, driving/the whole pipeline");
BENCHMARK(stayingDistances)->Name("decide on a fix, staying/its distance computation");
BENCHMARK(staying)->Name("decide on a fix, staying/the whole pipeline");

} // namespace
} // namespace quorvane

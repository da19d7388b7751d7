#include <benchmark/benchmark.h>

#include "Tracking/QVTrackingService.h"
#include "testing/InstalledPlatform.h"

namespace quorvane {
namespace {

constexpr std::size_t placeCount = 1000;

/// Places some metres apart, with their fences.
struct Surroundings {
    explicit Surroundings(double latitude) {
        for (std::size_t i = 0; i < placeCount; ++i) {
            const auto place = std::make_shared<QVPlace>();
            place->_id = "place-" + std::to_string(i);
            place->name = "Place number " + std::to_string(i);
            place->location = std::make_shared<QVAddress>();
            place->location->coordinate = platform::Coordinate{latitude + 1e-6 * static_cast<double>(i), 14.5};
            fences.push_back(QVTrackingService::placeToFence(*place));
            first = first ? first : place;
        }
    }

    QVTrackingService::FenceList fences;
    std::shared_ptr<QVPlace> first;
};

const platform::Location fix{{46.05, 14.5}, 5};

/// What any answer must do at least: look at each fence once.
void looking(benchmark::State& state) {
    const Surroundings here(46.05);
    for (auto _ : state) {
        std::size_t length = 0;
        for (const auto& fence : here.fences) {
            length += fence->_description.size();
        }
        benchmark::DoNotOptimize(length);
    }
}

/// The same fences as before, so that every one of them is compared.
void comparing(benchmark::State& state) {
    const quorvane::testing::InstalledPlatform phone;
    const Surroundings before(46.05);
    const Surroundings now(46.05);
    QVTrackingService& service = QVTrackingService::shared();
    for (auto _ : state) {
        benchmark::DoNotOptimize(QVTrackingService::areFencesEqual(before.fences, now.fences));
        benchmark::DoNotOptimize(service.getEvents(fix, true, now.fences, now.first));
    }
}

BENCHMARK(looking)->Name("events among 1,000 places/looking at each fence");
BENCHMARK(comparing)->Name("events among 1,000 places/ours");

} // namespace
} // namespace quorvane

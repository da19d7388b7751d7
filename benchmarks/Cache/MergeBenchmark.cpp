#include <algorithm>
#include <random>

#include <benchmark/benchmark.h>

#include "Places/QVPlaceService.h"
#include "Search/PlaceSort.h"
#include "benchmarks/Cache/InstalledNative.h"
#include "benchmarks/Cache/Places.h"

namespace quorvane {

namespace {

const platform::Location origin{{46.0, 14.5}};
constexpr int radius = 20'000;

/// What a service sends, in no order: with the host's own it makes 10,000.
const QVPlaceList& found() {
    static const QVPlaceList list = [] {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> degrees(-0.1, 0.1);
        QVPlaceList made(10'000 - placeCount);
        for (auto& place : made) {
            place = std::make_shared<QVPlace>();
            place->location = std::make_shared<QVAddress>();
            place->location->coordinate = platform::Coordinate{46.0 + degrees(random), 14.5 + degrees(random)};
        }
        return made;
    }();
    return list;
}

double distanceOf(const PlacePointer& place) {
    return platform::distance(origin.coordinate, *place->location->coordinate);
}

template <class Merge>
void measure(benchmark::State& state, Merge merge) {
    for (auto _ : state) {
        state.PauseTiming();
        QVPlaceList list = found();
        state.ResumeTiming();
        merge(list);
        if (list.size() != 10'000) {
            state.SkipWithError("places are missing");
            break;
        }
    }
}

void plain(benchmark::State& state) {
    measure(state, [](QVPlaceList& list) {
        std::copy_if(places().begin(), places().end(), std::back_inserter(list),
                     [](const PlacePointer& place) { return distanceOf(place) <= radius; });
        std::stable_sort(list.begin(), list.end(),
                         [](const PlacePointer& a, const PlacePointer& b) { return distanceOf(a) < distanceOf(b); });
    });
}
BENCHMARK(plain)->Name("merge and sort 10,000 places/from a list, distances in the comparator");

void ours(benchmark::State& state) {
    const InstalledNative native;
    QVPlaceService::shared().create(places(), QVStorageType::LOCAL, [](auto&&...) {});
    measure(state, [](QVPlaceList& list) {
        QVPlaceService::shared().all(origin, radius, [&](QVStatus, const auto&, const auto& own) {
            list.insert(list.end(), own->begin(), own->end());
            sortByDistance(list, origin);
        });
    });
}
BENCHMARK(ours)->Name("merge and sort 10,000 places/ours, from the place store");

} // namespace

} // namespace quorvane

#include <algorithm>
#include <random>

#include <benchmark/benchmark.h>

#include "Search/PlaceSort.h"

namespace quorvane {

namespace {

const platform::Location origin{{46.05, 14.5}};

/// 10,000 places within some ten kilometres, in no order. The same ones each time.
const QVPlaceList& places() {
    static const QVPlaceList list = [] {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> degrees(-0.1, 0.1);
        QVPlaceList made(10'000);
        for (auto& place : made) {
            place = std::make_shared<QVPlace>();
            place->location = std::make_shared<QVAddress>();
            place->location->coordinate = platform::Coordinate{46.05 + degrees(random), 14.5 + degrees(random)};
        }
        return made;
    }();
    return list;
}

bool isNearer(const std::shared_ptr<QVPlace>& a, const std::shared_ptr<QVPlace>& b) {
    return a->location && a->location->coordinate && b->location && b->location->coordinate &&
           platform::distance(origin.coordinate, *a->location->coordinate) <
               platform::distance(origin.coordinate, *b->location->coordinate);
}

template <class Sort>
void measure(benchmark::State& state, Sort sort) {
    QVPlaceList list;
    for (auto _ : state) {
        state.PauseTiming();
        list = places();
        state.ResumeTiming();
        sort(list);
        benchmark::DoNotOptimize(list.data());
    }
}

void distancesInTheComparator(benchmark::State& state) {
    measure(state, [](QVPlaceList& list) { std::stable_sort(list.begin(), list.end(), isNearer); });
}
BENCHMARK(distancesInTheComparator)->Name("sort 10,000 places/distances in the comparator");

void ours(benchmark::State& state) {
    measure(state, [](QVPlaceList& list) { sortByDistance(list, origin); });
}
BENCHMARK(ours)->Name("sort 10,000 places/ours");

} // namespace

} // namespace quorvane

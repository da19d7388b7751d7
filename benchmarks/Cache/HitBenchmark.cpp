#include <chrono>
#include <list>
#include <mutex>
#include <unordered_map>

#include <benchmark/benchmark.h>

#include "benchmarks/Cache/InstalledNative.h"
#include "benchmarks/Cache/Places.h"

namespace quorvane {

namespace {

/// The least that can be done: a map with the ones used least recently at its end, under a mutex.
class BareMap {
public:
    struct Item {
        std::string key;
        PlacePointer value;
        std::chrono::system_clock::time_point expiry;
    };
    using Pointer = std::shared_ptr<Item>;

    void add(const std::string& key, PlacePointer value) {
        const std::lock_guard lock(mutex);
        items.push_front(std::make_shared<Item>(
            Item{key, std::move(value), std::chrono::system_clock::now() + std::chrono::hours(12)}));
        index[key] = items.begin();
    }

    Pointer find(const std::string& key) {
        const std::lock_guard lock(mutex);
        const auto found = index.find(key);
        if (found == index.end()) {
            return nullptr;
        }
        items.splice(items.begin(), items, found->second);
        return *found->second;
    }

private:
    std::mutex mutex;
    std::list<Pointer> items;
    std::unordered_map<std::string, std::list<Pointer>::iterator> index;
};

/// Keys in an order that has no pattern, each of them often.
const std::vector<std::string>& keys() {
    static const std::vector<std::string> order = [] {
        std::vector<std::string> made;
        for (std::size_t i = 0; i < 1024; ++i) {
            made.push_back(places()[i * 7919 % 1021 % placeCount]->_id);
        }
        return made;
    }();
    return order;
}

template <class Find>
void measure(benchmark::State& state, Find find) {
    std::size_t next = 0;
    for (auto _ : state) {
        auto found = find(keys()[next++ % 1024]);
        if (!found) {
            state.SkipWithError("missed");
            break;
        }
        benchmark::DoNotOptimize(found);
    }
}

void bare(benchmark::State& state) {
    BareMap map;
    for (const PlacePointer& place : places()) {
        map.add(place->_id, place);
    }
    measure(state, [&](const std::string& key) {
        auto found = map.find(key);
        return std::chrono::system_clock::now() < found->expiry ? found : nullptr;
    });
}
BENCHMARK(bare)->Name("hit in the cache/bare map, mutex and clock");

template <class Find>
void measureCache(benchmark::State& state, Find find) {
    const InstalledNative native;
    const auto cache = makePlaceCache();
    for (const PlacePointer& place : places()) {
        cache->add(place, place->_id);
    }
    measure(state, [&](const std::string& key) { return find(*cache, key); });
}

void hybrid(benchmark::State& state) {
    measureCache(state, [](PlaceCache& cache, const std::string& key) { return cache.hybridCache->entry(key); });
}
BENCHMARK(hybrid)->Name("hit in the cache/HybridCache");

void front(benchmark::State& state) {
    measureCache(state, [](PlaceCache& cache, const std::string& key) { return cache.entry(key); });
}
BENCHMARK(front)->Name("hit in the cache/through the synchronous queue");

} // namespace

} // namespace quorvane

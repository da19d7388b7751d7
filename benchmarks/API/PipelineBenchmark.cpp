#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <sched.h>

#include "API/QVEndpoints.h"
#include "API/QuorvaneAPI.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
#include "Search/SearchEndpoints.h"
#include "benchmarks/API/PlainExchange.h"
#include "benchmarks/API/Server.h"
#include "tests/support/ScratchDirectory.h"

namespace quorvane {

namespace {

constexpr std::chrono::seconds longEnough{10};

/// Keeps the calling thread, and the threads and processes that it starts meanwhile, on one processor: what a hop costs
/// varies three-fold with where the system happens to put its two sides.
class OneProcessor {
public:
    OneProcessor() {
        sched_getaffinity(0, sizeof before, &before);
        cpu_set_t one;
        CPU_ZERO(&one);
        unsigned first = 0;
        while (first + 1 < CPU_SETSIZE && !CPU_ISSET(first, &before)) {
            ++first;
        }
        CPU_SET(first, &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;
    ~OneProcessor() { sched_setaffinity(0, sizeof before, &before); }

private:
    cpu_set_t before{};
};

/// The library with valid tokens, calling the server as its data service.
class Library {
public:
    Library() {
        platform::NativeOptions options;
        options.home = home.path();
        phone = platform::NativePlatform::make(std::move(options));
        platform::install(phone);
        auto& preferences = phone->preferences();
        preferences.setString("quorvane_access_key", "access-key");
        preferences.setString("quorvane_access_token", "Bearer token");
        preferences.setString("quorvane_refresh_token", "refresh");
        preferences.setInteger("qourvane_access_token_expiry", 9'999'999'999);
        QVEndpoints endpoints(Environment::LOCAL);
        endpoints.api.localEndpoint = "http://127.0.0.1:" + std::to_string(answeringPort());
        QuorvaneAPI::shared().setEndpoints(endpoints);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() {
        phone.reset();
        platform::install(nullptr);
    }

    [[nodiscard]] platform::NativeMainQueue& queue() { return phone->mainQueue(); }

private:
    const testing::ScratchDirectory home;
    std::shared_ptr<platform::NativePlatform> phone;
};

/// A call, as the library makes it and as its address reads.
struct Call {
    std::string address;
    std::int64_t count;
    std::function<void(const std::function<void(std::int64_t)>& done)> make;
};

template <class Model>
auto counting(const std::function<void(std::int64_t)>& done) {
    return [done](QVStatus, const auto&, const std::shared_ptr<JSONResponseList<Model>>& list) {
        done(list ? static_cast<std::int64_t>(list->data.size()) : 0);
    };
}

const platform::Location here{{46.05, 14.5}};

const Call places{"/locations/find?lat=46.05&lng=14.5&rad=5000", 10, [](const auto& done) {
                      QuorvaneAPI::shared().request(
                          SearchPlacesEndpoint(here, 5000, std::nullopt, std::nullopt, std::nullopt, std::nullopt, 10),
                          counting<QVPlace>(done));
                  }};

const Call tasks{"/generate/tasks?lat=46.05&lng=14.5&rad=5000", 1, [](const auto& done) {
                     QuorvaneAPI::shared().request(
                         SearchTasksEndpoint(here, 5000, std::nullopt, std::nullopt, std::nullopt),
                         counting<QVTask>(done));
                 }};

/// Runs one exchange after the other: each begins once the one before has its answer with all objects in it.
template <class Request>
void measure(benchmark::State& state, platform::NativeMainQueue& queue, std::int64_t expected, Request request) {
    for (auto _ : state) {
        std::int64_t count = -1;
        request([&](std::int64_t objects) { count = objects; });
        if (!queue.runUntil([&] { return count >= 0; }, longEnough) || count != expected) {
            state.SkipWithError("no answer");
            return;
        }
    }
}

/// The lines of a request's headers, as the library sends them.
std::vector<std::string> headerLines() {
    const Library library;
    std::vector<std::string> lines;
    for (const auto& [name, value] : QuorvaneAPI::shared().getHeaders()) {
        lines.push_back(name + ": " + value);
    }
    lines.emplace_back("Accept-Encoding: identity");
    return lines;
}

void plain(benchmark::State& state, const Call& call) {
    const OneProcessor pinned;
    const std::string url = "http://127.0.0.1:" + std::to_string(answeringPort()) + call.address;
    const auto queue = platform::NativeMainQueue::make();
    PlainExchange exchange(*queue, url, headerLines());
    measure(state, *queue, call.count, [&](auto done) { exchange.request(std::move(done)); });
}

void ours(benchmark::State& state, const Call& call) {
    const OneProcessor pinned;
    Library library;
    measure(state, library.queue(), call.count, call.make);
}

void plainPlaces(benchmark::State& state) {
    plain(state, places);
}
void ourPlaces(benchmark::State& state) {
    ours(state, places);
}
void plainTask(benchmark::State& state) {
    plain(state, tasks);
}
void ourTask(benchmark::State& state) {
    ours(state, tasks);
}
BENCHMARK(plainPlaces)->Name("request of 2 KB, ten places/libcurl, a hop and a parse")->MeasureProcessCPUTime();
BENCHMARK(ourPlaces)->Name("request of 2 KB, ten places/ours")->MeasureProcessCPUTime();
BENCHMARK(plainTask)->Name("request of 2 KB, one task/libcurl, a hop and a parse")->MeasureProcessCPUTime();
BENCHMARK(ourTask)->Name("request of 2 KB, one task/ours")->MeasureProcessCPUTime();

} // namespace

} // namespace quorvane

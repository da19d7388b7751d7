#include <memory>
#include <string>

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

/// Runs one exchange after the other: each begins once the one before has its answer, which holds ten places.
template <class Request>
void measure(benchmark::State& state, platform::NativeMainQueue& queue, Request request) {
    for (auto _ : state) {
        std::int64_t count = -1;
        request([&](std::int64_t places) { count = places; });
        if (!queue.runUntil([&] { return count >= 0; }, longEnough) || count != 10) {
            state.SkipWithError("no answer");
            return;
        }
    }
}

void plain(benchmark::State& state) {
    const OneProcessor pinned;
    const std::uint16_t port = answeringPort();
    const auto queue = platform::NativeMainQueue::make();
    PlainExchange exchange(*queue, port);
    measure(state, *queue, [&](auto done) { exchange.request(std::move(done)); });
}
BENCHMARK(plain)->Name("request of 2 KB/libcurl, a hop and a parse")->MeasureProcessCPUTime();

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

void ours(benchmark::State& state) {
    const OneProcessor pinned;
    Library library;
    const platform::Location here{{46.05, 14.5}};
    measure(state, library.queue(), [&](auto done) {
        QuorvaneAPI::shared().request(
            SearchPlacesEndpoint(here, 5000, std::nullopt, std::nullopt, std::nullopt, std::nullopt, 10),
            [done](QVStatus, const auto&, const std::shared_ptr<JSONResponseList<QVPlace>>& places) {
                done(places ? static_cast<std::int64_t>(places->data.size()) : 0);
            });
    });
}
BENCHMARK(ours)->Name("request of 2 KB/ours")->MeasureProcessCPUTime();

} // namespace

} // namespace quorvane

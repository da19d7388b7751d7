#include "Platform/Native/CurlWorker.h"

#include <csignal>

#include <pthread.h>

#include "Platform/Precondition.h"

namespace quorvane::platform::native {
namespace {

constexpr std::size_t mostIdleExchanges = 4;
constexpr long mostIdleConnections = 8;

CURLM* makeMulti() {
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    CURLM* const multi = started == CURLE_OK ? curl_multi_init() : nullptr;
    QV_PRECONDITION(multi != nullptr, "libcurl must start");
    curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, mostIdleConnections);
    return multi;
}

} // namespace

CurlWorker::CurlWorker(const CurlOptions& theOptions, Deliver theDeliver)
    : options(theOptions),
      deliver(std::move(theDeliver)),
      multi(makeMulti(), &curl_multi_cleanup),
      thread([this] { work(); }) {}

CurlWorker::~CurlWorker() {
    Waits waits = Waits::notAtAll;
    {
        const std::lock_guard lock(mutex);
        ending = true;
        waits = waiting;
    }
    wake(waits);
    thread.join();
}

void CurlWorker::add(std::uint64_t number, HTTPRequest request, CurlAddress address) {
    Waits waits = Waits::notAtAll;
    {
        const std::lock_guard lock(mutex);
        added.push_back({number, std::move(request), std::move(address)});
        waits = waiting;
    }
    wake(waits);
}

void CurlWorker::wake(Waits waits) {
    if (waits == Waits::idly) {
        changed.notify_one();
    } else if (waits == Waits::forExchanges) {
        curl_multi_wakeup(multi.get());
    }
}

void CurlWorker::work() {
    // Signals are the program's own affair; besides, a write to a TLS connection that is gone would raise SIGPIPE.
    sigset_t signals;
    sigfillset(&signals);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    while (begin()) {
        int unfinished = 0;
        curl_multi_perform(multi.get(), &unfinished);
        finishEnded();
        if (running.empty()) {
            continue;
        }
        // Comes back earlier for a socket, a timeout of libcurl's own and a wake-up.
        constexpr int longWhile = 60'000;
        curl_multi_poll(multi.get(), nullptr, 0, longWhile, nullptr);
    }
    for (const auto& [handle, one] : running) {
        curl_multi_remove_handle(multi.get(), handle);
    }
    running.clear();
}

bool CurlWorker::begin() {
    std::vector<Added> taken;
    {
        std::unique_lock lock(mutex);
        if (running.empty()) {
            if (added.empty() && !ending) {
                // An answer is often followed by the next request. On a processor that both threads share, the main
                // thread goes first, which spares each of them a wait and a wake-up; elsewhere this is one short call.
                lock.unlock();
                std::this_thread::yield();
                lock.lock();
            }
            waiting = Waits::idly;
            changed.wait(lock, [this] { return ending || !added.empty(); });
        }
        waiting = Waits::forExchanges;
        if (ending) {
            return false;
        }
        taken.swap(added);
    }
    for (Added& one : taken) {
        beginOne(std::move(one));
    }
    return true;
}

void CurlWorker::beginOne(Added one) {
    Exchange exchange = freeExchange();
    if (!exchange->begin(one.number, std::move(one.request), one.address) ||
        curl_multi_add_handle(multi.get(), exchange->handle()) != CURLM_OK) {
        deliver(one.number, TransportError{TransportError::Kind::connection, "libcurl could not begin the request."});
        return;
    }
    running.emplace(exchange->handle(), std::move(exchange));
}

CurlWorker::Exchange CurlWorker::freeExchange() {
    if (idle.empty()) {
        return std::make_unique<CurlExchange>(options);
    }
    Exchange exchange = std::move(idle.back());
    idle.pop_back();
    return exchange;
}

void CurlWorker::finishEnded() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE) {
            continue;
        }
        const CURLcode code = message->data.result;
        auto ended = running.extract(message->easy_handle);
        Exchange exchange = std::move(ended.mapped());
        if (running.empty()) {
            const std::lock_guard lock(mutex);
            waiting = Waits::notAtAll;
        }
        HTTPTransport::Result result = exchange->finish(code);
        curl_multi_remove_handle(multi.get(), exchange->handle());
        deliver(exchange->number(), std::move(result));
        if (exchange->servesAgain() && idle.size() < mostIdleExchanges) {
            idle.push_back(std::move(exchange));
        }
    }
}

} // namespace quorvane::platform::native

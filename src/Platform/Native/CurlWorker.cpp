#include "Platform/Native/CurlWorker.h"

#include <csignal>

#include <pthread.h>

#include "Platform/Precondition.h"

namespace quorvane::platform::native {
namespace {

constexpr std::size_t mostIdleHandles = 4;
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
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    curl_multi_wakeup(multi.get());
    thread.join();
}

void CurlWorker::add(std::uint64_t number, HTTPRequest request) {
    {
        const std::lock_guard lock(mutex);
        added.emplace_back(number, std::move(request));
    }
    curl_multi_wakeup(multi.get());
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
    std::vector<std::pair<std::uint64_t, HTTPRequest>> taken;
    {
        const std::lock_guard lock(mutex);
        if (ending) {
            return false;
        }
        taken.swap(added);
    }
    for (auto& [number, request] : taken) {
        beginOne(number, std::move(request));
    }
    return true;
}

void CurlWorker::beginOne(std::uint64_t number, HTTPRequest request) {
    Handle handle = freeHandle();
    if (!handle) {
        deliver(number, TransportError{TransportError::Kind::connection, "libcurl could not begin the request."});
        return;
    }
    CURL* const raw = handle.get();
    auto exchange = std::make_unique<CurlExchange>(number, std::move(request), options, raw);
    if (curl_multi_add_handle(multi.get(), raw) != CURLM_OK) {
        deliver(number, TransportError{TransportError::Kind::connection, "libcurl could not begin the request."});
        return;
    }
    running.emplace(raw, Running{std::move(handle), std::move(exchange)});
}

CurlWorker::Handle CurlWorker::freeHandle() {
    if (idle.empty()) {
        return {curl_easy_init(), &curl_easy_cleanup};
    }
    Handle handle = std::move(idle.back());
    idle.pop_back();
    return handle;
}

void CurlWorker::finishEnded() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE) {
            continue;
        }
        const CURLcode code = message->data.result;
        const auto found = running.find(message->easy_handle);
        Running ended = std::move(found->second);
        running.erase(found);
        HTTPTransport::Result result = ended.exchange->finish(code);
        curl_multi_remove_handle(multi.get(), ended.handle.get());
        deliver(ended.exchange->number, std::move(result));
        if (idle.size() < mostIdleHandles) {
            curl_easy_reset(ended.handle.get());
            idle.push_back(std::move(ended.handle));
        }
    }
}

} // namespace quorvane::platform::native

#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include <curl/curl.h>

#include "Platform/HTTPTransport.h"
#include "Platform/Native/CurlExchange.h"

namespace quorvane::platform::native {

/// The thread that libcurl works on. Ends with the object: what is in flight is given up, every connection closed.
class CurlWorker {
public:
    /// Gets each result, on the worker's thread.
    using Deliver = std::function<void(std::uint64_t number, HTTPTransport::Result result)>;

    CurlWorker(const CurlOptions& options, Deliver deliver);
    CurlWorker(const CurlWorker&) = delete;
    CurlWorker& operator=(const CurlWorker&) = delete;
    ~CurlWorker();

    /// Begins a request that has been checked. Safe from any thread.
    void add(std::uint64_t number, HTTPRequest request, CurlAddress address);

private:
    using Exchange = std::unique_ptr<CurlExchange>;
    struct Added {
        std::uint64_t number;
        HTTPRequest request;
        CurlAddress address;
    };

    void work();
    /// What the worker waits for, or is about to wait for.
    enum class Waits {
        /// Nothing: it looks for what was added before it waits again.
        notAtAll,
        /// For something to do: on `changed`, which costs both threads less than a wake-up of libcurl's.
        idly,
        /// For what runs: in libcurl.
        forExchanges,
    };

    /// Gets the worker out of the waiting that it was in.
    void wake(Waits waits);
    /// Takes what was added, and waits for that while nothing runs. False when it is time to end.
    bool begin();
    void beginOne(Added one);
    void finishEnded();
    Exchange freeExchange();

    const CurlOptions& options;
    const Deliver deliver;
    std::unique_ptr<CURLM, CURLMcode (*)(CURLM*)> multi;
    std::unordered_map<CURL*, Exchange> running;
    /// Those that wait for their next request.
    std::vector<Exchange> idle;

    std::mutex mutex;
    std::condition_variable changed;
    Waits waiting = Waits::notAtAll;
    std::vector<Added> added;
    bool ending = false;

    std::thread thread;
};

} // namespace quorvane::platform::native

#pragma once

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
    void add(std::uint64_t number, HTTPRequest request);

private:
    using Handle = std::unique_ptr<CURL, void (*)(CURL*)>;
    struct Running {
        Handle handle;
        std::unique_ptr<CurlExchange> exchange;
    };

    void work();
    /// Takes what was added. False when it is time to end.
    bool begin();
    void beginOne(std::uint64_t number, HTTPRequest request);
    void finishEnded();
    Handle freeHandle();

    const CurlOptions& options;
    const Deliver deliver;
    std::unique_ptr<CURLM, CURLMcode (*)(CURLM*)> multi;
    std::unordered_map<CURL*, Running> running;
    /// Handles that wait for their next request.
    std::vector<Handle> idle;

    std::mutex mutex;
    std::vector<std::pair<std::uint64_t, HTTPRequest>> added;
    bool ending = false;

    std::thread thread;
};

} // namespace quorvane::platform::native

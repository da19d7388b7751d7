#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Platform/HTTPTransport.h"
#include "Platform/Native/CurlAddress.h"
#include "Platform/Native/NativePlatform.h"

namespace quorvane::platform {
class MainQueue;
}

namespace quorvane::platform::native {

struct CurlOptions {
    std::vector<LoopbackPort> connectTo;
    /// A PEM file; empty for the system's authorities.
    std::string certificateFile;
};

class CurlWorker;

/// Requests by libcurl on a thread of its own, which begins with the first request. Connections of GET requests are
/// used again; every other request gets a fresh one. HTTP 1.1; TLS certificates and names are verified; `http_proxy`
/// and its like are honoured but for loopback addresses.
class CurlTransport final : public HTTPTransport {
public:
    CurlTransport(MainQueue& queue, CurlOptions options);
    ~CurlTransport() override;

    void send(HTTPRequest request, Completion completion) override;
    void close() override;

private:
    /// The completions that are still to run, by the number of their request. Main thread only.
    struct Waiting {
        std::unordered_map<std::uint64_t, Completion> completions;
        void complete(std::uint64_t number, Result result);
    };

    void answer(std::uint64_t number, Result result);

    MainQueue& queue;
    const CurlOptions options;
    const std::shared_ptr<Waiting> waiting = std::make_shared<Waiting>();
    std::uint64_t lastNumber = 0;
    bool closed = false;
    CurlAddressReader addresses;
    std::unique_ptr<CurlWorker> worker;
};

} // namespace quorvane::platform::native

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "sandbox/Fault.h"
#include "sandbox/Message.h"
#include "sandbox/RequestRecord.h"

namespace quorvane::sandbox {

/// One operation of a service. `handle` runs on any of several threads and may throw a `Refusal`.
struct Route {
    std::string method;
    /// "*" stands for any one segment that is not empty.
    std::string path;
    std::function<Answer(const Request&)> handle;
    /// Bytes.
    std::size_t longestBody = std::size_t{1} << 20U;
    /// Belongs to the service's own page: no fault meets it and no record is made of it.
    bool isPage = false;
};

/// Serves routes on a port of the loopback interface, until it is destroyed. Whatever arrives is answered with JSON;
/// what is not HTTP, too long or too slow ends its connection.
class HTTPService {
public:
    struct Setup {
        /// "data": stands in the request records.
        std::string name;
        /// 0: any free one.
        int port = 0;
        std::vector<Route> routes;
        std::shared_ptr<FaultList> faults;
        /// Called once for each request, on any thread, before the answer can be read by the client.
        std::function<void(const RequestRecord&)> record;
        /// How long the bytes of one request may take.
        std::chrono::milliseconds requestTime{10'000};
        /// How long a connection may wait for its next request.
        std::chrono::milliseconds idleTime{5'000};
    };

    /// Takes the port; whoever connects waits until `serve`. Answers a sentence when the port is taken or cannot be
    /// had.
    static std::variant<std::unique_ptr<HTTPService>, std::string> open(Setup setup);
    HTTPService(const HTTPService&) = delete;
    HTTPService& operator=(const HTTPService&) = delete;
    /// Ends every connection and returns when all threads have ended.
    ~HTTPService();

    /// Begins to answer. Once.
    void serve();

    [[nodiscard]] int port() const;

private:
    class Server;
    explicit HTTPService(std::unique_ptr<Server> theServer);
    std::unique_ptr<Server> server;
};

} // namespace quorvane::sandbox

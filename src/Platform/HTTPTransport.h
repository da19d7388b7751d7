#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quorvane::platform {

struct HTTPRequest {
    /// "GET", "POST", "PUT" or "DELETE".
    std::string method = "GET";
    /// Absolute, "http" or "https", already percent-encoded.
    std::string url;
    /// In this order. A name or value with a line break in it makes the request fail with `invalidRequest`.
    std::vector<std::pair<std::string, std::string>> headers;
    /// Empty: no body is sent.
    std::string body;
    /// For the whole exchange, from `send` to the last byte of the answer.
    std::chrono::milliseconds timeout = std::chrono::seconds(10);
};

struct HTTPResponse {
    /// Any three-digit status, redirects included.
    int status = 0;
    std::string body;
};

/// No answer arrived.
struct TransportError {
    enum class Kind {
        /// The request could not be sent as it was given: a malformed URL, a line break in a header.
        invalidRequest,
        /// No connection: name unknown, refused, unreachable, TLS not verified.
        connection,
        /// The connection ended before the answer was whole.
        truncated,
        timedOut,
        /// The body is larger than `HTTPTransport::maxBodyBytes`.
        tooLarge,
    };
    Kind kind = Kind::connection;
    /// One sentence for a developer's log.
    std::string message;
};

/// Sends HTTP requests: the library's only way to the network. `send` is called on the main thread. Every
/// implementation promises:
/// - `send` returns before `completion` runs; `completion` runs exactly once, on the main queue, unless the
///   transport is closed before.
/// - Any HTTP status is an answer; a `TransportError` means that none arrived whole.
/// - No redirect is followed. The whole exchange takes at most `request.timeout`.
/// - A POST reaches the server at most once.
/// - After `close` no completion runs any more and no connection is left open.
class HTTPTransport {
public:
    using Result = std::variant<HTTPResponse, TransportError>;
    using Completion = std::function<void(Result)>;

    /// 64 MiB.
    static constexpr std::size_t maxBodyBytes = std::size_t{64} * 1024 * 1024;

    HTTPTransport() = default;
    HTTPTransport(const HTTPTransport&) = delete;
    HTTPTransport& operator=(const HTTPTransport&) = delete;
    virtual ~HTTPTransport() = default;

    virtual void send(HTTPRequest request, Completion completion) = 0;

    /// Called once, on the main thread, when the platform is taken out of use.
    virtual void close() = 0;
};

} // namespace quorvane::platform

#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::sandbox {

/// One request as it arrived, and what became of it. A plain value.
struct RequestRecord {
    /// "data" or "identity".
    std::string service;
    /// Empty, as is the target, when the request line could not be read.
    std::string method;
    /// Path and query as they were sent.
    std::string target;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    /// The answer's status; 0 when no byte of an answer was sent.
    int status = 0;
    /// Bytes sent, head and body.
    std::size_t bytes = 0;
    std::chrono::milliseconds duration{0};
    /// The fault that met it, or empty.
    std::string fault;

    /// The target without its query.
    [[nodiscard]] std::string path() const { return target.substr(0, target.find('?')); }

    /// The first header of this name, in any case of letters; empty when there is none.
    [[nodiscard]] std::string header(std::string_view name) const;

    /// "data GET /config?userId=u 200 131 bytes 2 ms": one line without its end. Control characters stand as "?".
    [[nodiscard]] std::string line() const;
};

} // namespace quorvane::sandbox

#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "sandbox/RequestRecord.h"

namespace quorvane::sandbox {

/// The last requests, and a listener for each. Only the newest bodies are kept, up to a limit for all of them together.
/// Safe from any thread; the listener is called by one at a time.
class RequestLog {
public:
    explicit RequestLog(std::function<void(const RequestRecord&)> theListener) : listener(std::move(theListener)) {}

    void add(const RequestRecord& record);
    [[nodiscard]] std::vector<RequestRecord> records() const;
    /// Shows the newest @p most of those with a number greater than @p number, with their numbers. @p visitor must not
    /// use the log.
    void visit(std::size_t number, std::size_t most,
               const std::function<void(std::size_t, const RequestRecord&)>& visitor) const;
    /// The record with this number, the first one being 1; none when it is forgotten or not there yet.
    [[nodiscard]] std::optional<RequestRecord> record(std::size_t number) const;
    void clear();

private:
    static constexpr std::size_t limit = 10'000;
    static constexpr std::size_t bodyLimit = std::size_t{64} << 20U;
    void forgetBodies();

    std::function<void(const RequestRecord&)> listener;
    std::mutex listening;
    mutable std::mutex mutex;
    std::deque<RequestRecord> last;
    std::size_t bodyBytes = 0;
    std::size_t total = 0;
};

} // namespace quorvane::sandbox

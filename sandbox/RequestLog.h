#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

#include "sandbox/RequestRecord.h"

namespace quorvane::sandbox {

/// The last requests, and a listener for each. Safe from any thread; the listener is called by one at a time.
class RequestLog {
public:
    explicit RequestLog(std::function<void(const RequestRecord&)> theListener) : listener(std::move(theListener)) {}

    void add(const RequestRecord& record);
    [[nodiscard]] std::vector<RequestRecord> records() const;
    void clear();

private:
    static constexpr std::size_t limit = 10'000;
    std::function<void(const RequestRecord&)> listener;
    std::mutex listening;
    mutable std::mutex mutex;
    std::deque<RequestRecord> last;
};

} // namespace quorvane::sandbox

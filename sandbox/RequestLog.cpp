#include "sandbox/RequestLog.h"

namespace quorvane::sandbox {

void RequestLog::add(const RequestRecord& record) {
    const std::lock_guard order(listening);
    {
        const std::lock_guard lock(mutex);
        if (last.size() == limit) {
            last.pop_front();
        }
        last.push_back(record);
    }
    if (listener) {
        listener(record);
    }
}

std::vector<RequestRecord> RequestLog::records() const {
    const std::lock_guard lock(mutex);
    return {last.begin(), last.end()};
}

void RequestLog::clear() {
    const std::lock_guard lock(mutex);
    last.clear();
}

} // namespace quorvane::sandbox

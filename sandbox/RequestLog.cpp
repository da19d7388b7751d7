#include "sandbox/RequestLog.h"

namespace quorvane::sandbox {

void RequestLog::add(const RequestRecord& record) {
    const std::lock_guard order(listening);
    {
        const std::lock_guard lock(mutex);
        if (last.size() == limit) {
            bodyBytes -= last.front().body.size();
            last.pop_front();
        }
        last.push_back(record);
        bodyBytes += record.body.size();
        forgetBodies();
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
    bodyBytes = 0;
}

void RequestLog::forgetBodies() {
    for (auto record = last.begin(); bodyBytes > bodyLimit; ++record) {
        bodyBytes -= record->body.size();
        std::string().swap(record->body);
    }
}

} // namespace quorvane::sandbox

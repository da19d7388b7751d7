#include "sandbox/RequestLog.h"

#include <algorithm>

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
        ++total;
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

void RequestLog::visit(std::size_t number, std::size_t most,
                       const std::function<void(std::size_t, const RequestRecord&)>& visitor) const {
    const std::lock_guard lock(mutex);
    const std::size_t forgotten = total - last.size();
    for (std::size_t i = std::max({std::min(number, total), forgotten, total - std::min(total, most)}); i < total;
         ++i) {
        visitor(i + 1, last[i - forgotten]);
    }
}

std::optional<RequestRecord> RequestLog::record(std::size_t number) const {
    const std::lock_guard lock(mutex);
    const std::size_t forgotten = total - last.size();
    return number > forgotten && number <= total ? std::optional(last[number - forgotten - 1]) : std::nullopt;
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

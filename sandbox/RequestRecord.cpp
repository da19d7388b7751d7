#include "sandbox/RequestRecord.h"

#include <algorithm>

#include <strings.h>

namespace quorvane::sandbox {

std::string RequestRecord::header(std::string_view name) const {
    for (const auto& [key, value] : headers) {
        if (key.size() == name.size() && strncasecmp(key.data(), name.data(), name.size()) == 0) {
            return value;
        }
    }
    return {};
}

std::string RequestRecord::line() const {
    std::string text = service + " " + (method.empty() ? "(unreadable request)" : method + " " + target) + " " +
                       (status == 0 ? std::string("no answer") : std::to_string(status)) + " " + std::to_string(bytes) +
                       " bytes " + std::to_string(duration.count()) + " ms";
    if (!fault.empty()) {
        text += " (" + fault + ")";
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }, '?');
    return text;
}

} // namespace quorvane::sandbox

#pragma once

#include <string_view>
#include <vector>

namespace quorvane::sandbox {

/// What stands between the separators, empty texts too; the whole text where there are none.
[[nodiscard]] inline std::vector<std::string_view> splitAt(char separator, std::string_view text) {
    std::vector<std::string_view> parts;
    for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

} // namespace quorvane::sandbox

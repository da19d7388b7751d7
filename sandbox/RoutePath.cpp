#include "sandbox/RoutePath.h"

#include "sandbox/Message.h"
#include "sandbox/Split.h"

namespace quorvane::sandbox {
std::optional<std::vector<std::string>> matchPath(std::string_view pattern, std::string_view path) {
    const auto expected = splitAt('/', pattern);
    const auto segments = splitAt('/', path);
    if (segments.size() != expected.size()) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        std::string segment = percentDecoded(segments[i], Plus::isPlus);
        if (expected[i] == "*" && !segment.empty()) {
            texts.push_back(std::move(segment));
        } else if (segment != expected[i]) {
            return std::nullopt;
        }
    }
    return texts;
}

} // namespace quorvane::sandbox

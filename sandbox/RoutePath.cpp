#include "sandbox/RoutePath.h"

#include "sandbox/Message.h"

namespace quorvane::sandbox {
namespace {

std::vector<std::string_view> segmentsOf(std::string_view path) {
    std::vector<std::string_view> segments;
    for (auto slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/')) {
        segments.push_back(path.substr(0, slash));
        path.remove_prefix(slash + 1);
    }
    segments.push_back(path);
    return segments;
}

} // namespace

std::optional<std::vector<std::string>> matchPath(std::string_view pattern, std::string_view path) {
    const auto expected = segmentsOf(pattern);
    const auto segments = segmentsOf(path);
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

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::sandbox {

/// The texts that stand in a path where @p pattern has "*" for a segment, decoded; none when the path is another one.
/// A slash that is written "%2F" belongs to its segment. Throws a `Refusal` for a path that cannot be decoded.
[[nodiscard]] std::optional<std::vector<std::string>> matchPath(std::string_view pattern, std::string_view path);

} // namespace quorvane::sandbox

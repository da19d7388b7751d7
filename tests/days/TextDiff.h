#pragma once

#include <string>

namespace quorvane::days {

/// How @p actual differs from @p expected, by lines: those that are gone begin with "-", those that have come with "+",
/// and three lines around each change with a blank. Empty when they are equal.
[[nodiscard]] std::string differences(const std::string& expected, const std::string& actual);

} // namespace quorvane::days

#pragma once

#include <string>

namespace quorvane::platform::native {

/// The home directory for @p given as an absolute path without a slash at its end. For an empty one: "quorvane" in
/// $XDG_DATA_HOME, else in .local/share of the user's own directory; empty when there is none of them.
[[nodiscard]] std::string homeDirectory(const std::string& given);

} // namespace quorvane::platform::native

#pragma once

#include <string_view>

namespace quorvane::json {

/// Whether @p text is well-formed UTF-8.
[[nodiscard]] bool isValidUTF8(std::string_view text);

} // namespace quorvane::json

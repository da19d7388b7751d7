#pragma once

#include <string>
#include <string_view>

namespace quorvane {

/// The standard alphabet with padding, without line breaks (RFC 4648, section 4).
[[nodiscard]] std::string base64(std::string_view bytes);

/// Appends the same to @p text.
void appendBase64(std::string& text, std::string_view bytes);

} // namespace quorvane

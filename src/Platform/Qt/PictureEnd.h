#pragma once

#include <string_view>

namespace quorvane::platform::qt {

/// Whether a JPEG or PNG file stops before the mark that ends its picture; never of a file of another kind. A JPEG
/// decoder paints grey what is missing and calls it a success. What follows the end does not count.
[[nodiscard]] bool isCutOff(std::string_view file);

} // namespace quorvane::platform::qt

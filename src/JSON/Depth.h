#pragma once

#include <cstddef>

#include "JSON/AnyCodable.h"

namespace quorvane::json {

/// How many lists and objects may stand in each other in a text that is read, the outermost included.
inline constexpr std::size_t deepest = 512;

/// Whether a text of @p dictionary could not be read again.
[[nodiscard]] bool isTooDeep(const AnyCodable::Dictionary& dictionary);

} // namespace quorvane::json

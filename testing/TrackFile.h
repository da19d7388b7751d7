#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "testing/Track.h"

namespace quorvane::testing {

/// The whole file at @p path, or a sentence in @p error: it cannot be read, or is larger than @p maxBytes.
[[nodiscard]] std::optional<std::string> readTrackFile(const std::string& path, std::size_t maxBytes,
                                                       TrackError& error);

/// @p text in quotes, on one line and of a readable length.
[[nodiscard]] std::string quoted(std::string_view text);

/// The decimal number that is all of @p text but for blanks around it; a sign and an exponent are allowed. None when it
/// is no number or not finite.
[[nodiscard]] std::optional<double> readDecimal(std::string_view text);

/// @p text without the blanks and line breaks around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

} // namespace quorvane::testing

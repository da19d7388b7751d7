#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/Clock.h"

namespace quorvane::testing {

/// @p text in quotes, on one line and of a readable length.
[[nodiscard]] std::string quoted(std::string_view text);

/// The decimal number that is all of @p text but for blanks around it; a sign and an exponent are allowed. None when it
/// is no number or not finite.
[[nodiscard]] std::optional<double> readDecimal(std::string_view text);

/// @p text without the blanks and line breaks around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// @p text in lower case, as far as it is ASCII.
[[nodiscard]] std::string lowered(std::string_view text);

/// A date and time as `readDate` takes it, with a blank in place of its "T" allowed, or the seconds since 1970 with an
/// optional fraction; from 100,000,000,000 on they count as milliseconds. None when @p text is neither, or beyond the
/// years 1678 to 2261.
[[nodiscard]] std::optional<platform::Date> readMoment(std::string_view text);

} // namespace quorvane::testing

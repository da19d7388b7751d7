#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/Clock.h"

namespace quorvane::testing {

/// @p moment in UTC, as "2026-03-01T12:00:00Z"; with milliseconds ("12:00:00.250Z") where it is not a whole second.
/// What is smaller is cut off.
[[nodiscard]] std::string dateText(platform::Date moment);

/// Reads "2026-03-01T12:00:00" with an optional fraction of a second (what is below a nanosecond is cut off) and an
/// optional zone, "Z" or "+02:00"; without one the time is UTC. A second 60 is the first of the next minute. None when
/// @p text is anything else or lies beyond the years 1678 to 2261.
[[nodiscard]] std::optional<platform::Date> readDate(std::string_view text);

} // namespace quorvane::testing

#pragma once

#include <string>

#include "Platform/Clock.h"

namespace quorvane::testing {

/// @p moment in UTC, as "2026-03-01T12:00:00Z"; with milliseconds ("12:00:00.250Z") where it is not a whole second.
/// What is smaller is cut off.
[[nodiscard]] std::string dateText(platform::Date moment);

} // namespace quorvane::testing

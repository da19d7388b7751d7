#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "Platform/Clock.h"
#include "Platform/Location.h"
#include "testing/TrackText.h"

namespace quorvane::tool {

using testing::printable;

/// How many columns @p text takes: one for each UTF-8 character.
[[nodiscard]] std::size_t width(std::string_view text);

/// At most @p columns of @p text; one that was cut ends in "…".
[[nodiscard]] std::string clipped(std::string_view text, std::size_t columns);

/// @p text with blanks up to @p columns.
[[nodiscard]] std::string padded(std::string_view text, std::size_t columns);

/// "84 m", "1.2 km", "31 km"; with @p moreDigits behind the point than that.
[[nodiscard]] std::string metresText(double metres, int moreDigits = 0);

/// "46.05120, 14.50610".
[[nodiscard]] std::string coordinateText(const platform::Coordinate& coordinate);

/// "08:30:00", in UTC.
[[nodiscard]] std::string timeText(platform::Date moment);

/// "45 s", "28 min", "2 h 5 min".
[[nodiscard]] std::string durationText(std::chrono::seconds duration);

/// "1 place", "3 places"; @p plural where an "s" does not make it.
[[nodiscard]] std::string counted(std::size_t count, std::string_view noun, std::string_view plural = {});

} // namespace quorvane::tool

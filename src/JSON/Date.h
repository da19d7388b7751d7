#pragma once

#include <chrono>
#include <optional>

namespace quorvane::json {

/// A moment of wall time; in JSON the seconds since 2001-01-01 UTC as a number.
using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

/// The moment as JSON holds it: a double, about a tenth of a microsecond fine. A moment that came from
/// `dateFromSeconds` gives the same double again.
[[nodiscard]] double secondsSince2001(Date moment);

/// The moment, to the nanosecond; none for a number that is not finite or too far away for a `Date` (some 290 years).
[[nodiscard]] std::optional<Date> dateFromSeconds(double seconds);

} // namespace quorvane::json

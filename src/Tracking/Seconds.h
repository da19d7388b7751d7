#pragma once

#include <limits>

#include "Platform/Clock.h"

namespace quorvane {

/// Seconds from @p from to @p to, negative when that is the earlier one. Any two moments have a difference.
[[nodiscard]] constexpr double secondsBetween(platform::Date from, platform::Date to) {
    using Count = platform::Date::rep;
    constexpr double nanoseconds = 1e9;
    const Count start = from.time_since_epoch().count();
    const Count end = to.time_since_epoch().count();
    const bool overflows = start < 0 ? end > (std::numeric_limits<Count>::max)() + start
                                     : end < (std::numeric_limits<Count>::min)() + start;
    return overflows ? static_cast<double>(end) / nanoseconds - static_cast<double>(start) / nanoseconds
                     : static_cast<double>(end - start) / nanoseconds;
}

} // namespace quorvane

#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Location.h"

namespace quorvane::days {

/// A place that the service knows.
struct KnownPlace {
    std::string id;
    std::string name;
    platform::Coordinate coordinate;
};

/// Something that happens at a moment: "permission" "denied".
struct Happening {
    platform::Date at;
    std::string what;
    std::string value;
};

/// A day as its file says it: the words `NAME.day`, a line each.
///
///     track FILE                        the way, in any format that a track is read from
///     options continuous|responsive|efficient|{...}
///     place ID LAT,LON NAME             that the service knows
///     token SECONDS                     how long the first token holds; a day unless said otherwise
///     at TIME WHAT VALUE                see DayRun.cpp for what can happen
///     until TIME                        the end
///
/// Times are those of a clock that nobody sets. What follows a "#" at the beginning of a line is a remark.
struct DayScript {
    std::string track;
    /// A preset's name, or JSON.
    std::string options;
    std::vector<KnownPlace> places;
    std::int64_t firstTokenSeconds = 24 * 3600;
    std::vector<Happening> happenings;
    platform::Date until;
};

/// Reads the day in @p path. Throws a `std::runtime_error` that names the line where it is no day.
[[nodiscard]] DayScript readDay(const std::string& path);

} // namespace quorvane::days

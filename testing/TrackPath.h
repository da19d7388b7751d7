#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "Platform/Location.h"

namespace quorvane::testing {

/// The way of a device that follows recorded fixes: where it is at any moment. Goes forward only, and keeps two fixes
/// at a time.
///
/// Between two fixes the device moves evenly in latitude and longitude, across the date line where that is shorter, and
/// as accurately as the fix before it. A fix that is not later than the latest before it is passed over. After the last
/// one the device stays.
class TrackPath {
public:
    /// Answers a fix at each call, none at the end and from then on.
    using Source = std::function<std::optional<platform::Location>()>;
    using Duration = std::chrono::nanoseconds;

    /// The longest time between two fixes. A later one ends the way, as `problem` says then.
    static constexpr Duration longestGap = std::chrono::hours(31 * 24);

    explicit TrackPath(Source theSource);

    /// The time of the first fix; none: there is no fix.
    [[nodiscard]] std::optional<platform::Date> start() const;

    /// Where the device is @p elapsed after the first fix, which is not before that of an earlier call. Its timestamp
    /// is of no meaning. None: there is no fix.
    [[nodiscard]] std::optional<platform::Location> at(Duration elapsed);

    /// When, after the first fix, the latest one came that is not later than the last call of `at`.
    [[nodiscard]] Duration reached() const { return before ? before->offset : Duration(0); }
    /// When, after the first fix, the next one comes that is later than the last call of `at`; none at the end.
    [[nodiscard]] std::optional<Duration> next() const;

    /// Fixes so far that were passed over.
    [[nodiscard]] std::size_t passedOver() const { return dropped; }
    /// One sentence when the way ended before the fixes did; empty else.
    [[nodiscard]] const std::string& problem() const { return failure; }

private:
    struct Point {
        platform::Location fix;
        Duration offset{0};
    };

    void read();

    Source source;
    std::optional<Point> before;
    std::optional<Point> after;
    platform::Date first;
    std::size_t dropped = 0;
    std::string failure;
};

} // namespace quorvane::testing

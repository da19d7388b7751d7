#include "testing/TrackPath.h"

#include <utility>

#include "testing/DateText.h"

namespace quorvane::testing {
namespace {

/// The meridian that lies @p part of the shorter way from @p from to @p to.
double between(double from, double to, double part) {
    double way = to - from;
    if (way > 180) {
        way -= 360;
    } else if (way < -180) {
        way += 360;
    }
    const double result = from + way * part;
    if (result > 180) {
        return result - 360;
    }
    return result < -180 ? result + 360 : result;
}

} // namespace

TrackPath::TrackPath(Source theSource) : source(std::move(theSource)) {
    if (const std::optional<platform::Location> fix = source()) {
        first = fix->timestamp;
        before = {*fix, Duration(0)};
        read();
    }
}

std::optional<platform::Date> TrackPath::start() const {
    return before ? std::optional(first) : std::nullopt;
}

std::optional<platform::Location> TrackPath::at(Duration elapsed) {
    while (after && after->offset <= elapsed) {
        before = after;
        read();
    }
    if (!before) {
        return std::nullopt;
    }
    platform::Location result = before->fix;
    if (after && elapsed > before->offset) {
        const auto part = static_cast<double>((elapsed - before->offset).count()) /
                          static_cast<double>((after->offset - before->offset).count());
        const platform::Coordinate& to = after->fix.coordinate;
        result.coordinate.latitude += (to.latitude - result.coordinate.latitude) * part;
        result.coordinate.longitude = between(result.coordinate.longitude, to.longitude, part);
    }
    return result;
}

std::optional<TrackPath::Duration> TrackPath::next() const {
    return after ? std::optional(after->offset) : std::nullopt;
}

void TrackPath::read() {
    after.reset();
    while (const std::optional<platform::Location> fix = failure.empty() ? source() : std::nullopt) {
        const platform::Date latest = before->fix.timestamp;
        if (fix->timestamp <= latest) {
            ++dropped;
        } else if (latest < platform::Date::max() - longestGap && fix->timestamp > latest + longestGap) {
            failure = "The fix after " + dateText(latest) + " is of " + dateText(fix->timestamp) +
                      ", more than 31 days later: the way ends before it.";
        } else {
            after = {*fix, before->offset + (fix->timestamp - latest)};
            return;
        }
    }
}

} // namespace quorvane::testing

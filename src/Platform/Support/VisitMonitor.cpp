#include "Platform/Support/VisitMonitor.h"

#include <cmath>

namespace quorvane::platform {
namespace {

/// The same meridian within [-180, 180].
double wrapped(double longitude) {
    return std::remainder(longitude, 360.0);
}

} // namespace

std::optional<Visit> VisitMonitor::receive(const Location& fix, std::chrono::nanoseconds now) {
    if (fixes == 0) {
        begin(fix, now);
        return std::nullopt;
    }
    const double away = distance(fix.coordinate, stay.coordinate);
    if (away > radius && away > fix.horizontalAccuracy) {
        if (away - fix.horizontalAccuracy <= radius && !doubt) {
            doubt = fix;
            return std::nullopt;
        }
        const Visit ended = stay;
        const bool wasTold = isTold;
        const Date left = doubt.value_or(fix).timestamp;
        begin(fix, now);
        if (!wasTold) {
            return std::nullopt;
        }
        return Visit{ended.coordinate, ended.horizontalAccuracy, ended.arrivalDate, left};
    }
    doubt.reset();
    if (away <= radius) {
        add(fix);
    }
    return arrival(now);
}

std::optional<std::chrono::nanoseconds> VisitMonitor::due() const {
    return fixes == 0 || isTold || doubt ? std::nullopt : std::optional(since + shortest);
}

std::optional<Visit> VisitMonitor::look(std::chrono::nanoseconds now) {
    return due() ? arrival(now) : std::nullopt;
}

std::optional<Visit> VisitMonitor::arrival(std::chrono::nanoseconds now) {
    if (isTold || now - since < shortest) {
        return std::nullopt;
    }
    isTold = true;
    return stay;
}

void VisitMonitor::begin(const Location& fix, std::chrono::nanoseconds now) {
    stay = {fix.coordinate, fix.horizontalAccuracy, fix.timestamp, distantFuture};
    fixes = 1;
    since = now;
    isTold = false;
    doubt.reset();
}

/// Moves the mean of the stay. The visit keeps the place that it was told with.
void VisitMonitor::add(const Location& fix) {
    if (isTold) {
        return;
    }
    ++fixes;
    const auto part = 1.0 / static_cast<double>(fixes);
    Coordinate& mean = stay.coordinate;
    mean.latitude += (fix.coordinate.latitude - mean.latitude) * part;
    mean.longitude = wrapped(mean.longitude + wrapped(fix.coordinate.longitude - mean.longitude) * part);
    stay.horizontalAccuracy += (fix.horizontalAccuracy - stay.horizontalAccuracy) * part;
}

} // namespace quorvane::platform

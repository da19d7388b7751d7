#include "JSON/Date.h"

#include <cmath>
#include <cstdint>

namespace quorvane::json {

namespace {

constexpr std::int64_t secondsBefore2001 = 978307200;
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
// A Date reaches from the year 1677 to 2262.
constexpr double farthestSeconds = 8.2e9;

} // namespace

double secondsSince2001(Date moment) {
    const std::int64_t whole = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
    // Not as a difference: the first second of time begins before any date.
    const std::int64_t rest = moment.time_since_epoch().count() % nanosecondsPerSecond;
    const std::int64_t fraction = rest < 0 ? rest + nanosecondsPerSecond : rest;
    return static_cast<double>(whole - secondsBefore2001) +
           static_cast<double>(fraction) / static_cast<double>(nanosecondsPerSecond);
}

std::optional<Date> dateFromSeconds(double seconds) {
    if (!(std::fabs(seconds) <= farthestSeconds)) {
        return std::nullopt;
    }
    const double whole = std::floor(seconds);
    const std::chrono::nanoseconds fraction(
        std::llround((seconds - whole) * static_cast<double>(nanosecondsPerSecond)));
    return Date(std::chrono::seconds(static_cast<std::int64_t>(whole) + secondsBefore2001) + fraction);
}

} // namespace quorvane::json

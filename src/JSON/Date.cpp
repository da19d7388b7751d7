#include "JSON/Date.h"

#include <cmath>
#include <cstdint>

namespace quorvane::json {

namespace {

constexpr std::int64_t secondsBefore2001 = 978307200;
constexpr double nanosecondsPerSecond = 1e9;
// A Date reaches from the year 1677 to 2262.
constexpr double farthestSeconds = 8.2e9;

} // namespace

double secondsSince2001(Date moment) {
    const auto whole = std::chrono::floor<std::chrono::seconds>(moment);
    const double fraction = static_cast<double>((moment - whole).count()) / nanosecondsPerSecond;
    return static_cast<double>(whole.time_since_epoch().count() - secondsBefore2001) + fraction;
}

std::optional<Date> dateFromSeconds(double seconds) {
    if (!(std::fabs(seconds) <= farthestSeconds)) {
        return std::nullopt;
    }
    const double whole = std::floor(seconds);
    const std::chrono::nanoseconds fraction(std::llround((seconds - whole) * nanosecondsPerSecond));
    return Date(std::chrono::seconds(static_cast<std::int64_t>(whole) + secondsBefore2001) + fraction);
}

} // namespace quorvane::json

#include "Platform/Native/SystemClock.h"

#include <ctime>

namespace quorvane::platform::native {

Date SystemClock::now() const {
    return std::chrono::time_point_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now());
}

std::chrono::nanoseconds SystemClock::monotonic() const {
#ifdef CLOCK_BOOTTIME
    // The steady clock stands still while the device sleeps.
    std::timespec time{};
    if (clock_gettime(CLOCK_BOOTTIME, &time) == 0) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }
#endif
    return std::chrono::steady_clock::now().time_since_epoch();
}

std::chrono::seconds SystemClock::offsetFromUTC(Date moment) const {
    const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
    // localtime_r alone would keep the zone of its first call.
    tzset();
    std::tm local{};
    return std::chrono::seconds(localtime_r(&seconds, &local) == nullptr ? 0 : local.tm_gmtoff);
}

} // namespace quorvane::platform::native

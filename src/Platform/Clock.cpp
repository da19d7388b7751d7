#include "Platform/Clock.h"

namespace quorvane::platform {

std::int64_t roundedSecondsSince1970(Date moment) {
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t ticks = moment.time_since_epoch().count();
    const std::int64_t whole = ticks / second;
    const std::int64_t rest = ticks % second;
    if (rest >= second / 2) {
        return whole + 1;
    }
    return rest <= -second / 2 ? whole - 1 : whole;
}

} // namespace quorvane::platform

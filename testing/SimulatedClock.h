#pragma once

#include <chrono>
#include <mutex>

#include "Platform/Clock.h"

namespace quorvane::testing {

/// A clock that stands still until it is told otherwise. Safe from any thread.
///
/// Inside a `SimulatedPlatform` use `SimulatedPlatform::advance`, which runs what falls due on the way.
class SimulatedClock : public platform::Clock {
public:
    /// Where every simulated clock starts unless told otherwise: Sunday 2026-03-01, 12:00:00 UTC.
    static constexpr platform::Date start =
        std::chrono::sys_days{std::chrono::year{2026} / std::chrono::March / 1} + std::chrono::hours{12};

    explicit SimulatedClock(platform::Date now = start, std::chrono::seconds offsetFromUTC = {});

    [[nodiscard]] platform::Date now() const override;
    /// Starts at 0.
    [[nodiscard]] std::chrono::nanoseconds monotonic() const override;
    [[nodiscard]] std::chrono::seconds offsetFromUTC(platform::Date moment) const override;

    /// Moves wall and monotonic time by @p duration, which is not negative. Runs nothing.
    void moveForward(std::chrono::nanoseconds duration);

    /// Sets wall time, as a user or a time server does: monotonic time stays as it is.
    void setWallTime(platform::Date now);

    /// The same offset from UTC for every moment, east positive, between -24 and +24 hours.
    void setOffsetFromUTC(std::chrono::seconds offset);

private:
    mutable std::mutex mutex;
    platform::Date wall;
    std::chrono::nanoseconds elapsed{0};
    std::chrono::seconds offset;
};

} // namespace quorvane::testing

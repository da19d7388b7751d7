#pragma once

#include <chrono>
#include <cstdint>

#include "JSON/Date.h"

namespace quorvane::platform {

/// A moment of wall time. Nanoseconds since 1970, so that a stored moment reads back exactly as it was written.
using Date = json::Date;

/// Tells the time. Safe from any thread. Every implementation promises:
/// - `now` is wall time and may jump in both directions; `monotonic` never goes back.
/// - both move at the same pace while nobody sets the wall clock, and while the device sleeps too, as far as the system
///   tells. Delays of the main queue and timeouts of requests are for time awake: they may come late by that, never
///   early.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Wall time now.
    [[nodiscard]] virtual Date now() const = 0;

    /// Time since an arbitrary moment that is fixed for the life of the clock.
    [[nodiscard]] virtual std::chrono::nanoseconds monotonic() const = 0;

    /// Offset of local time from UTC at @p moment, east positive; between -24 and +24 hours.
    [[nodiscard]] virtual std::chrono::seconds offsetFromUTC(Date moment) const = 0;
};

/// Whole seconds since 1970, rounded to the nearest second (halves away from zero).
[[nodiscard]] std::int64_t roundedSecondsSince1970(Date moment);

} // namespace quorvane::platform

#pragma once

#include "Platform/Clock.h"

namespace quorvane::platform::native {

/// The system's clocks. The time zone is the process's own (TZ, else the machine's); a change of it is followed.
class SystemClock final : public Clock {
public:
    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::chrono::nanoseconds monotonic() const override;
    [[nodiscard]] std::chrono::seconds offsetFromUTC(Date moment) const override;
};

} // namespace quorvane::platform::native

#pragma once

#include <chrono>
#include <optional>

#include "Platform/Location.h"

namespace quorvane::platform {

/// Finds out from fixes when the device has moved by a good deal. Plain value.
///
/// A change is significant when the device is more than 500 metres from where it was at the last one (at first, from
/// where it was when that began): by two fixes in a row, or one whose accuracy circle lies beyond as a whole. There is
/// one in five minutes at the most.
class SignificantChangeMonitor {
public:
    /// Metres.
    static constexpr double farthest = 500;
    static constexpr std::chrono::nanoseconds pause = std::chrono::minutes(5);

    /// Whether @p fix is a change. Its coordinate and its accuracy are valid. @p now is monotonic time.
    [[nodiscard]] bool receive(const Location& fix, std::chrono::nanoseconds now);

    /// Begins anew with the next fix.
    void reset() { *this = {}; }

private:
    std::optional<Location> last;
    std::optional<std::chrono::nanoseconds> toldAt;
    bool isDoubted = false;
};

} // namespace quorvane::platform

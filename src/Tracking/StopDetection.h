#pragma once

#include <optional>

#include "Core/Enumerations.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Clock.h"
#include "Platform/Location.h"

namespace quorvane {

/// Where and when the user last moved, as far as it is known.
struct LastMove {
    std::optional<platform::Location> location;
    std::optional<platform::Date> at;
};

/// Whether a fix shows the user stopped, and the numbers that say so.
struct StopDecision {
    /// False while the options switch the detection off: then only `stopped` says anything.
    bool isDetecting = false;
    /// The user moved after this fix was taken: it decides nothing.
    bool isOld = false;
    bool stopped = false;
    /// Metres from where the user last moved; `maximumDistance` without detection.
    double distance = platform::maximumDistance;
    /// Seconds since the user last moved.
    double duration = 0;
    platform::Date lastMovedAt;
    /// The user moved: farther than the stop distance.
    bool moved = false;
    /// What of the fix is to be remembered as the last move.
    bool setsLastMovedLocation = false;
    bool setsLastMovedAt = false;
};

/// Whether the options want stops to be detected: both their distance and their duration are 1 or more.
[[nodiscard]] constexpr bool detectsStops(const QuorvaneTrackingOptions& options) {
    return options.stopDistance >= 1 && options.stopDuration >= 1;
}

/// Whether @p fix shows the user stopped. Changes nothing; @p fix is valid.
///
/// A fix that was asked for is never too old. Not farther than the stop distance for at least the stop duration is
/// stopped, and so is the arrival of a visit, wherever it is; farther than the stop distance is moved. @p clock is
/// asked where the age of the fix counts: when no time has passed since the last move.
[[nodiscard]] StopDecision detectStop(const QuorvaneTrackingOptions& options, const platform::Location& fix,
                                      QVLocationSource source, const LastMove& last, const platform::Clock& clock);

} // namespace quorvane

#pragma once

#include <string>
#include <vector>

#include "Models/QuorvaneTrackingOptions.h"
#include "tools/demo/TrackedRide.h"
#include "tools/replay/ReplaySummary.h"

namespace quorvane::tool {

/// One ride with one set of options.
struct TrackedPreset {
    /// "continuous".
    std::string name;
    std::shared_ptr<QuorvaneTrackingOptions> options;
    TrackedRide ride;
    ReplaySummary summary;
};

/// "CONTINUOUS".
[[nodiscard]] std::string titleOf(const TrackedPreset& preset);

/// What the options ask for, a phrase each: when there are fixes, what else wakes the application, what is sent.
[[nodiscard]] std::vector<std::string> rulesOf(const QuorvaneTrackingOptions& options);

/// Why tracking did less with @p less than with @p more, on the same ride: whole sentences, from the rules that applied
/// and how often. None where it did not do less.
[[nodiscard]] std::vector<std::string> reasonsFor(const TrackedPreset& less, const TrackedPreset& more);

} // namespace quorvane::tool

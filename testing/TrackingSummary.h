#pragma once

#include <cstddef>

#include "Tracking/Observed.h"

namespace quorvane::testing {

/// What tracking did in a run, in numbers. Plain value.
struct TrackingSummary {
    /// Fixes that were decided on.
    std::size_t fixes = 0;
    /// Of these: the ones that were dropped, for whatever reason.
    std::size_t dropped = 0;
    /// How often a moving user came to a stop.
    std::size_t stops = 0;
    /// Locations that reached the service, and those that did not.
    std::size_t syncs = 0;
    std::size_t failedSyncs = 0;
    std::size_t events = 0;
    std::size_t geofences = 0;
    std::size_t backgroundGrants = 0;

    void count(const observed::Observation& observation);

    friend bool operator==(const TrackingSummary&, const TrackingSummary&) = default;
};

} // namespace quorvane::testing

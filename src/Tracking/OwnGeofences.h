#pragma once

#include <cstdint>

#include "Platform/LocationManager.h"
#include "Platform/SecureRandom.h"
#include "Tracking/TrackingObserver.h"

namespace quorvane {

/// The geofence that wakes the application when the user leaves it: at most one. Regions that others placed are left
/// alone.
class OwnGeofences {
public:
    OwnGeofences(platform::LocationManager& manager, platform::SecureRandom& random,
                 const TrackingObservation& observation);

    /// Places one of @p radius metres around @p location, in the place of the one before.
    void replace(const platform::Location& location, std::int64_t radius);

    void remove();

private:
    platform::LocationManager& manager;
    platform::SecureRandom& random;
    const TrackingObservation& observation;
};

} // namespace quorvane

#include "Tracking/OwnGeofences.h"

#include <string>

#include "Tracking/QVLocationManager.h"

namespace quorvane {

OwnGeofences::OwnGeofences(platform::LocationManager& theManager, platform::SecureRandom& theRandom,
                           const TrackingObservation& theObservation)
    : manager(theManager), random(theRandom), observation(theObservation) {}

void OwnGeofences::replace(const platform::Location& location, std::int64_t radius) {
    remove();
    const platform::CircularRegion region{std::string(QVLocationManager::REGION_IDENTIFIER) + "_" + random.uuid(),
                                          location.coordinate, static_cast<double>(radius)};
    manager.startMonitoring(region);
    observation.tell([&] { return observed::Geofence{true, region}; });
}

void OwnGeofences::remove() {
    for (const platform::CircularRegion& region : manager.monitoredRegions()) {
        if (region.identifier.starts_with(QVLocationManager::REGION_IDENTIFIER)) {
            manager.stopMonitoring(region);
            observation.tell([&] { return observed::Geofence{false, region}; });
        }
    }
}

} // namespace quorvane

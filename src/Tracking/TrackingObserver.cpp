#include "Tracking/TrackingObserver.h"

#include "Platform/Registry.h"

namespace quorvane {

TrackingObservation& TrackingObservation::shared() {
    return platform::shared<TrackingObservation>();
}

} // namespace quorvane

#include "Tracking/LocationManagerParts.h"

#include <charconv>
#include <string>
#include <utility>

#include "Platform/Device.h"

namespace quorvane {
namespace {

using Kind = observed::Service::Kind;

/// The first version of the system with a background-location indicator.
constexpr int firstVersionWithIndicator = 11;

int majorVersion(const std::string& version) {
    int number = 0;
    std::from_chars(version.data(), version.data() + version.size(), number);
    return number;
}

} // namespace

QVLocationManager::Parts::Parts(platform::Platform& thePlatform, const bool& verbose)
    : platform(thePlatform),
      flag(SignedInFlag::shared()),
      options(StoredTrackingOptions::shared()),
      observation(TrackingObservation::shared()),
      state(platform.preferences()),
      log(QVLogger::shared(), verbose),
      precise(platform.locationManagers().make()),
      lowPower(platform.locationManagers().make()),
      geofences(*precise, platform.random(), observation),
      updates(platform, *precise, *lowPower, log, observation),
      handlers(platform.mainQueue(), state, log, observation),
      hasBackgroundIndicator(majorVersion(platform.device().systemVersion()) >= firstVersionWithIndicator) {}

void QVLocationManager::Parts::setTracking(bool isOn, observed::Tracking::Cause cause) {
    flag.set(isOn);
    observation.tell([&] { return observed::Tracking{isOn, cause}; });
}

void QVLocationManager::Parts::setVisits(bool run) {
    if (run) {
        precise->startMonitoringVisits();
    } else {
        precise->stopMonitoringVisits();
    }
    if (std::exchange(monitorsVisits, run) != run) {
        observation.tell([&] { return observed::Service{Kind::visits, run}; });
    }
}

void QVLocationManager::Parts::setSignificantChanges(bool run) {
    if (run) {
        precise->startMonitoringSignificantLocationChanges();
    } else {
        precise->stopMonitoringSignificantLocationChanges();
    }
    if (std::exchange(monitorsSignificantChanges, run) != run) {
        observation.tell([&] { return observed::Service{Kind::significantChanges, run}; });
    }
}

} // namespace quorvane

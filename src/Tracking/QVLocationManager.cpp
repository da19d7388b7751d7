#include "Tracking/QVLocationManager.h"

#include "Core/QVSettings.h"
#include "Device/QVUtils.h"
#include "JSON/NumberText.h"
#include "Models/DesiredAccuracyName.h"
#include "Platform/Precondition.h"
#include "Tracking/Descriptions.h"
#include "Tracking/LocationManagerParts.h"

namespace quorvane {
namespace {

using Source = QVLocationSource;

constexpr double lowPowerDistanceFilter = 3000;

/// What the platform is told for a wish; none counts as a hundred metres.
double metresOf(const std::optional<QVDesiredAccuracy>& accuracy) {
    if (accuracy == QVDesiredAccuracy::HIGH) {
        return platform::DesiredAccuracy::best;
    }
    return accuracy == QVDesiredAccuracy::LOW ? platform::DesiredAccuracy::kilometer
                                              : platform::DesiredAccuracy::hundredMeters;
}

} // namespace

QVLocationManager::QVLocationManager(platform::Platform& platform) : parts(std::make_unique<Parts>(platform, verbose)) {
    const bool worksInBackground = QVUtils::getLocationBackgroundMode() &&
                                   parts->precise->authorization() == platform::LocationAuthorization::always;
    parts->precise->setDelegate(this);
    parts->precise->setDesiredAccuracy(platform::DesiredAccuracy::hundredMeters);
    parts->precise->setDistanceFilter(platform::noDistanceFilter);
    parts->precise->setAllowsBackgroundLocationUpdates(worksInBackground);
    parts->lowPower->setDesiredAccuracy(platform::DesiredAccuracy::threeKilometers);
    parts->lowPower->setDistanceFilter(lowPowerDistanceFilter);
    parts->lowPower->setAllowsBackgroundLocationUpdates(worksInBackground);
    permissionsHelper = std::make_unique<QVPermissionsHelper>(*parts->precise);
}

QVLocationManager::~QVLocationManager() = default;

void QVLocationManager::startTracking(const QuorvaneTrackingOptions& options) {
    QV_PRECONDITION(permissionsHelper != nullptr,
                    "the location manager needs its permissions helper to start tracking");
    parts->log.verbose([&] { return "starting tracking | options = " + options.description(); });
    if (!permissionsHelper->isAuthorized()) {
        tellDelegate(QVStatus::ERROR_PERMISSIONS);
        return;
    }
    parts->setTracking(true, observed::Tracking::Cause::host);
    QVSettings::setTrackingOptions(options);
    updateTracking(std::nullopt);
}

void QVLocationManager::stopTracking() {
    parts->setTracking(false, observed::Tracking::Cause::host);
    updateTracking(std::nullopt);
}

void QVLocationManager::getLocation(QuorvaneTrackingOptions::DesiredAccuracy desiredAccuracy,
                                    const LocationCompletion& completion) {
    QV_PRECONDITION(permissionsHelper != nullptr, "the location manager needs its permissions helper for a location");
    parts->log.verbose(
        [&] { return "getLocation | acc = " + std::string(nameOf(desiredAccuracy).value_or("NONE")) + ";"; });
    if (!permissionsHelper->isAuthorized()) {
        tellDelegate(QVStatus::ERROR_PERMISSIONS);
        completion(QVStatus::ERROR_PERMISSIONS, std::nullopt, false);
        return;
    }
    parts->handlers.add(completion);
    const double metres = metresOf(desiredAccuracy);
    parts->precise->setDesiredAccuracy(metres);
    parts->log.verbose("Requesting location");
    parts->observation.tell([&] { return observed::LocationRequest{false, metres}; });
    parts->precise->requestLocation();
}

void QVLocationManager::configureManagers(const QuorvaneTrackingOptions& options) {
    parts->precise->setPausesLocationUpdatesAutomatically(false);
    parts->lowPower->setPausesLocationUpdatesAutomatically(false);
    parts->precise->setDesiredAccuracy(metresOf(options.desiredAccuracy));
    if (parts->hasBackgroundIndicator) {
        parts->lowPower->setShowsBackgroundLocationIndicator(options.showBlueBar);
    }
}

void QVLocationManager::tellDelegate(QVStatus error) const {
    if (const auto receiver = delegate.lock()) {
        receiver->onError(error);
    }
}

void QVLocationManager::didUpdateLocations(const std::vector<platform::Location>& locations) {
    parts->log.verbose([&] { return "didUpdateLocation: locations = " + descriptionOf(locations); });
    const Source source = parts->handlers.isEmpty() ? Source::BACKGROUND_LOCATION : Source::FOREGROUND_LOCATION;
    handleLocation(locations.empty() ? std::nullopt : std::optional(locations.back()), source);
}

void QVLocationManager::didVisit(const platform::Visit& visit) {
    parts->log.verbose([&] { return "didVisit: visit = " + descriptionOf(visit) + ";"; });
    const bool isArrival = visit.departureDate == platform::distantFuture;
    handleLocation(parts->precise->location(), isArrival ? Source::VISIT_ARRIVAL : Source::VISIT_DEPARTURE);
}

void QVLocationManager::didEnterRegion(const platform::CircularRegion& region) {
    parts->log.verbose([&] { return "didEnterRegion | region = " + descriptionOf(region) + ";"; });
    handleLocation(parts->precise->location(), Source::GEOFENCE_ENTER);
}

void QVLocationManager::didExitRegion(const platform::CircularRegion& region) {
    parts->log.verbose([&] { return "didExitRegion | region = " + descriptionOf(region) + ";"; });
    handleLocation(parts->precise->location(), Source::GEOFENCE_EXIT);
}

void QVLocationManager::didFail(const platform::LocationError& error) {
    parts->log.verbose([&] { return "didFailWithError | error = " + descriptionOf(error); });
    parts->observation.tell([&] { return observed::Failure{error}; });
    tellDelegate(QVStatus::ERROR_LOCATION);
    parts->handlers.call(QVStatus::ERROR_LOCATION, std::nullopt);
}

void QVLocationManager::didChangeAuthorization(platform::LocationAuthorization status) {
    parts->log.verbose([&] { return "didChangeAuthorization | status = " + std::string(textOf(status)); });
    if (permissionsHelper) {
        permissionsHelper->authorizationChanged(status);
    }
}

void QVLocationManager::didDetermineState(const platform::CircularRegion&, platform::RegionState state) {
    parts->log.verbose([&] { return "didDetermineState; state = " + std::string(textOf(state)); });
}

void QVLocationManager::didStartMonitoring(const platform::CircularRegion& region) {
    // Two blanks: the line has always been written so.
    parts->log.verbose([&] { return "didStartMonitoringFor |  region = " + descriptionOf(region); });
}

void QVLocationManager::monitoringDidFail(const platform::CircularRegion& region, const platform::LocationError&) {
    parts->log.verbose([&] { return "monitoringDidFailFor | region = " + descriptionOf(region); });
}

void QVLocationManager::didFinishDeferredUpdates(const std::optional<platform::LocationError>& error) {
    parts->log.verbose([&] { return "didFinishDeferredUpdatesWithError | error = " + descriptionOf(error); });
}

void QVLocationManager::didUpdateHeading(double heading) {
    parts->log.verbose([&] { return "didUpdateHeading | newHeading = " + json::textOf(heading); });
}

void QVLocationManager::didRangeBeacons(std::size_t count) {
    parts->log.verbose([&] { return "didRange | beacons.count = " + std::to_string(count); });
}

void QVLocationManager::didFailRanging(const std::string& constraint, const platform::LocationError&) {
    // Misspelt as it has always been.
    parts->log.verbose([&] { return "didFailRangingFor | contraint = " + constraint; });
}

} // namespace quorvane

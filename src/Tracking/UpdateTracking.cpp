#include <chrono>

#include "Models/DateDescription.h"
#include "Platform/Clock.h"
#include "Tracking/Descriptions.h"
#include "Tracking/LocationManagerParts.h"

namespace quorvane {
namespace {

using Cause = observed::Tracking::Cause;

constexpr std::chrono::seconds shutdownDelay{10};

/// What the options want of a user who moves, or of one who is stopped.
struct Wishes {
    Wishes(const QuorvaneTrackingOptions& options, bool stopped)
        : interval(stopped ? options.desiredStoppedUpdateInterval : options.desiredMovingUpdateInterval),
          useGeofence(stopped ? options.useStoppedGeofence : options.useMovingGeofence),
          radius(stopped ? options.stoppedGeofenceRadius : options.movingGeofenceRadius) {}

    const std::int64_t interval;
    const bool useGeofence;
    const std::int64_t radius;
};

} // namespace

void QVLocationManager::updateTracking(const std::optional<platform::Location>& location) {
    parts->platform.mainQueue().post(parts->lifetime.guard([this, location] { applyTracking(location); }));
}

bool QVLocationManager::Parts::isTrackingNow(const QuorvaneTrackingOptions& current) {
    const bool isTracking = flag.isTracking();
    const platform::Date now = platform.clock().now();
    if (isTracking && current.stopTrackingAfter && *current.stopTrackingAfter < now) {
        log.verbose([&] {
            return "Stopping time-based tracking; stopTrackingAfter = " + descriptionOf(*current.stopTrackingAfter);
        });
        setTracking(false, Cause::stopDate);
        return false;
    }
    if (!isTracking && current.startTrackingAfter && *current.startTrackingAfter < now) {
        log.always(QVLogLevel::INFO, [date = *current.startTrackingAfter] {
            return "Starting time-based tracking; startTrackingAfter = " + descriptionOf(date);
        });
        setTracking(true, Cause::startDate);
        return true;
    }
    return isTracking;
}

void QVLocationManager::applyTracking(const std::optional<platform::Location>& location) {
    const auto options = parts->options.current();
    parts->log.verbose([&] {
        return "    updating tracking:\n        location = " + descriptionOf(location) +
               ";\n        tracking = " + std::string(trueOrFalse(parts->flag.isTracking())) +
               ";\n        options = " + options->description() + ";";
    });
    if (!parts->isTrackingNow(*options)) {
        parts->stopUpdates();
        parts->geofences.remove();
        parts->setVisits(false);
        parts->setSignificantChanges(false);
        return;
    }

    configureManagers(*options);
    const Wishes wishes(*options, parts->state.isStopped());
    if (wishes.interval == 0) {
        parts->stopUpdates();
    } else {
        parts->updates.start(wishes.interval);
    }
    if (!wishes.useGeofence) {
        parts->geofences.remove();
    } else if (location) {
        parts->geofences.replace(*location, wishes.radius);
    }
    // A wish that is gone ends neither: only the end of tracking does.
    if (options->useVisits) {
        parts->setVisits(true);
    }
    if (options->useSignificantLocationChanges) {
        parts->setSignificantChanges(true);
    }
}

void QVLocationManager::Parts::stopUpdates() {
    updates.stop(sending || scheduled, flag.isTracking() ? shutdownDelay : std::chrono::seconds(0));
}

} // namespace quorvane

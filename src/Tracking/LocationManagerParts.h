#pragma once

#include <memory>

#include "Core/QVLogger.h"
#include "Core/SignedInFlag.h"
#include "Core/StoredTrackingOptions.h"
#include "Platform/Lifetime.h"
#include "Platform/LocationManager.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"
#include "Tracking/LocationHandlers.h"
#include "Tracking/LocationUpdates.h"
#include "Tracking/OwnGeofences.h"
#include "Tracking/QVLocationManager.h"
#include "Tracking/SyncDecision.h"
#include "Tracking/TrackingLog.h"
#include "Tracking/TrackingObserver.h"
#include "Tracking/TrackingState.h"

namespace quorvane {

/// What the location manager is made of, each part in the order in which the next ones need it.
struct QVLocationManager::Parts {
    Parts(platform::Platform& platform, const bool& verbose);

    /// Detects a stop, and remembers and logs what came of it.
    [[nodiscard]] StopDecision decideStop(const QuorvaneTrackingOptions& current, const platform::Location& fix,
                                          QVLocationSource source);
    /// Says that @p fix is no location, and that those who wait for one get none.
    void dropInvalid(observed::Fix fix);
    /// What decides whether the location of a fix is sent, or that of @p failed, which is replayed in its place.
    [[nodiscard]] SyncInput syncInput(const QuorvaneTrackingOptions& current, const observed::Fix& fix,
                                      const std::optional<platform::Location>& failed) const;
    /// Has @p manager send @p location, a little later where the one before it was sent only just now.
    void sendNowOrSoon(QVLocationManager& manager, const platform::Location& location, const SyncInput& input,
                       double lastSyncInterval);
    /// The stop that is to be replayed now, which is not remembered any more.
    [[nodiscard]] std::optional<platform::Location> takeFailedStop(const QuorvaneTrackingOptions& current);
    /// Whether tracking is on by now, the dates of the options applied.
    [[nodiscard]] bool isTrackingNow(const QuorvaneTrackingOptions& current);
    void setTracking(bool isOn, observed::Tracking::Cause cause);
    void stopUpdates();
    void setVisits(bool run);
    void setSignificantChanges(bool run);

    platform::Platform& platform;
    SignedInFlag& flag;
    StoredTrackingOptions& options;
    const TrackingObservation& observation;
    TrackingState state;
    const TrackingLog log;
    /// For requests, visits, significant changes and geofences.
    const std::unique_ptr<platform::LocationManager> precise;
    /// Keeps the application running in the background while the timer runs.
    const std::unique_ptr<platform::LocationManager> lowPower;
    OwnGeofences geofences;
    LocationUpdates updates;
    LocationHandlers handlers;
    /// The system is one that shows when the location is used in the background.
    const bool hasBackgroundIndicator;
    /// A location is on its way to the service.
    bool sending = false;
    /// A location will be sent shortly.
    bool scheduled = false;
    bool monitorsVisits = false;
    bool monitorsSignificantChanges = false;
    platform::Lifetime lifetime;
};

} // namespace quorvane

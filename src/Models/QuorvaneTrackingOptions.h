#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "JSON/CodingKeys.h"
#include "JSON/Date.h"
#include "Models/QVTrackingEnumerations.h"

namespace quorvane {

/// How to track: how accurately, how often, when a user counts as stopped, which geofences to place, when to sync.
///
/// New options have the three enumerations at `NONE`; options decoded from JSON have those absent whose keys are.
class QuorvaneTrackingOptions {
public:
    using DesiredAccuracy = QVDesiredAccuracy;
    using Replay = QVReplay;
    using Sync = QVSync;

    /// A fix every 30 s and every location sent: for following a ride.
    ///
    /// The three presets are one shared object each, made on first use with the platform in use and forgotten when
    /// another one is installed. A change to a preset is a change for all its later users. Safe from any thread;
    /// the fields are not guarded.
    [[nodiscard]] static std::shared_ptr<QuorvaneTrackingOptions> CONTINUOUS();
    /// A fix every 150 s while moving, none while stopped; stops and exits sent, failed stops again.
    [[nodiscard]] static std::shared_ptr<QuorvaneTrackingOptions> RESPONSIVE();
    /// No timers, only what the platform's visit monitoring reports.
    [[nodiscard]] static std::shared_ptr<QuorvaneTrackingOptions> EFFICIENT();

    std::optional<DesiredAccuracy> desiredAccuracy = DesiredAccuracy::NONE;
    /// Seconds between location requests while moving; 0 for no timer.
    std::int64_t desiredMovingUpdateInterval = 0;
    /// Seconds between location requests while stopped; 0 for no timer.
    std::int64_t desiredStoppedUpdateInterval = 0;
    /// The fewest seconds between two syncs.
    std::int64_t desiredSyncInterval = 0;
    /// Metres.
    std::int64_t movingGeofenceRadius = 0;
    std::optional<Replay> replay = Replay::NONE;
    /// Whether the platform may show that the location is used in the background.
    bool showBlueBar = false;
    std::optional<json::Date> startTrackingAfter;
    /// Metres; a user who moved less counts as not having moved.
    std::int64_t stopDistance = 0;
    /// Seconds; a user who has not moved for this long counts as stopped.
    std::int64_t stopDuration = 0;
    /// Metres.
    std::int64_t stoppedGeofenceRadius = 0;
    std::optional<json::Date> stopTrackingAfter;
    std::optional<Sync> sync = Sync::NONE;
    /// Whether a geofence of `movingGeofenceRadius` stands around a moving user.
    bool useMovingGeofence = false;
    bool useSignificantLocationChanges = false;
    /// Whether a geofence of `stoppedGeofenceRadius` stands around a stopped user.
    bool useStoppedGeofence = false;
    bool useVisits = false;

    /// A heading and one line a field: `\t\t\tshowBlueBar = true`. Enumerations and dates print as
    /// `Optional(HIGH)`, `Optional(2024-05-01 12:00:00 +0000)` or `nil`.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const QuorvaneTrackingOptions&, const QuorvaneTrackingOptions&) = default;

    /// Decoding begins with every enumeration absent.
    void willDecode();

    static constexpr auto codingKeys = json::keys(
        json::key("DESIRED_ACCURACY", &QuorvaneTrackingOptions::desiredAccuracy),
        json::key("DESIRED_MOVING_UPDATE_INTERVAL", &QuorvaneTrackingOptions::desiredMovingUpdateInterval),
        json::key("DESIRED_STOPPED_UPDATE_INTERVAL", &QuorvaneTrackingOptions::desiredStoppedUpdateInterval),
        json::key("DESIRED_SYNC_INTERVAL", &QuorvaneTrackingOptions::desiredSyncInterval),
        json::key("MOVING_GEOFENCE_RADIUS", &QuorvaneTrackingOptions::movingGeofenceRadius),
        json::key("REPLAY", &QuorvaneTrackingOptions::replay),
        json::key("SHOW_BLUE_BAR", &QuorvaneTrackingOptions::showBlueBar),
        json::lenient(json::key("START_TRACKING_AFTER", &QuorvaneTrackingOptions::startTrackingAfter)),
        json::key("STOP_DISTANCE", &QuorvaneTrackingOptions::stopDistance),
        json::key("STOP_DURATION", &QuorvaneTrackingOptions::stopDuration),
        json::key("STOPPED_GEOFENCE_RADIUS", &QuorvaneTrackingOptions::stoppedGeofenceRadius),
        json::lenient(json::key("STOP_TRACKING_AFTER", &QuorvaneTrackingOptions::stopTrackingAfter)),
        json::key("SYNC", &QuorvaneTrackingOptions::sync),
        json::key("USE_MOVING_GEOFENCE", &QuorvaneTrackingOptions::useMovingGeofence),
        json::key("USE_SIGNIFICANT_LOCATION_CHANGES", &QuorvaneTrackingOptions::useSignificantLocationChanges),
        json::key("USE_STOPPED_GEOFENCE", &QuorvaneTrackingOptions::useStoppedGeofence),
        json::key("USE_VISITS", &QuorvaneTrackingOptions::useVisits));
};

} // namespace quorvane

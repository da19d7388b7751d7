#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/LocationManager.h"
#include "Platform/Platform.h"
#include "Tracking/QVPermissionsHelper.h"

namespace quorvane {

/// Follows the device: takes every fix through one chain of decisions, knows whether the user is stopped, keeps the
/// timer and the geofence that wake the application, and sends what the tracking options let through. Main thread only.
///
/// What it knows from one fix to the next stands in the preferences (see `QVState`), so that it goes on where it was
/// after the application was ended and started again.
class QVLocationManager : public SharedService<QVLocationManager>, public platform::LocationManagerDelegate {
public:
    /// The label of the serial queues on which the list of waiting callers is touched.
    static constexpr std::string_view QUEUE_LABEL = "qv-location-manager";
    /// What the identifier of each geofence of the library begins with.
    static constexpr std::string_view REGION_IDENTIFIER = "qv-visit-region";

    /// A status, the location with `SUCCESS`, and whether the device is considered stopped.
    using LocationCompletion = std::function<void(QVStatus, const std::optional<platform::Location>&, bool)>;

    explicit QVLocationManager(platform::Platform& platform);
    ~QVLocationManager() override;

    /// Stores @p options and begins to track by them. Without permission the delegate gets `ERROR_PERMISSIONS`, and
    /// nothing else happens.
    void startTracking(const QuorvaneTrackingOptions& options);

    /// Ends tracking: timer, geofence, visits and significant changes.
    void stopTracking();

    /// One location of the device. Answers once, on the main queue: with the next fix, whatever it was asked for; with
    /// `ERROR_LOCATION` when the device has none, or has given none for 20 seconds, counted from the caller who has
    /// waited longest. `ERROR_PERMISSIONS` comes before this returns.
    ///
    /// While a fix is older than the user's last move, the callers who wait then go on waiting, without a limit.
    void getLocation(QuorvaneTrackingOptions::DesiredAccuracy desiredAccuracy, const LocationCompletion& completion);

    /// Applies the stored options anew, around @p location where there is one. Happens later, on the main queue.
    void updateTracking(const std::optional<platform::Location>& location);

    /// Decides on a fix: whether it counts, whether the user is stopped, whether it is sent.
    void handleLocation(const std::optional<platform::Location>& location, QVLocationSource source);

    /// Hands a location to the tracking service. Nothing is sent without a key.
    void sendLocation(const platform::Location& location, bool stopped, QVLocationSource source, bool replayed);

    /// What the platform tells.
    void didUpdateLocations(const std::vector<platform::Location>& locations) override;
    void didVisit(const platform::Visit& visit) override;
    void didEnterRegion(const platform::CircularRegion& region) override;
    void didExitRegion(const platform::CircularRegion& region) override;
    void didFail(const platform::LocationError& error) override;
    void didChangeAuthorization(platform::LocationAuthorization status) override;
    void didDetermineState(const platform::CircularRegion& region, platform::RegionState state) override;
    void didStartMonitoring(const platform::CircularRegion& region) override;
    void monitoringDidFail(const platform::CircularRegion& region, const platform::LocationError& error) override;
    void didFinishDeferredUpdates(const std::optional<platform::LocationError>& error) override;
    void didUpdateHeading(double heading) override;
    void didRangeBeacons(std::size_t count) override;
    void didFailRanging(const std::string& constraint, const platform::LocationError& error) override;

    /// Made with the manager. Must be there whenever tracking starts or a location is asked for.
    std::unique_ptr<QVPermissionsHelper> permissionsHelper;

    /// Whether the lines that are marked verbose are logged.
    bool verbose = false;

private:
    struct Parts;

    void applyTracking(const std::optional<platform::Location>& location);
    void configureManagers(const QuorvaneTrackingOptions& options);
    void tellDelegate(QVStatus error) const;

    std::unique_ptr<Parts> parts;
};

} // namespace quorvane

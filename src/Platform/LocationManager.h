#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Platform/Location.h"
#include "Platform/LocationManagerDelegate.h"

namespace quorvane::platform {

class MainQueue;

/// The accuracy that a manager is asked for, in metres; a fix may be better or worse.
struct DesiredAccuracy {
    static constexpr double best = -1;
    static constexpr double hundredMeters = 100;
    static constexpr double kilometer = 1000;
    static constexpr double threeKilometers = 3000;
};

/// A distance filter that lets every fix pass.
inline constexpr double noDistanceFilter = -1;

/// One user of the device's location services. Main thread only. Every implementation promises:
/// - The delegate is called on the main queue and never inside a call of the manager; after `setDelegate` its former
///   delegate is not called any more, and after the manager's end nobody is.
/// - Managers share the receiver: `location` and `monitoredRegions` answer the same for all of them, and a region that
///   one of them monitors is told to the delegates of all, and stays monitored when that manager ends. Fixes, visits
///   and failures are told to the managers that asked for them.
/// - When a fix is told, `location` answers it, or a later one. For one fix the managers are called in the order in
///   which they were made: first those that get it as a location, then those that a region's crossing is told to.
/// - A region is crossed when its state changes: first comes `didStartMonitoring`, then `didDetermineState` with the
///   state that it begins in, and only from then on `didEnterRegion` and `didExitRegion`, by turns.
/// - Without permission a request, continuous updates and a region fail with `denied`, visits and significant changes
///   stay silent. What was started before lasts: `monitoredRegions` answers the same, a region can be stopped, and
///   all of it goes on when permission is given.
class LocationManager {
public:
    enum class Permission { whenInUse, always };

    LocationManager() = default;
    LocationManager(const LocationManager&) = delete;
    LocationManager& operator=(const LocationManager&) = delete;
    /// Ends what it was asked for, but for the monitoring of regions.
    virtual ~LocationManager() = default;

    /// Not owned; outlives the manager or is taken off before. None takes the former one off.
    virtual void setDelegate(LocationManagerDelegate* delegate) = 0;

    /// The fix that the device had last, by whichever manager; none while there was none, or without permission.
    [[nodiscard]] virtual std::optional<Location> location() const = 0;

    [[nodiscard]] virtual LocationAuthorization authorization() const = 0;
    /// Asks the user for permission. Does nothing unless the status is `notDetermined`, or `whenInUse` and @p
    /// permission is `always`. The answer comes as `didChangeAuthorization`.
    virtual void requestAuthorization(Permission permission) = 0;

    /// Metres, or one of `DesiredAccuracy`; `best` unless set. Applies to continuous updates and to requests that come
    /// after it.
    virtual void setDesiredAccuracy(double metres) = 0;
    /// Metres that the device must have moved since the last continuous update for another one; `noDistanceFilter`
    /// unless set.
    virtual void setDistanceFilter(double metres) = 0;
    /// Whether the system may pause continuous updates where the device does not move; true unless set.
    virtual void setPausesLocationUpdatesAutomatically(bool pauses) = 0;
    /// Whether continuous updates go on in the background and keep the application running there; false unless set.
    virtual void setAllowsBackgroundLocationUpdates(bool allows) = 0;
    /// Whether the system shows that the location is used in the background; false unless set.
    virtual void setShowsBackgroundLocationIndicator(bool shows) = 0;

    /// Asks for one fix: answered once, by `didUpdateLocations` or `didFail`. Asking again while a request is open does
    /// not make it two.
    virtual void requestLocation() = 0;

    /// Continuous updates. Starting what was started, and stopping what was not, does nothing; so below.
    virtual void startUpdatingLocation() = 0;
    virtual void stopUpdatingLocation() = 0;

    virtual void startMonitoringVisits() = 0;
    virtual void stopMonitoringVisits() = 0;

    /// Fixes after the device has moved by some 500 metres, by `didUpdateLocations`.
    virtual void startMonitoringSignificantLocationChanges() = 0;
    virtual void stopMonitoringSignificantLocationChanges() = 0;

    /// Takes the place of a region with the same identifier. A radius that is not positive, or a centre that is not
    /// valid, ends in `monitoringDidFail`.
    virtual void startMonitoring(const CircularRegion& region) = 0;
    /// By identifier. The region's crossings are not told any more.
    virtual void stopMonitoring(const CircularRegion& region) = 0;
    /// In the order in which their monitoring was started, those included that the system keeps from an earlier launch.
    [[nodiscard]] virtual std::vector<CircularRegion> monitoredRegions() const = 0;
};

/// Makes location managers over the device's one receiver. Main thread only. The managers end before it.
class LocationManagerFactory {
public:
    LocationManagerFactory() = default;
    LocationManagerFactory(const LocationManagerFactory&) = delete;
    LocationManagerFactory& operator=(const LocationManagerFactory&) = delete;
    virtual ~LocationManagerFactory() = default;

    /// Never null.
    [[nodiscard]] virtual std::unique_ptr<LocationManager> make() = 0;
};

/// For platforms without a receiver: every manager answers that permission is denied, and knows the one location that
/// the program itself has set, if any.
class FixedLocationManagerFactory : public LocationManagerFactory {
public:
    /// @p queue outlives the factory.
    explicit FixedLocationManagerFactory(MainQueue& queue);

    [[nodiscard]] std::unique_ptr<LocationManager> make() override;

    /// None: the location is not known.
    void setLastLocation(const std::optional<Location>& location) { last = location; }

private:
    class Manager;

    MainQueue& queue;
    std::optional<Location> last;
};

} // namespace quorvane::platform

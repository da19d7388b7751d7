#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Location.h"

namespace quorvane::platform {

/// A moment that never comes: the departure date of a visit that lasts.
inline constexpr Date distantFuture = (Date::max)();

/// A stay at one place. Plain value.
struct Visit {
    Coordinate coordinate;
    /// Metres.
    double horizontalAccuracy = 0;
    Date arrivalDate;
    /// `distantFuture`: the visit has begun and not ended.
    Date departureDate = distantFuture;

    friend bool operator==(const Visit&, const Visit&) = default;
};

/// A circle whose crossing is told. Plain value; the identifier is its name among all regions of the application.
struct CircularRegion {
    std::string identifier;
    Coordinate center;
    /// Metres.
    double radius = 0;

    friend bool operator==(const CircularRegion&, const CircularRegion&) = default;
};

enum class RegionState { unknown, inside, outside };

/// What the user, or the system, lets the application do.
enum class LocationAuthorization { notDetermined, restricted, denied, always, whenInUse };

/// Whether the application may have locations: always, or while it is in use.
[[nodiscard]] constexpr bool permitsLocations(LocationAuthorization status) {
    return status == LocationAuthorization::always || status == LocationAuthorization::whenInUse;
}

/// Why there is no location, or no monitoring.
struct LocationError {
    enum class Kind {
        /// The application has no permission.
        denied,
        /// No position could be found, for now.
        unknown,
        /// The region cannot be monitored: its circle is no circle, or there are too many.
        monitoring,
    };
    Kind kind = Kind::unknown;
    /// One sentence for a developer's log.
    std::string message;

    friend bool operator==(const LocationError&, const LocationError&) = default;
};

/// Hears what a location manager has to tell: on the main queue, never inside a call of the manager. Every function
/// does nothing unless it is overridden.
class LocationManagerDelegate {
public:
    LocationManagerDelegate() = default;
    LocationManagerDelegate(const LocationManagerDelegate&) = delete;
    LocationManagerDelegate& operator=(const LocationManagerDelegate&) = delete;
    virtual ~LocationManagerDelegate() = default;

    /// Never empty; the oldest first.
    virtual void didUpdateLocations(const std::vector<Location>& /*locations*/) {}
    /// Told when a visit begins, with `distantFuture` as its departure, and again when it has ended.
    virtual void didVisit(const Visit& /*visit*/) {}
    virtual void didEnterRegion(const CircularRegion& /*region*/) {}
    virtual void didExitRegion(const CircularRegion& /*region*/) {}
    /// What was asked for cannot be had now. Continuous services go on by themselves when it can.
    virtual void didFail(const LocationError& /*error*/) {}

    /// Told when the status has changed, and once after the delegate was set.
    virtual void didChangeAuthorization(LocationAuthorization /*status*/) {}
    virtual void didDetermineState(const CircularRegion& /*region*/, RegionState /*state*/) {}
    virtual void didStartMonitoring(const CircularRegion& /*region*/) {}
    virtual void monitoringDidFail(const CircularRegion& /*region*/, const LocationError& /*error*/) {}
    virtual void didFinishDeferredUpdates(const std::optional<LocationError>& /*error*/) {}
    /// Degrees from true north, clockwise.
    virtual void didUpdateHeading(double /*heading*/) {}
    virtual void didRangeBeacons(std::size_t /*count*/) {}
    virtual void didFailRanging(const std::string& /*constraint*/, const LocationError& /*error*/) {}
};

} // namespace quorvane::platform

#pragma once

#include <memory>
#include <optional>

#include "Platform/Location.h"

namespace quorvane::platform {

/// One user of the device's location services. Main thread only.
class LocationManager {
public:
    LocationManager() = default;
    LocationManager(const LocationManager&) = delete;
    LocationManager& operator=(const LocationManager&) = delete;
    virtual ~LocationManager() = default;

    /// The fix that the device had last, by whichever manager; none while there was none, or without permission.
    [[nodiscard]] virtual std::optional<Location> location() const = 0;
};

/// Makes location managers over the device's one receiver. Main thread only.
class LocationManagerFactory {
public:
    LocationManagerFactory() = default;
    LocationManagerFactory(const LocationManagerFactory&) = delete;
    LocationManagerFactory& operator=(const LocationManagerFactory&) = delete;
    virtual ~LocationManagerFactory() = default;

    /// Never null.
    [[nodiscard]] virtual std::unique_ptr<LocationManager> make() = 0;
};

/// For platforms that are told where the device is: every manager knows the one location that was set, if any.
class FixedLocationManagerFactory : public LocationManagerFactory {
public:
    [[nodiscard]] std::unique_ptr<LocationManager> make() override;

    /// None: the location is not known.
    void setLastLocation(const std::optional<Location>& location) { *last = location; }

private:
    std::shared_ptr<std::optional<Location>> last = std::make_shared<std::optional<Location>>();
};

} // namespace quorvane::platform

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/LocationManager.h"

namespace quorvane::platform::contract {

/// Location services with the device and its user in the suite's hands. Permission is given (`always`) at first, and
/// the device is nowhere. Everything is called on the main thread.
class LocationRig {
public:
    LocationRig() = default;
    LocationRig(const LocationRig&) = delete;
    LocationRig& operator=(const LocationRig&) = delete;
    virtual ~LocationRig() = default;

    [[nodiscard]] virtual LocationManagerFactory& locations() = 0;

    /// The device is there, and its receiver, as far as anybody wants it to run, has one fix of it, 5 metres accurate.
    virtual void moveTo(Coordinate coordinate) = 0;
    /// The receiver finds that it cannot tell where the device is.
    virtual void loseSignal() = 0;
    /// The user, or the system, takes permission away, or gives it back. Not called where none is needed.
    virtual void permit(bool permitted) = 0;

    /// Lets what is under way come to the delegates.
    virtual void settle() = 0;
};

using LocationRigMaker = std::unique_ptr<LocationRig> (*)();

/// Keeps what it is told, as words: "fix 46.0", "enter home", "fail denied".
class LocationListener : public LocationManagerDelegate {
public:
    void didUpdateLocations(const std::vector<Location>& locations) override {
        for (const Location& location : locations) {
            fixes.push_back(location);
            told.emplace_back("fix");
        }
    }
    void didEnterRegion(const CircularRegion& region) override { told.push_back("enter " + region.identifier); }
    void didExitRegion(const CircularRegion& region) override { told.push_back("exit " + region.identifier); }
    void didFail(const LocationError& error) override {
        told.emplace_back(error.kind == LocationError::Kind::denied ? "fail denied" : "fail");
    }
    void didChangeAuthorization(LocationAuthorization status) override { statuses.push_back(status); }
    void didDetermineState(const CircularRegion& region, RegionState state) override {
        told.push_back((state == RegionState::inside ? "inside " : "not inside ") + region.identifier);
    }
    void didStartMonitoring(const CircularRegion& region) override { told.push_back("monitors " + region.identifier); }
    void monitoringDidFail(const CircularRegion& region, const LocationError&) override {
        told.push_back("cannot monitor " + region.identifier);
    }

    std::vector<std::string> told;
    std::vector<Location> fixes;
    std::vector<LocationAuthorization> statuses;
};

} // namespace quorvane::platform::contract

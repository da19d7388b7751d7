#include "testing/SimulatedLocations.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"

namespace quorvane::testing {

using platform::CircularRegion;
using platform::Location;
using platform::LocationAuthorization;
using platform::LocationError;
using platform::LocationManagerDelegate;
using platform::RegionState;

class SimulatedLocations::Manager : public platform::LocationManager {
public:
    explicit Manager(SimulatedLocations& thePhone) : phone(thePhone) { phone.living.push_back(this); }
    ~Manager() override { std::erase(phone.living, this); }

    void setDelegate(LocationManagerDelegate* newDelegate) override {
        delegate = newDelegate;
        post([this](LocationManagerDelegate& told) { told.didChangeAuthorization(authorization()); });
    }

    [[nodiscard]] std::optional<Location> location() const override {
        return phone.isAuthorized() ? phone.kept->last : std::nullopt;
    }

    [[nodiscard]] LocationAuthorization authorization() const override { return phone.kept->authorization; }

    void requestAuthorization(Permission permission) override {
        const bool wantsAlways = permission == Permission::always;
        if (authorization() == LocationAuthorization::notDetermined ||
            (authorization() == LocationAuthorization::whenInUse && wantsAlways)) {
            phone.setAuthorization(phone.permissionAnswer.value_or(wantsAlways ? LocationAuthorization::always
                                                                               : LocationAuthorization::whenInUse));
        }
    }

    void setDesiredAccuracy(double metres) override { asked.desiredAccuracy = metres; }
    void setDistanceFilter(double metres) override { asked.distanceFilter = metres; }
    void setPausesLocationUpdatesAutomatically(bool pauses) override { asked.pausesAutomatically = pauses; }
    void setAllowsBackgroundLocationUpdates(bool allows) override { asked.allowsBackgroundUpdates = allows; }
    void setShowsBackgroundLocationIndicator(bool shows) override { asked.showsBackgroundIndicator = shows; }

    void requestLocation() override {
        ++asked.requests;
        asked.hasOpenRequest = phone.isAuthorized();
        failWithoutPermission();
    }

    void startUpdatingLocation() override {
        if (!std::exchange(asked.updates, true)) {
            lastTold.reset();
            failWithoutPermission();
        }
    }
    void stopUpdatingLocation() override { asked.updates = false; }

    void startMonitoringVisits() override { asked.visits = true; }
    void stopMonitoringVisits() override { asked.visits = false; }
    void startMonitoringSignificantLocationChanges() override { asked.significantChanges = true; }
    void stopMonitoringSignificantLocationChanges() override { asked.significantChanges = false; }

    void startMonitoring(const CircularRegion& region) override {
        const bool isCircle = region.radius > 0 && region.center.isValid();
        if (!isCircle || !phone.isAuthorized()) {
            const LocationError error =
                isCircle ? denied() : LocationError{LocationError::Kind::monitoring, "This is no circle."};
            post([region, error](LocationManagerDelegate& told) { told.monitoringDidFail(region, error); });
            return;
        }
        stopMonitoring(region);
        phone.kept->regions.push_back(region);
        post([this, region](LocationManagerDelegate& told) {
            told.didStartMonitoring(region);
            told.didDetermineState(region, phone.stateOf(region));
        });
    }

    void stopMonitoring(const CircularRegion& region) override {
        std::erase_if(phone.kept->regions,
                      [&](const CircularRegion& other) { return other.identifier == region.identifier; });
    }

    [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return phone.kept->regions; }

    /// Whether the manager wants @p fix, which is then no news any more.
    bool takes(const Location& fix) {
        const bool isFar = asked.distanceFilter < 0 || !lastTold || lastTold->distance(fix) >= asked.distanceFilter;
        const bool isUpdate = asked.updates && isFar;
        if (isUpdate) {
            lastTold = fix;
        }
        return std::exchange(asked.hasOpenRequest, false) || isUpdate;
    }

    bool takesFailure() { return std::exchange(asked.hasOpenRequest, false) || asked.updates; }

    /// Posts @p tell, for the delegate that there is then.
    void post(Tell tell) {
        phone.queue.post(lifetime.guard([this, tell = std::move(tell)] {
            if (delegate != nullptr) {
                tell(*delegate);
            }
        }));
    }

    Asked asked;
    LocationManagerDelegate* delegate = nullptr;

private:
    static LocationError denied() { return {LocationError::Kind::denied, "There is no permission."}; }

    void failWithoutPermission() {
        if (!phone.isAuthorized()) {
            post([](LocationManagerDelegate& told) { told.didFail(denied()); });
        }
    }

    SimulatedLocations& phone;
    std::optional<Location> lastTold;
    platform::Lifetime lifetime;
};

SimulatedLocations::SimulatedLocations(platform::MainQueue& theQueue, std::shared_ptr<Contents> contents)
    : queue(theQueue), kept(contents ? std::move(contents) : std::make_shared<Contents>()) {}

SimulatedLocations::~SimulatedLocations() = default;

std::unique_ptr<platform::LocationManager> SimulatedLocations::make() {
    return std::make_unique<Manager>(*this);
}

bool SimulatedLocations::isAuthorized() const {
    return platform::permitsLocations(kept->authorization);
}

void SimulatedLocations::receive(const Location& fix) {
    queue.post([this, fix] {
        kept->last = fix;
        tellAll([&](Manager& manager) { return manager.takes(fix); },
                [&](LocationManagerDelegate& delegate) { delegate.didUpdateLocations({fix}); });
    });
}

void SimulatedLocations::receiveSignificantChange(const Location& fix) {
    queue.post([this, fix] {
        kept->last = fix;
        tellAll([](Manager& manager) { return manager.asked.significantChanges; },
                [&](LocationManagerDelegate& delegate) { delegate.didUpdateLocations({fix}); });
    });
}

void SimulatedLocations::setLastLocation(const std::optional<Location>& location) {
    kept->last = location;
}

void SimulatedLocations::visit(const platform::Visit& visit) {
    post([](Manager& manager) { return manager.asked.visits; },
         [visit](LocationManagerDelegate& delegate) { delegate.didVisit(visit); });
}

void SimulatedLocations::enter(std::string_view identifier) {
    if (const CircularRegion* const region = find(identifier)) {
        post([](Manager&) { return true; },
             [region = *region](LocationManagerDelegate& delegate) { delegate.didEnterRegion(region); });
    }
}

void SimulatedLocations::exit(std::string_view identifier) {
    if (const CircularRegion* const region = find(identifier)) {
        post([](Manager&) { return true; },
             [region = *region](LocationManagerDelegate& delegate) { delegate.didExitRegion(region); });
    }
}

void SimulatedLocations::fail(const LocationError& error) {
    post([](Manager& manager) { return manager.takesFailure(); },
         [error](LocationManagerDelegate& delegate) { delegate.didFail(error); });
}

void SimulatedLocations::setAuthorization(LocationAuthorization status) {
    if (std::exchange(kept->authorization, status) != status) {
        for (Manager* const manager : living) {
            manager->post([status](LocationManagerDelegate& delegate) { delegate.didChangeAuthorization(status); });
        }
    }
}

void SimulatedLocations::answerPermissionWith(const std::optional<LocationAuthorization>& status) {
    permissionAnswer = status;
}

std::vector<SimulatedLocations::Asked> SimulatedLocations::managers() const {
    std::vector<Asked> result;
    std::transform(living.begin(), living.end(), std::back_inserter(result),
                   [](const Manager* manager) { return manager->asked; });
    return result;
}

void SimulatedLocations::post(std::function<bool(Manager&)> wants, Tell tell) {
    queue.post([this, wants = std::move(wants), tell = std::move(tell)] { tellAll(wants, tell); });
}

void SimulatedLocations::tellAll(const std::function<bool(Manager&)>& wants, const Tell& tell) {
    if (!isAuthorized()) {
        return;
    }
    const std::vector<Manager*> snapshot = living;
    for (Manager* const manager : snapshot) {
        const bool lives = std::find(living.begin(), living.end(), manager) != living.end();
        if (lives && wants(*manager) && manager->delegate != nullptr) {
            tell(*manager->delegate);
        }
    }
}

const CircularRegion* SimulatedLocations::find(std::string_view identifier) const {
    const auto found =
        std::find_if(kept->regions.begin(), kept->regions.end(),
                     [identifier](const CircularRegion& region) { return region.identifier == identifier; });
    return found == kept->regions.end() ? nullptr : &*found;
}

RegionState SimulatedLocations::stateOf(const CircularRegion& region) const {
    if (!kept->last) {
        return RegionState::unknown;
    }
    const bool isInside = platform::distance(kept->last->coordinate, region.center) <= region.radius;
    return isInside ? RegionState::inside : RegionState::outside;
}

} // namespace quorvane::testing

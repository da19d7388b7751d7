// How a simulated phone knows where it is, and what its application is told of it.

#include <algorithm>
#include <utility>

#include "testing/PhoneDevice.h"

namespace quorvane::testing {

using phone::LaunchReason;
using platform::DerivedLocations;
using platform::DesiredAccuracy;
using platform::LocationAuthorization;
using platform::LocationError;
using platform::LocationManager;

namespace {

/// Location services of an application that does not run: what they tell goes nowhere.
class ServicesForNobody : public DerivedLocations {
public:
    ServicesForNobody(const platform::Clock& theClock, SimulatedMainQueue& theQueue, std::shared_ptr<Kept> theKept)
        : DerivedLocations(theClock, theQueue, std::move(theKept)) {
        theQueue.close();
    }

private:
    void demandChanged() override {}
    void askForPermission(Permission) override {}
};

} // namespace

void SimulatedPhone::Device::follow(TrackPath::Source fixes) {
    place.reset();
    path.emplace(std::move(fixes));
    pathStart = now();
    senseNow = true;
    locationDemandChanged();
}

void SimulatedPhone::Device::moveTo(const platform::Location& newPlace) {
    path.reset();
    place = newPlace;
    senseNow = true;
    locationDemandChanged();
}

std::optional<platform::Location> SimulatedPhone::Device::position() {
    std::optional<platform::Location> fix = path ? path->at(now() - pathStart) : place;
    if (fix) {
        fix->horizontalAccuracy = forcedAccuracy.value_or(fix->horizontalAccuracy);
        fix->timestamp = clock->now();
    }
    return fix;
}

bool SimulatedPhone::Device::canFix() const {
    return hasSignal && (place || (path && path->start()));
}

bool SimulatedPhone::Device::isReceiverOn() const {
    return demand.updates && demand.updatesAccuracy < DesiredAccuracy::kilometer && hasSignal;
}

void SimulatedPhone::Device::countReceiverTime() {
    if (isReceiverOn()) {
        used.receiverTime += now() - countedAt;
    }
    countedAt = now();
}

bool SimulatedPhone::Device::wantsSamples() const {
    // Without permission for all times nothing is monitored while the application does not run.
    const bool mayMonitor = kept->authorization == LocationAuthorization::always || isRunning();
    return demand.updates || (demand.monitoring && mayMonitor);
}

void SimulatedPhone::Device::locationDemandChanged() {
    countReceiverTime();
    const bool hadUpdates = demand.updates;
    if (application) {
        demand = application->locationManagers().demand();
    } else {
        SimulatedMainQueue nowhere(*clock);
        demand = ServicesForNobody(*clock, nowhere, kept).demand();
    }
    noteWhatKeepsAlive();
    const bool wants = wantsSamples();
    senseNow = senseNow || (wants && !wantedSamples) || (demand.updates && !hadUpdates);
    wantedSamples = wants;
    updatesHaveFailed = updatesHaveFailed && demand.updates;
    const bool isWaitedFor = demand.request || (demand.updates && !updatesHaveFailed);
    if (!isWaitedFor || canFix()) {
        failAt.reset();
    } else if (!failAt) {
        failAt = now() + fixTimeout;
    }
}

std::optional<SimulatedPhone::Device::Nanoseconds> SimulatedPhone::Device::senseDue() const {
    if (!canFix()) {
        return failAt;
    }
    if (demand.request || (wantedSamples && senseNow)) {
        return now();
    }
    if (!wantedSamples) {
        return std::nullopt;
    }
    Nanoseconds due = sensedAt + (isReceiverOn() ? sampling : coarseSampling);
    if (path && pathStart + path->reached() > sensedAt) {
        due = now();
    } else if (const auto next = path ? path->next() : std::nullopt) {
        due = std::min(due, pathStart + *next);
    }
    return std::max(due, now());
}

void SimulatedPhone::Device::sense() {
    const std::optional<platform::Location> fix = hasSignal ? position() : std::nullopt;
    senseNow = false;
    sensedAt = now();
    if (!fix) {
        failWithoutFix();
        return;
    }
    updatesHaveFailed = false;
    if (!application) {
        senseForLaunch(*fix);
        return;
    }
    const bool wasRequested = demand.request;
    if (wasRequested) {
        ++used.fixRequests;
        const bool isExtra = !isReceiverOn() && demand.requestAccuracy < DesiredAccuracy::kilometer;
        used.receiverTime += isExtra ? timeToFix : Nanoseconds(0);
    }
    const DerivedLocations::Outcome outcome = application->locationManagers().receive(*fix);
    used.fixes += outcome.receivers;
    if (wasRequested) {
        locationDemandChanged();
    }
    if (outcome.events > 0 && kept->authorization == LocationAuthorization::always) {
        wake();
    }
}

void SimulatedPhone::Device::senseForLaunch(const platform::Location& fix) {
    SimulatedMainQueue nowhere(*clock);
    const auto ahead = std::make_shared<DerivedLocations::Kept>(*kept);
    if (ServicesForNobody(*clock, nowhere, ahead).receive(fix).events == 0) {
        *kept = *ahead;
        return;
    }
    ++used.wakeUps;
    launch(LaunchReason::location);
    used.fixes += application->locationManagers().receive(fix).receivers;
    locationDemandChanged();
}

void SimulatedPhone::Device::failWithoutFix() {
    failAt.reset();
    if (!application) {
        return;
    }
    if (demand.request && demand.requestAccuracy < DesiredAccuracy::kilometer && !isReceiverOn()) {
        used.receiverTime += fixTimeout;
    }
    updatesHaveFailed = demand.updates;
    application->locationManagers().fail({LocationError::Kind::unknown, "The receiver has no signal."});
    locationDemandChanged();
}

void SimulatedPhone::Device::askForPermission(LocationManager::Permission permission) {
    setAuthorization(options.permissionAnswer.value_or(permission == LocationManager::Permission::always
                                                           ? LocationAuthorization::always
                                                           : LocationAuthorization::whenInUse));
}

void SimulatedPhone::Device::setSignal(bool signal) {
    countReceiverTime();
    if (std::exchange(hasSignal, signal) == signal) {
        return;
    }
    senseNow = true;
    happened(phone::SignalChange{signal});
    locationDemandChanged();
}

void SimulatedPhone::Device::setAccuracy(const std::optional<double>& metres) {
    forcedAccuracy = metres;
    happened(phone::AccuracyChange{metres});
}

void SimulatedPhone::Device::setAuthorization(LocationAuthorization status) {
    if (kept->authorization == status) {
        return;
    }
    happened(phone::AuthorizationChange{status});
    if (application) {
        application->locationManagers().setAuthorization(status);
    } else {
        kept->authorization = status;
        locationDemandChanged();
    }
}

} // namespace quorvane::testing

#include "Platform/Support/DerivedLocations.h"

#include <algorithm>
#include <utility>

#include "Platform/Clock.h"
#include "Platform/MainQueue.h"
#include "Platform/Support/DerivedLocationManager.h"

namespace quorvane::platform {

/// What a fix gives to tell.
struct DerivedLocations::Report {
    struct Receiver {
        std::uint64_t manager = 0;
        bool wasRequest = false;
    };
    Location fix;
    std::vector<Receiver> receivers;
    bool isSignificant = false;
    std::vector<RegionMonitor::Finding> findings;
    std::optional<Visit> visit;
};

DerivedLocations::DerivedLocations(const Clock& theClock, MainQueue& theQueue, std::shared_ptr<Kept> kept)
    : clock(theClock),
      queue(theQueue),
      contents(kept ? std::move(kept) : std::make_shared<Kept>()),
      stayWatch(theQueue) {}

DerivedLocations::~DerivedLocations() = default;

std::unique_ptr<LocationManager> DerivedLocations::make() {
    return std::make_unique<Manager>(*this, ++lastId);
}

LocationError DerivedLocations::denied() {
    return {LocationError::Kind::denied, "The application has no permission to use the location."};
}

bool DerivedLocations::isAuthorized() const {
    return permitsLocations(contents->authorization);
}

DerivedLocations::Outcome DerivedLocations::receive(const Location& fix) {
    if (!isAuthorized()) {
        return {};
    }
    Report report{fix};
    contents->last = fix;
    if (fix.coordinate.isValid() && fix.horizontalAccuracy >= 0) {
        derive(fix, report);
    }
    for (Manager* const manager : living) {
        const bool wasRequest = manager->hasRequest;
        if (manager->takes(fix) ||
            (report.isSignificant && manager->isTold(manager->significantChanges, contents->keepsSignificantChanges))) {
            report.receivers.push_back({manager->id, wasRequest});
        }
    }
    Outcome outcome{report.receivers.size(), report.isSignificant || report.visit ? std::size_t{1} : 0};
    outcome.events += static_cast<std::size_t>(
        std::count_if(report.findings.begin(), report.findings.end(),
                      [](const RegionMonitor::Finding& finding) { return finding.isCrossing; }));
    if (!report.receivers.empty() || !report.findings.empty() || report.visit) {
        queue.post(lifetime.guard([this, report = std::move(report)] { tell(report); }));
    }
    return outcome;
}

void DerivedLocations::derive(const Location& fix, Report& report) {
    if (lastUsed == fix) {
        // The same one told again, for somebody who asks: it is no second witness.
        return;
    }
    const std::chrono::nanoseconds now = clock.monotonic();
    lastUsed = fix;
    lastUsedAt = now;
    if (!contents->regions.isEmpty()) {
        report.findings = contents->regions.receive(fix);
    }
    if (anyWantsVisits()) {
        report.visit = contents->visits.receive(fix, now);
        watchStay();
    }
    report.isSignificant = anyWantsSignificantChanges() && contents->significantChanges.receive(fix, now);
}

void DerivedLocations::tell(const Report& report) {
    if (!isAuthorized()) {
        // Permission has ended since the fix came. Who asked for it hears that at least.
        for (const Report::Receiver& receiver : report.receivers) {
            Manager* const manager = find(receiver.manager);
            const bool isWaiting = manager != nullptr && receiver.wasRequest && !manager->isUpdating();
            if (isWaiting && manager->delegate != nullptr) {
                manager->delegate->didFail(denied());
            }
        }
        return;
    }
    for (const Report::Receiver& receiver : report.receivers) {
        Manager* const manager = find(receiver.manager);
        const bool isWanted =
            manager != nullptr && (receiver.wasRequest || manager->isUpdating() || report.isSignificant);
        if (isWanted && manager->delegate != nullptr) {
            manager->delegate->didUpdateLocations({report.fix});
        }
    }
    for (const RegionMonitor::Finding& finding : report.findings) {
        if (finding.isCrossing) {
            forEach([&finding](Manager& manager) {
                if (finding.state == RegionState::inside) {
                    manager.delegate->didEnterRegion(finding.region);
                } else {
                    manager.delegate->didExitRegion(finding.region);
                }
            });
        } else {
            tellFirstState(finding);
        }
    }
    if (report.visit) {
        tellVisit(*report.visit);
    }
}

void DerivedLocations::tellVisit(const Visit& visit) {
    forEach([this, &visit](Manager& manager) {
        if (manager.isTold(manager.visits, contents->keepsVisits)) {
            manager.delegate->didVisit(visit);
        }
    });
}

void DerivedLocations::watchStay() {
    stayWatch.stop();
    const auto due = isSilentWhenStill() ? contents->visits.due() : std::nullopt;
    if (!due) {
        return;
    }
    stayWatch.start(*due - clock.monotonic(), [this] {
        if (!isAuthorized() || !anyWantsVisits()) {
            return;
        }
        if (const std::optional<Visit> visit = contents->visits.look(clock.monotonic())) {
            tellVisit(*visit);
        } else {
            watchStay();
        }
    });
}

void DerivedLocations::tellFirstState(const RegionMonitor::Finding& finding) {
    const auto found = std::find_if(undetermined.begin(), undetermined.end(), [&finding](const Undetermined& one) {
        return one.region == finding.region.identifier;
    });
    if (found == undetermined.end()) {
        return;
    }
    Manager* const manager = find(found->manager);
    undetermined.erase(found);
    if (manager != nullptr && manager->delegate != nullptr) {
        manager->delegate->didDetermineState(finding.region, finding.state);
    }
}

void DerivedLocations::fail(const LocationError& error) {
    stayWatch.stop();
    for (Manager* const manager : living) {
        if (std::exchange(manager->hasRequest, false) || manager->isUpdating()) {
            manager->fail(error);
        }
    }
}

void DerivedLocations::setAuthorization(LocationAuthorization status) {
    if (std::exchange(contents->authorization, status) == status) {
        return;
    }
    for (Manager* const manager : living) {
        manager->post([status](LocationManagerDelegate& told) { told.didChangeAuthorization(status); });
    }
    if (!isAuthorized()) {
        fail(denied());
        contents->regions.forgetStates();
        contents->visits.reset();
        contents->significantChanges.reset();
        lastUsed.reset();
    }
    demandChanged();
}

void DerivedLocations::setInBackground(bool background) {
    isInBackground = background;
    demandChanged();
}

void DerivedLocations::endLaunch() {
    contents->keepsVisits = anyWantsVisits();
    contents->keepsSignificantChanges = anyWantsSignificantChanges();
}

DerivedLocations::Demand DerivedLocations::demand() const {
    Demand result;
    if (!isAuthorized()) {
        return result;
    }
    for (const Manager* const manager : living) {
        if (manager->hasRequest) {
            result.request = true;
            result.requestAccuracy = (std::min)(result.requestAccuracy, manager->requestAccuracy);
        }
        if (manager->isUpdating()) {
            result.updates = true;
            result.updatesAccuracy = (std::min)(result.updatesAccuracy, manager->desiredAccuracy);
        }
        result.backgroundUpdates = result.backgroundUpdates || (manager->updates && manager->allowsBackground);
    }
    result.monitoring = !contents->regions.isEmpty() || anyWantsVisits() || anyWantsSignificantChanges();
    return result;
}

void DerivedLocations::startMonitoring(Manager& manager, const CircularRegion& region) {
    RegionMonitor& regions = contents->regions;
    const bool isCircle = region.radius > 0 && region.center.isValid();
    const bool isOneTooMany = !regions.has(region.identifier) && regions.regions().size() >= RegionMonitor::most;
    if (!isCircle || isOneTooMany || !isAuthorized()) {
        const LocationError problem{LocationError::Kind::monitoring,
                                    isCircle ? "There are too many regions." : "The region is no circle."};
        const LocationError error = isAuthorized() || !isCircle ? problem : denied();
        manager.post([region, error](LocationManagerDelegate& told) { told.monitoringDidFail(region, error); });
        return;
    }
    stopMonitoring(region);
    const bool isFresh = lastUsed && clock.monotonic() - lastUsedAt <= freshness;
    const RegionState state = regions.start(region, isFresh ? lastUsed : std::nullopt);
    if (state == RegionState::unknown) {
        undetermined.push_back({region.identifier, manager.id});
    }
    manager.post([region, state](LocationManagerDelegate& told) {
        told.didStartMonitoring(region);
        if (state != RegionState::unknown) {
            told.didDetermineState(region, state);
        }
    });
    demandChanged();
}

void DerivedLocations::stopMonitoring(const CircularRegion& region) {
    contents->regions.stop(region.identifier);
    std::erase_if(undetermined, [&region](const Undetermined& one) { return one.region == region.identifier; });
    demandChanged();
}

DerivedLocations::Manager* DerivedLocations::find(std::uint64_t id) const {
    const auto found = std::find_if(living.begin(), living.end(), [id](const Manager* one) { return one->id == id; });
    return found == living.end() ? nullptr : *found;
}

void DerivedLocations::forEach(const std::function<void(Manager&)>& visit) const {
    std::vector<std::uint64_t> ids;
    std::transform(living.begin(), living.end(), std::back_inserter(ids), [](const Manager* one) { return one->id; });
    for (const std::uint64_t id : ids) {
        Manager* const manager = find(id);
        if (manager != nullptr && manager->delegate != nullptr) {
            visit(*manager);
        }
    }
}

bool DerivedLocations::anyWantsVisits() const {
    return contents->keepsVisits ||
           std::any_of(living.begin(), living.end(), [](const Manager* one) { return one->visits; });
}

bool DerivedLocations::anyWantsSignificantChanges() const {
    return contents->keepsSignificantChanges ||
           std::any_of(living.begin(), living.end(), [](const Manager* one) { return one->significantChanges; });
}

} // namespace quorvane::platform

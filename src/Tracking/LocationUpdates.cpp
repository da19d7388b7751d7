#include "Tracking/LocationUpdates.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "Tracking/QVBackgroundTaskManager.h"

namespace quorvane {
namespace {

using TimerChange = observed::UpdateTimer::Change;

/// Longer than any application runs, and short enough to be counted in nanoseconds.
constexpr std::int64_t longestInterval = std::chrono::seconds(std::chrono::years(100)).count();

} // namespace

LocationUpdates::LocationUpdates(platform::Platform& thePlatform, platform::LocationManager& preciseManager,
                                 platform::LocationManager& lowPowerManager, const TrackingLog& theLog,
                                 const TrackingObservation& theObservation)
    : platform(thePlatform),
      precise(preciseManager),
      lowPower(lowPowerManager),
      log(theLog),
      observation(theObservation) {}

void LocationUpdates::start(std::int64_t interval) {
    if (started && startedInterval == interval) {
        log.verbose("Already started timer");
        return;
    }
    log.verbose([&] { return "Starting timer; interval = " + std::to_string(interval); });
    cancelShutdowns();
    if (started) {
        observation.tell([&] { return observed::UpdateTimer{TimerChange::stopped, startedInterval}; });
    }
    timer = std::make_unique<platform::Timer>(
        platform.clock(), platform.mainQueue(),
        std::chrono::seconds(std::clamp(interval, std::int64_t{0}, longestInterval)), [this] { tick(); });
    observation.tell([&] { return observed::UpdateTimer{TimerChange::started, interval}; });
    setCoarseUpdates(true);
    started = true;
    startedInterval = interval;
}

void LocationUpdates::stop(bool isHeldBack, std::chrono::seconds delay) {
    if (!timer) {
        return;
    }
    log.verbose("Stopping timer");
    timer->invalidate();
    if (std::exchange(started, false)) {
        observation.tell([&] { return observed::UpdateTimer{TimerChange::stopped, startedInterval}; });
    }
    startedInterval = 0;
    if (isHeldBack) {
        return;
    }
    log.verbose("Scheduling shutdown");
    observation.tell([&] {
        return observed::Shutdown{observed::Shutdown::Change::scheduled, static_cast<double>(delay.count())};
    });
    const auto ticket = std::make_shared<platform::MainQueue::Ticket>(0);
    *ticket = platform.mainQueue().postAfter(delay, lifetime.guard([this, ticket] {
        std::erase(shutdowns, *ticket);
        shutDown();
    }));
    shutdowns.push_back(*ticket);
}

void LocationUpdates::tick() {
    log.verbose("Timer fired");
    observation.tell([&] { return observed::UpdateTimer{TimerChange::fired, startedInterval}; });
    QVBackgroundTaskManager::shared().startBackgroundTask();
    log.verbose("Requesting location");
    observation.tell([] { return observed::LocationRequest{true, std::nullopt}; });
    precise.requestLocation();
}

void LocationUpdates::shutDown() {
    log.verbose("Shutting down");
    observation.tell([] { return observed::Shutdown{observed::Shutdown::Change::done, 0}; });
    QVBackgroundTaskManager::shared().endBackgroundTasks();
    setCoarseUpdates(false);
}

void LocationUpdates::setCoarseUpdates(bool run) {
    if (run) {
        lowPower.startUpdatingLocation();
    } else {
        lowPower.stopUpdatingLocation();
    }
    if (std::exchange(updatesCoarsely, run) != run) {
        observation.tell([&] { return observed::Service{observed::Service::Kind::coarseUpdates, run}; });
    }
}

void LocationUpdates::cancelShutdowns() {
    for (const platform::MainQueue::Ticket shutdown : std::exchange(shutdowns, {})) {
        platform.mainQueue().cancel(shutdown);
        observation.tell([] { return observed::Shutdown{observed::Shutdown::Change::cancelled, 0}; });
    }
}

} // namespace quorvane

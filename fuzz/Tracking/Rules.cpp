#include "fuzz/Tracking/Rules.h"

#include <algorithm>
#include <chrono>
#include <variant>

#include "Core/StoredTrackingOptions.h"
#include "Device/QVUtils.h"
#include "Tracking/QVBackgroundTaskManager.h"
#include "Tracking/QVLocationManager.h"
#include "fuzz/Require.h"

namespace quorvane::fuzz {
namespace {

using Outcome = observed::Fix::Outcome;
using Sync = QuorvaneTrackingOptions::Sync;

bool isAskedFor(QVLocationSource source) {
    return source == QVLocationSource::FOREGROUND_LOCATION || source == QVLocationSource::MANUAL_LOCATION;
}

bool isOwn(const platform::CircularRegion& region) {
    return region.identifier.starts_with("qv-visit-region");
}

} // namespace

void Caller::answered() {
    require(!isLost, "a completion of an application that has ended is called");
    require(++answers == 1, "a completion is called twice");
}

Rules::Rules(testing::SimulatedPlatform& thePlatform)
    : platform(thePlatform),
      isTracking(platform.preferences().boolean("quorvane_background_tracking").value_or(false)) {
    TrackingObservation::shared().setObserver(this);
}

Rules::~Rules() {
    TrackingObservation::shared().setObserver(nullptr);
}

void Rules::observe(const observed::Observation& observation) {
    std::visit([this](const auto& what) { see(what); }, observation);
}

void Rules::asked(const CallerPointer& caller) {
    askers.push_back(caller);
    if (caller->answers == 0) {
        waiting.push_back(caller);
    }
}

void Rules::syncs(const CallerPointer& caller, bool isSent) {
    syncers.push_back(caller);
    requests += isSent ? 1 : 0;
}

std::shared_ptr<const QuorvaneTrackingOptions> Rules::options() const {
    return StoredTrackingOptions::shared().current();
}

std::size_t Rules::ownGeofences() const {
    const auto& regions = platform.locationManagers().regions();
    return static_cast<std::size_t>(std::count_if(regions.begin(), regions.end(), &isOwn));
}

bool Rules::isForbidden(const observed::Fix& fix) const {
    const auto current = options();
    const auto lastSentAt = platform.preferences().date("quorvane_last_sent_at");
    const bool justStopped = fix.stoppedAfter && !fix.stoppedBefore;
    if (!lastSentAt || justStopped || !waiting.empty() || isReplaying) {
        return false;
    }
    const bool hasMoved = fix.stop->distance > static_cast<double>(current->stopDistance);
    const bool repeats = current->desiredStoppedUpdateInterval != 0 && current->sync == Sync::ALL;
    const bool stays = fix.stoppedAfter && fix.stoppedBefore && !hasMoved;
    if (stays && !repeats && !isAskedFor(fix.source)) {
        return true;
    }
    const double interval = std::chrono::duration<double>(platform.clock().now() - *lastSentAt).count();
    require(interval == fix.sync->lastSyncInterval, "the interval is another one");
    if (interval < static_cast<double>(current->desiredSyncInterval) || (interval < 1 && !isAskedFor(fix.source))) {
        return true;
    }
    const bool canExit = platform.preferences().boolean("quorvane_can_exit").value_or(false);
    return current->sync == Sync::NONE || (current->sync == Sync::STOPS_AND_EXITS && !canExit);
}

void Rules::see(const observed::Fix& fix) {
    if (fix.outcome == Outcome::old) {
        for (const CallerPointer& caller : waiting) {
            caller->waitsOn = true;
        }
    }
    if (fix.outcome != Outcome::processed) {
        require(!fix.sync, "a fix that was dropped was decided on");
        return;
    }
    require(QVUtils::isValidLocation(fix.location), "a location that is not valid was processed");
    const bool isSent = fix.sync->rule == SyncDecision::Rule::send;
    require(isSent != isForbidden(fix), isSent ? "a fix was sent against the rules" : "a fix was kept back");
    allowedSends += isSent && fix.source != QVLocationSource::FOREGROUND_LOCATION ? 1 : 0;
    isReplaying = false;
}

void Rules::see(const observed::Tracking& change) {
    using Cause = observed::Tracking::Cause;
    const platform::Date now = platform.clock().now();
    const auto current = options();
    if (change.cause == Cause::startDate) {
        require(!isTracking && change.isOn && current->startTrackingAfter && *current->startTrackingAfter < now,
                "tracking began before its date");
    } else if (change.cause == Cause::stopDate) {
        require(isTracking && !change.isOn && current->stopTrackingAfter && *current->stopTrackingAfter < now,
                "tracking ended before its date");
    }
    isTracking = change.isOn;
    require(platform.preferences().boolean("quorvane_background_tracking") == isTracking,
            "what is stored is not what was told");
}

void Rules::see(const observed::UpdateTimer& timer) {
    using Change = observed::UpdateTimer::Change;
    if (timer.change == Change::stopped) {
        require(isTimerRunning, "a timer was stopped that did not run");
        isTimerRunning = false;
        return;
    }
    require(isTracking, "the timer runs while tracking is off");
    require(isTimerRunning == (timer.change == Change::fired), "two timers run, or one fires that does not");
    isTimerRunning = true;
}

void Rules::see(const observed::Answer& answer) {
    require(answer.callers == waiting.size(), "not all who wait are answered");
    waiting.clear();
}

void Rules::see(const observed::Send& send) {
    using Change = observed::Send::Change;
    require(send.source != QVLocationSource::FOREGROUND_LOCATION, "a fix that was asked for is sent by the pipeline");
    require(!send.replayed || send.stopped, "what is replayed was a stop");
    if (send.change == Change::begun || send.change == Change::dropped) {
        require(++sends <= allowedSends, "a location is sent that no decision allowed");
    }
    requests += send.change == Change::begun ? 1 : 0;
}

void Rules::see(const observed::FailedStop& stop) {
    isReplaying = stop.isReplayed;
    require(!stop.isReplayed || QVUtils::isValidLocation(stop.location), "a stop that is not valid was kept");
}

void Rules::check() const {
    require(ownGeofences() <= 1, "there are several geofences");
    require(isTracking || !isTimerRunning, "the timer still runs after the end of tracking");
    require(platform.transport().requests().size() == requests, "there are requests besides the syncs");
    require(static_cast<std::size_t>(platform.application().openBackgroundTaskCount()) ==
                QVBackgroundTaskManager::shared().backgroundTaskIds().size(),
            "a grant is held that nobody knows of");
}

void Rules::checkTimeouts() const {
    for (const CallerPointer& caller : askers) {
        require(caller->answers == 1 || caller->waitsOn, "somebody waits without a timeout");
    }
    for (const CallerPointer& caller : syncers) {
        require(caller->answers == 1, "a sync has no end");
    }
}

void Rules::checkEnd() const {
    for (const CallerPointer& caller : askers) {
        require(caller->answers == 1, "a fix did not answer everybody");
    }
    require(sends == allowedSends, "a location that was to be sent was not");
    require(platform.transport().openCount() == 0, "a request has no end");
    require(QVBackgroundTaskManager::shared().backgroundTaskIds().empty(), "a grant has no end");
    require(!isTracking && ownGeofences() == 0, "tracking has no end");
    require(!platform.locationManagers().managers().at(1).updates, "the coarse updates have no end");
}

void Rules::loseCallers() const {
    for (const auto* const callers : {&askers, &syncers}) {
        for (const CallerPointer& caller : *callers) {
            caller->isLost = true;
        }
    }
}

} // namespace quorvane::fuzz

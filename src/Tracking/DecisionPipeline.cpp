#include "Device/QVUtils.h"
#include "JSON/NumberText.h"
#include "Models/DateDescription.h"
#include "Platform/Clock.h"
#include "Tracking/Descriptions.h"
#include "Tracking/LocationManagerParts.h"
#include "Tracking/LocationSource.h"
#include "Tracking/StopDetection.h"
#include "Tracking/SyncDecision.h"

namespace quorvane {
namespace {

using Outcome = observed::Fix::Outcome;
using Rule = SyncDecision::Rule;
using Source = QVLocationSource;

/// Metres from which on a fix of a stopped user says nothing.
constexpr double worstAccuracy = 1000;

constexpr double shortestSendInterval = 1;
constexpr std::chrono::seconds sendDelay{2};

bool isInaccurate(const QuorvaneTrackingOptions& options, const platform::Location& fix, Source source,
                  bool wasStopped) {
    return !isForced(source) && wasStopped && fix.horizontalAccuracy >= worstAccuracy &&
           options.desiredAccuracy != QuorvaneTrackingOptions::DesiredAccuracy::LOW;
}

std::string stopText(const StopDecision& decision, platform::Date timestamp) {
    return "    calculating stopped |\n    \tstopped = " + std::string(trueOrFalse(decision.stopped)) +
           ";\n    \tdistance = " + json::textOf(decision.distance) +
           ";\n    \tduration = " + json::textOf(decision.duration) +
           ";\n    \tlocation.timestamp = " + descriptionOf(timestamp) +
           ";\n    \tlastMovedAt = " + descriptionOf(decision.lastMovedAt);
}

/// Logs why a location is not sent.
void logSkip(const TrackingLog& log, const QuorvaneTrackingOptions& options, const SyncDecision& decision) {
    const double interval = decision.lastSyncInterval;
    switch (decision.rule) {
        case Rule::alreadyStopped:
            log.verbose("Skipping sync: already stopped | stopped = true; wasStopped = true");
            break;
        case Rule::desiredSyncInterval:
            log.verbose([&] {
                return "    skipping sync: desired sync interval |\n    \tdesiredSyncInterval = " +
                       std::to_string(options.desiredSyncInterval) +
                       ";\n    \tlastSyncInterval = " + json::textOf(interval);
            });
            break;
        case Rule::rateLimit:
            log.always(QVLogLevel::INFO, [interval] {
                return "Skipping sync: rate limit | justStopped = false; lastSyncInterval = " + json::textOf(interval);
            });
            break;
        case Rule::syncMode:
            log.always(QVLogLevel::INFO, [sync = options.sync] {
                return "Skipping sync: sync mode | sync = " + std::string(textOf(sync));
            });
            break;
        case Rule::cantExit:
            // In lower case, unlike the others: hosts look for the line as it is.
            log.always(QVLogLevel::INFO, [sync = options.sync] {
                return "skipping sync: can't exit |\n\tsync = " + std::string(textOf(sync)) + ";\n\tcanExit = false";
            });
            break;
        case Rule::send:
            break;
    }
}

} // namespace

void QVLocationManager::handleLocation(const std::optional<platform::Location>& location, Source source) {
    if (!location) {
        return;
    }
    Parts& p = *parts;
    observed::Fix record{*location, source};
    if (!QVUtils::isValidLocation(location)) {
        p.dropInvalid(record);
        return;
    }
    const auto tell = [&](Outcome outcome) {
        record.outcome = outcome;
        p.observation.tell([&] { return record; });
    };

    const auto options = p.options.current();
    const std::optional<bool> storedStopped = p.state.stopped();
    record.stoppedBefore = record.stoppedAfter = storedStopped.value_or(false);
    if (isInaccurate(*options, *location, source, record.stoppedBefore)) {
        p.log.verbose(
            [&] { return "Skipping location: inaccurate | accuracy = " + json::textOf(location->horizontalAccuracy); });
        tell(Outcome::inaccurate);
        updateTracking(location);
        return;
    }

    p.handlers.cancelTimeouts();
    record.stop = p.decideStop(*options, *location, source);
    if (record.stop->isOld) {
        tell(Outcome::old);
        return;
    }

    record.stoppedAfter = record.stop->stopped;
    if (storedStopped != record.stoppedAfter) {
        p.state.setStopped(record.stoppedAfter);
    }
    if (const auto receiver = delegate.lock()) {
        receiver->onClientLocationUpdated(*location, record.stoppedAfter, source);
    }
    if (source != Source::MANUAL_LOCATION) {
        updateTracking(location);
    }
    p.handlers.call(QVStatus::SUCCESS, location);

    const bool justStopped = record.stoppedAfter && !record.stoppedBefore;
    const std::optional<platform::Location> failed = justStopped ? std::nullopt : p.takeFailedStop(*options);
    const SyncInput input = p.syncInput(*options, record, failed);
    // Asked anew: delegate and callers may have taken their time.
    const platform::Date now = p.platform.clock().now();
    const SyncDecision sync = decideSync(*options, input, now);
    record.sync = sync;
    tell(Outcome::processed);
    if (sync.rule != Rule::send) {
        logSkip(p.log, *options, sync);
        return;
    }

    p.state.setLastSentAt(now);
    // Whoever asked for the location sends it.
    if (source != Source::FOREGROUND_LOCATION) {
        p.sendNowOrSoon(*this, failed.value_or(*location), input, sync.lastSyncInterval);
    }
}

void QVLocationManager::Parts::dropInvalid(observed::Fix fix) {
    log.verbose([&] {
        return "Invalid location | source = " + std::string(nameOf(fix.source)) +
               "; location = " + descriptionOf(std::optional(fix.location));
    });
    fix.stoppedBefore = fix.stoppedAfter = state.isStopped();
    fix.outcome = Outcome::invalid;
    observation.tell([&] { return fix; });
    handlers.call(QVStatus::ERROR_LOCATION, std::nullopt);
}

SyncInput QVLocationManager::Parts::syncInput(const QuorvaneTrackingOptions& current, const observed::Fix& fix,
                                              const std::optional<platform::Location>& failed) const {
    SyncInput input;
    input.source = fix.source;
    input.stopped = fix.stoppedAfter || failed;
    input.wasStopped = fix.stoppedBefore;
    input.justStopped = fix.stoppedAfter && !fix.stoppedBefore;
    input.replayed = failed.has_value();
    input.hasHandlers = !handlers.isEmpty();
    input.distance = fix.stop->distance;
    input.canExit = current.sync == QuorvaneTrackingOptions::Sync::STOPS_AND_EXITS && state.canExit();
    input.lastSentAt = state.lastSentAt();
    return input;
}

void QVLocationManager::Parts::sendNowOrSoon(QVLocationManager& manager, const platform::Location& location,
                                             const SyncInput& input, double lastSyncInterval) {
    if (lastSyncInterval >= shortestSendInterval) {
        manager.sendLocation(location, input.stopped, input.source, input.replayed);
        return;
    }
    log.verbose("Scheduling location send");
    scheduled = true;
    observation.tell([&] {
        return observed::Send{observed::Send::Change::scheduled, location, input.stopped, input.source, input.replayed};
    });
    platform.mainQueue().postAfter(sendDelay, lifetime.guard([this, &manager, location, stopped = input.stopped,
                                                              source = input.source, replayed = input.replayed] {
        manager.sendLocation(location, stopped, source, replayed);
        scheduled = false;
    }));
}

StopDecision QVLocationManager::Parts::decideStop(const QuorvaneTrackingOptions& current, const platform::Location& fix,
                                                  Source source) {
    LastMove last;
    if (detectsStops(current)) {
        last = {state.lastMovedLocation(), state.lastMovedAt()};
    }
    const StopDecision decision = detectStop(current, fix, source, last, platform.clock());
    if (decision.setsLastMovedLocation) {
        state.setLastMovedLocation(fix);
    }
    if (decision.setsLastMovedAt) {
        state.setLastMovedAt(fix.timestamp);
    }
    if (decision.isOld) {
        log.always(QVLogLevel::DEBUG, [lastMovedAt = decision.lastMovedAt, timestamp = fix.timestamp] {
            return "Skipping location: old | lastMovedAt = " + descriptionOf(lastMovedAt) +
                   "; location.timestamp = " + descriptionOf(timestamp);
        });
    } else if (decision.isDetecting) {
        log.always(QVLogLevel::DEBUG, [decision, timestamp = fix.timestamp] { return stopText(decision, timestamp); });
    }
    return decision;
}

std::optional<platform::Location> QVLocationManager::Parts::takeFailedStop(const QuorvaneTrackingOptions& current) {
    if (current.replay != QuorvaneTrackingOptions::Replay::STOPS) {
        return std::nullopt;
    }
    std::optional<platform::Location> failed = state.lastFailedStoppedLocation();
    if (failed) {
        // Gone before it is decided whether it is sent.
        state.setLastFailedStoppedLocation(std::nullopt);
        log.verbose([&] { return "Replaying location | location = " + descriptionOf(failed) + "; stopped = true"; });
        observation.tell([&] { return observed::FailedStop{true, *failed}; });
    }
    return failed;
}

} // namespace quorvane

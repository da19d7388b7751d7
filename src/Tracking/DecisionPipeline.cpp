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
    const auto tell = [&](Outcome outcome) {
        record.outcome = outcome;
        p.observation.tell([&] { return record; });
    };

    if (!QVUtils::isValidLocation(location)) {
        p.log.verbose([&] {
            return "Invalid location | source = " + std::string(nameOf(source)) +
                   "; location = " + descriptionOf(location);
        });
        record.stoppedBefore = record.stoppedAfter = p.state.isStopped();
        tell(Outcome::invalid);
        p.handlers.call(QVStatus::ERROR_LOCATION, std::nullopt);
        return;
    }

    const auto options = p.options.current();
    const std::optional<bool> storedStopped = p.state.stopped();
    const bool wasStopped = storedStopped.value_or(false);
    record.stoppedBefore = record.stoppedAfter = wasStopped;
    if (isInaccurate(*options, *location, source, wasStopped)) {
        p.log.verbose(
            [&] { return "Skipping location: inaccurate | accuracy = " + json::textOf(location->horizontalAccuracy); });
        tell(Outcome::inaccurate);
        updateTracking(location);
        return;
    }

    p.handlers.cancelTimeouts();
    const StopDecision stop = p.decideStop(*options, *location, source);
    record.stop = stop;
    if (stop.isOld) {
        tell(Outcome::old);
        return;
    }

    if (storedStopped != stop.stopped) {
        p.state.setStopped(stop.stopped);
    }
    record.stoppedAfter = stop.stopped;
    if (const auto receiver = delegate.lock()) {
        receiver->onClientLocationUpdated(*location, stop.stopped, source);
    }
    if (source != Source::MANUAL_LOCATION) {
        updateTracking(location);
    }
    const bool justStopped = stop.stopped && !wasStopped;
    p.handlers.call(QVStatus::SUCCESS, location);

    const std::optional<platform::Location> failed = justStopped ? std::nullopt : p.takeFailedStop(*options);
    SyncInput input;
    input.source = source;
    input.stopped = stop.stopped || failed;
    input.wasStopped = wasStopped;
    input.justStopped = justStopped;
    input.replayed = failed.has_value();
    input.hasHandlers = !p.handlers.isEmpty();
    input.distance = stop.distance;
    input.canExit = options->sync == QuorvaneTrackingOptions::Sync::STOPS_AND_EXITS && p.state.canExit();
    input.lastSentAt = p.state.lastSentAt();
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
    if (source == Source::FOREGROUND_LOCATION) {
        return;
    }
    const platform::Location toSend = failed.value_or(*location);
    if (sync.lastSyncInterval >= shortestSendInterval) {
        sendLocation(toSend, input.stopped, source, input.replayed);
        return;
    }
    p.log.verbose("Scheduling location send");
    p.scheduled = true;
    p.observation.tell([&] {
        return observed::Send{observed::Send::Change::scheduled, toSend, input.stopped, source, input.replayed};
    });
    p.platform.mainQueue().postAfter(
        sendDelay, p.lifetime.guard([this, toSend, stopped = input.stopped, source, replayed = input.replayed] {
            sendLocation(toSend, stopped, source, replayed);
            parts->scheduled = false;
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

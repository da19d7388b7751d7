#include "Tracking/SyncDecision.h"

#include "Tracking/LocationSource.h"
#include "Tracking/Seconds.h"

namespace quorvane {
namespace {

using Rule = SyncDecision::Rule;
using Force = SyncDecision::Force;
using Sync = QuorvaneTrackingOptions::Sync;

constexpr double shortestSyncInterval = 1;

Force forceOf(const SyncInput& input) {
    if (!input.lastSentAt) {
        return Force::neverSent;
    }
    if (input.justStopped) {
        return Force::justStopped;
    }
    if (input.hasHandlers) {
        return Force::waitingHandlers;
    }
    return input.replayed ? Force::replay : Force::none;
}

/// Whether the user has been stopped all along, in options that send a stop once.
bool isAlreadyStopped(const QuorvaneTrackingOptions& options, const SyncInput& input) {
    const bool hasMoved = input.distance > static_cast<double>(options.stopDistance);
    const bool sendsWhileStopped = options.desiredStoppedUpdateInterval != 0 && options.sync == Sync::ALL;
    return !isForced(input.source) && input.stopped && input.wasStopped && !hasMoved && !sendsWhileStopped;
}

Rule ruleFor(const QuorvaneTrackingOptions& options, const SyncInput& input, double lastSyncInterval) {
    if (isAlreadyStopped(options, input)) {
        return Rule::alreadyStopped;
    }
    if (lastSyncInterval < static_cast<double>(options.desiredSyncInterval)) {
        return Rule::desiredSyncInterval;
    }
    if (lastSyncInterval < shortestSyncInterval && !isForced(input.source) && !input.justStopped) {
        return Rule::rateLimit;
    }
    if (options.sync == Sync::NONE) {
        return Rule::syncMode;
    }
    if (options.sync == Sync::STOPS_AND_EXITS && !input.canExit) {
        return Rule::cantExit;
    }
    return Rule::send;
}

} // namespace

SyncDecision decideSync(const QuorvaneTrackingOptions& options, const SyncInput& input, platform::Date now) {
    SyncDecision decision;
    decision.lastSyncInterval = input.lastSentAt ? secondsBetween(*input.lastSentAt, now) : 0;
    decision.force = forceOf(input);
    if (decision.force == Force::none) {
        decision.rule = ruleFor(options, input, decision.lastSyncInterval);
    }
    return decision;
}

} // namespace quorvane

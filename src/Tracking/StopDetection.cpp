#include "Tracking/StopDetection.h"

#include "Tracking/LocationSource.h"
#include "Tracking/Seconds.h"

namespace quorvane {

StopDecision detectStop(const QuorvaneTrackingOptions& options, const platform::Location& fix, QVLocationSource source,
                        const LastMove& last, const platform::Clock& clock) {
    StopDecision decision;
    const bool isArrival = source == QVLocationSource::VISIT_ARRIVAL;
    if (!detectsStops(options)) {
        decision.stopped = isArrival || isForced(source);
        return decision;
    }

    decision.isDetecting = true;
    decision.setsLastMovedLocation = !last.location;
    decision.setsLastMovedAt = !last.at;
    decision.lastMovedAt = last.at.value_or(fix.timestamp);
    if (!isForced(source) && decision.lastMovedAt > fix.timestamp) {
        decision.isOld = true;
        return decision;
    }

    decision.distance = last.location ? last.location->distance(fix) : fix.distance(fix);
    decision.duration = secondsBetween(decision.lastMovedAt, fix.timestamp);
    if (decision.duration == 0) {
        decision.duration = secondsBetween(fix.timestamp, clock.now());
    }
    const auto stopDistance = static_cast<double>(options.stopDistance);
    const auto stopDuration = static_cast<double>(options.stopDuration);
    decision.stopped = (decision.distance <= stopDistance && decision.duration >= stopDuration) || isArrival;
    decision.moved = decision.distance > stopDistance;
    if (decision.moved) {
        decision.setsLastMovedLocation = true;
        decision.setsLastMovedAt = decision.setsLastMovedAt || !decision.stopped;
    }
    return decision;
}

} // namespace quorvane

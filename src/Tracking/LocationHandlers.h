#pragma once

#include <optional>
#include <vector>

#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"
#include "Tracking/QVLocationManager.h"
#include "Tracking/TrackingLog.h"
#include "Tracking/TrackingObserver.h"
#include "Tracking/TrackingState.h"

namespace quorvane {

/// The callers who wait for one location. Main thread only.
///
/// The list is touched on a serial queue that is new for each call, so that no call excludes another: it is the main
/// thread that keeps them in order.
class LocationHandlers {
public:
    using Completion = QVLocationManager::LocationCompletion;

    LocationHandlers(platform::MainQueue& queue, const TrackingState& state, const TrackingLog& log,
                     const TrackingObservation& observation);

    /// Adds a caller, who is answered with `ERROR_LOCATION`, together with all others, when 20 seconds have passed.
    void add(const Completion& completion);

    /// Answers everybody, in the order in which they came. The list is empty before the first of them is called: who is
    /// added meanwhile waits for the next answer.
    void call(QVStatus status, const std::optional<platform::Location>& location);

    /// Lets everybody wait for as long as it takes.
    void cancelTimeouts();

    [[nodiscard]] bool isEmpty() const { return handlers.empty(); }

private:
    struct Handler {
        Completion completion;
        platform::MainQueue::Ticket timeout = 0;
    };

    void answer(QVStatus status, const std::optional<platform::Location>& location, bool timedOut);

    platform::MainQueue& queue;
    const TrackingState& state;
    const TrackingLog& log;
    const TrackingObservation& observation;
    std::vector<Handler> handlers;
    platform::Lifetime lifetime;
};

} // namespace quorvane

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/Lifetime.h"
#include "Platform/LocationManager.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"
#include "Platform/Timer.h"
#include "Tracking/TrackingLog.h"
#include "Tracking/TrackingObserver.h"

namespace quorvane {

/// The timer that asks for a location at each tick, and the coarse updates that keep the application running in the
/// background while it does. Main thread only.
class LocationUpdates {
public:
    LocationUpdates(platform::Platform& platform, platform::LocationManager& precise,
                    platform::LocationManager& lowPower, const TrackingLog& log,
                    const TrackingObservation& observation);

    /// Ticks every @p interval seconds from now on. Does nothing where it does so already.
    void start(std::int64_t interval);

    /// Ends the ticking, and shuts down later: after @p delay, unless @p isHeldBack. A timer that was ended still is
    /// there, so that a shutdown that was held back comes with the next call; where there never was a timer, nothing is
    /// done.
    void stop(bool isHeldBack, std::chrono::seconds delay);

private:
    void tick();
    void shutDown();
    void setCoarseUpdates(bool run);
    void cancelShutdowns();

    platform::Platform& platform;
    platform::LocationManager& precise;
    platform::LocationManager& lowPower;
    const TrackingLog& log;
    const TrackingObservation& observation;
    std::unique_ptr<platform::Timer> timer;
    bool started = false;
    std::int64_t startedInterval = 0;
    bool updatesCoarsely = false;
    std::vector<platform::MainQueue::Ticket> shutdowns;
    platform::Lifetime lifetime;
};

} // namespace quorvane

#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "Models/QuorvaneTrackingOptions.h"
#include "Tracking/TrackingObserver.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::fuzz {

/// One completion that was passed, and how often it was called.
struct Caller {
    /// Call when the completion is.
    void answered();

    int answers = 0;
    /// Its application ended: it is not called any more.
    bool isLost = false;
    /// A fix older than the last move came while it waited, which ends its timeout: it may wait for ever.
    bool waitsOn = false;
};
using CallerPointer = std::shared_ptr<Caller>;

/// Watches one launch of an application, and ends the program where tracking breaks one of its promises:
/// - a completion is called once at most, and once in the end unless a fix that was too old ended its timeout;
/// - the timer runs only while tracking is on, and only the host, or a date of the options that has passed, switches
///   it on;
/// - at most one geofence of the library is monitored;
/// - a location is sent where the rules, written down here a second time, allow it, and nowhere else.
class Rules : public TrackingObserver {
public:
    /// @p thePlatform, the one in use, outlives the rules.
    explicit Rules(testing::SimulatedPlatform& thePlatform);
    ~Rules() override;

    void observe(const observed::Observation& observation) override;

    /// Somebody waits for one location.
    void asked(const CallerPointer& caller);
    /// Somebody waits for a sync, which is a request of its own where @p isSent.
    void syncs(const CallerPointer& caller, bool isSent);

    /// Called when nothing is left to do at this moment.
    void check() const;
    /// Called when all timeouts are over: nobody waits but those who wait on.
    void checkTimeouts() const;
    /// Called when a fix was processed since, and everything is over.
    void checkEnd() const;
    /// The application ends.
    void loseCallers() const;

private:
    void see(const observed::Fix& fix);
    void see(const observed::Tracking& change);
    void see(const observed::UpdateTimer& timer);
    void see(const observed::Answer& answer);
    void see(const observed::Send& send);
    void see(const observed::FailedStop& stop);
    template <class Other>
    void see(const Other&) {}

    [[nodiscard]] bool isForbidden(const observed::Fix& fix) const;
    [[nodiscard]] std::shared_ptr<const QuorvaneTrackingOptions> options() const;
    [[nodiscard]] std::size_t ownGeofences() const;

    testing::SimulatedPlatform& platform;
    bool isTracking;
    bool isTimerRunning = false;
    bool isReplaying = false;
    std::vector<CallerPointer> askers;
    std::vector<CallerPointer> syncers;
    /// Those of the askers who are on the list now.
    std::vector<CallerPointer> waiting;
    std::size_t allowedSends = 0;
    std::size_t sends = 0;
    std::size_t requests = 0;
};

} // namespace quorvane::fuzz

#include "testing/SimulatedPlatform.h"

#include "Platform/Precondition.h"

namespace quorvane::testing {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using RealClock = std::chrono::steady_clock;

std::shared_ptr<SimulatedPlatform> SimulatedPlatform::make(const SimulatedOptions& options) {
    return std::shared_ptr<SimulatedPlatform>(new SimulatedPlatform(options));
}

SimulatedPlatform::SimulatedPlatform(const SimulatedOptions& options)
    : initial(options),
      simulatedClock(options.clock ? options.clock
                                   : std::make_shared<SimulatedClock>(options.start, options.offsetFromUTC)),
      simulatedQueue(*simulatedClock),
      simulatedApplication(simulatedQueue),
      memoryPreferences(options.preferences,
                        [this](std::string_view line) { simulatedApplication.standardOutput(line); }),
      memoryFiles(*simulatedClock, options.files),
      simulatedRandom(options.seed),
      simulatedLocations(simulatedQueue, options.locations),
      scriptedTransport(simulatedQueue) {
    if (options.transport) {
        scriptedTransport.setRealTransport(options.transport(*this));
    }
}

SimulatedPlatform::~SimulatedPlatform() = default;

bool SimulatedPlatform::advance(nanoseconds duration) {
    QV_PRECONDITION(duration.count() >= 0, "virtual time advances by a duration that is not negative");
    QV_PRECONDITION(!simulatedQueue.isRunning(), "work of the main queue must not move virtual time");
    const nanoseconds end = simulatedClock->monotonic() + duration;
    bool orderly = runThisMoment();
    for (auto due = simulatedQueue.nextDue(); due && *due <= end; due = simulatedQueue.nextDue()) {
        simulatedClock->moveForward(*due - simulatedClock->monotonic());
        orderly = runThisMoment() && orderly;
    }
    if (simulatedClock->monotonic() < end) {
        simulatedClock->moveForward(end - simulatedClock->monotonic());
        orderly = runThisMoment() && orderly;
    }
    return orderly;
}

bool SimulatedPlatform::runThisMoment() {
    if (runUntilIdle()) {
        return true;
    }
    // Posted work without an end must not keep delayed work from running at its time.
    for (std::size_t waiting = simulatedQueue.delayedCount(); waiting > 0 && simulatedQueue.runNextDelayed();) {
        --waiting;
    }
    return false;
}

bool SimulatedPlatform::runUntilIdle(int maxSteps) {
    int steps = 0;
    while (steps < maxSteps) {
        if (simulatedQueue.runNext()) {
            ++steps;
        } else if (simulatedQueue.isSuspended() || scriptedTransport.realRequestsInFlight() == 0) {
            return true;
        } else if (!simulatedQueue.waitForPost(maxRealWait)) {
            simulatedApplication.standardOutput("A real service has not answered within 15 seconds.");
            return false;
        }
    }
    return !simulatedQueue.hasWork() && scriptedTransport.realRequestsInFlight() == 0;
}

bool SimulatedPlatform::runUntil(const std::function<bool()>& condition, milliseconds realTime) {
    const RealClock::time_point giveUp = RealClock::now() + realTime;
    while (!condition()) {
        const auto left = std::chrono::ceil<milliseconds>(giveUp - RealClock::now());
        if (left.count() <= 0 || (!simulatedQueue.runNext() && !simulatedQueue.waitForPost(left))) {
            return condition();
        }
    }
    return true;
}

SimulatedOptions SimulatedPlatform::nextLaunch() const {
    SimulatedOptions next = initial;
    next.start = simulatedClock->now();
    next.offsetFromUTC = simulatedClock->offsetFromUTC(next.start);
    next.preferences = memoryPreferences.contents();
    next.files = memoryFiles.contents();
    next.locations = simulatedLocations.contents();
    ++next.seed;
    return next;
}

} // namespace quorvane::testing

#include "testing/SimulatedClock.h"

#include "Platform/Precondition.h"

namespace quorvane::testing {

SimulatedClock::SimulatedClock(platform::Date now, std::chrono::seconds offsetFromUTC)
    : wall(now), offset(offsetFromUTC) {}

platform::Date SimulatedClock::now() const {
    const std::lock_guard lock(mutex);
    return wall;
}

std::chrono::nanoseconds SimulatedClock::monotonic() const {
    const std::lock_guard lock(mutex);
    return elapsed;
}

std::chrono::seconds SimulatedClock::offsetFromUTC(platform::Date /*moment*/) const {
    const std::lock_guard lock(mutex);
    return offset;
}

void SimulatedClock::moveForward(std::chrono::nanoseconds duration) {
    QV_PRECONDITION(duration.count() >= 0, "a clock moves forward by a duration that is not negative");
    const std::lock_guard lock(mutex);
    wall += duration;
    elapsed += duration;
}

void SimulatedClock::setWallTime(platform::Date now) {
    const std::lock_guard lock(mutex);
    wall = now;
}

void SimulatedClock::setOffsetFromUTC(std::chrono::seconds newOffset) {
    const std::lock_guard lock(mutex);
    offset = newOffset;
}

} // namespace quorvane::testing

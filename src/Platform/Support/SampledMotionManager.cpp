#include "Platform/Support/SampledMotionManager.h"

#include <utility>

namespace quorvane::platform {

SampledMotionManager::SampledMotionManager(Clock& theClock, MainQueue& theQueue, Sample theSample)
    : clock(theClock), queue(theQueue), sample(std::move(theSample)) {}

void SampledMotionManager::startAccelerometerUpdates(std::chrono::nanoseconds interval, Handler theHandler) {
    if (!isAccelerometerAvailable()) {
        return;
    }
    handler = std::move(theHandler);
    timer.emplace(clock, queue, interval, [this] { tick(); });
}

void SampledMotionManager::tick() {
    if (awaiting) {
        return;
    }
    awaiting = true;
    // The handler may destroy the manager while the sample is being taken.
    const Sample take = sample;
    take(lifetime.guard([this](const std::optional<Acceleration>& reading) { receive(reading); }));
}

void SampledMotionManager::receive(const std::optional<Acceleration>& reading) {
    awaiting = false;
    const Handler call = handler;
    call(reading);
}

} // namespace quorvane::platform

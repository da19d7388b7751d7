#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "Platform/Accelerometer.h"
#include "Platform/Lifetime.h"
#include "Platform/Timer.h"

namespace quorvane::platform {

class Clock;
class MainQueue;

/// Takes a sample at each tick of a timer. A tick that comes while a sample is still awaited is skipped.
class SampledMotionManager final : public MotionManager {
public:
    /// Takes one sample and answers it on the main thread, once, at once or later.
    using Sample = std::function<void(Handler answer)>;

    /// @p clock and @p queue outlive the manager. No @p sample: there is no accelerometer.
    SampledMotionManager(Clock& theClock, MainQueue& theQueue, Sample theSample);

    [[nodiscard]] bool isAccelerometerAvailable() const override { return sample != nullptr; }
    void startAccelerometerUpdates(std::chrono::nanoseconds interval, Handler theHandler) override;

private:
    void tick();
    void receive(const std::optional<Acceleration>& reading);

    Clock& clock;
    MainQueue& queue;
    const Sample sample;
    Handler handler;
    bool awaiting = false;
    std::optional<Timer> timer;
    Lifetime lifetime;
};

} // namespace quorvane::platform

#pragma once

#include <memory>
#include <string>

#include "Platform/Accelerometer.h"
#include "Platform/Qt/IIOAccelerometer.h"

namespace quorvane::platform {
class Clock;
class MainQueue;
} // namespace quorvane::platform

namespace quorvane::platform::qt {

/// The device's accelerometer: the kernel's where it shows one, else the one that Qt knows. Stand-ins that report a
/// device at rest whatever happens do not count.
class QtAccelerometer final : public Accelerometer {
public:
    /// @p clock and @p queue outlive the managers.
    QtAccelerometer(Clock& theClock, MainQueue& theQueue, std::string theDirectory = IIOAccelerometer::systemDirectory);

    [[nodiscard]] std::unique_ptr<MotionManager> makeManager() override;

    /// Whether a sensor of this identifier measures anything.
    [[nodiscard]] static bool isReal(const std::string& identifier);

private:
    Clock& clock;
    MainQueue& queue;
    const std::string directory;
};

} // namespace quorvane::platform::qt

#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace quorvane::platform {

/// Metres per square second.
inline constexpr double standardGravity = 9.80665;

/// What acts on the device, in units of standard gravity along its axes as the user holds it upright:
/// x to the right, y to the top, z towards the user. At rest and upright: 0, -1, 0.
struct Acceleration {
    double x = 0;
    double y = 0;
    double z = 0;
};

/// Reads the device's accelerometer. One for each user of it; main thread only.
class MotionManager {
public:
    /// Called on the main queue, and for none when a sample could not be read.
    using Handler = std::function<void(const std::optional<Acceleration>&)>;

    MotionManager() = default;
    MotionManager(const MotionManager&) = delete;
    MotionManager& operator=(const MotionManager&) = delete;
    /// Stops; no sample comes after it.
    virtual ~MotionManager() = default;

    [[nodiscard]] virtual bool isAccelerometerAvailable() const = 0;
    /// Calls @p handler every @p interval until the manager is gone or another handler takes its place, never inside
    /// this call; it may destroy the manager. Without an accelerometer nothing happens.
    virtual void startAccelerometerUpdates(std::chrono::nanoseconds interval, Handler handler) = 0;
};

/// Makes motion managers. Main thread only.
class Accelerometer {
public:
    Accelerometer() = default;
    Accelerometer(const Accelerometer&) = delete;
    Accelerometer& operator=(const Accelerometer&) = delete;
    virtual ~Accelerometer() = default;

    [[nodiscard]] virtual std::unique_ptr<MotionManager> makeManager() = 0;
};

} // namespace quorvane::platform

#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

namespace quorvane::capture {
class CameraPicker;
} // namespace quorvane::capture

namespace quorvane::platform {
class Clock;
} // namespace quorvane::platform

namespace quorvane::testing {
class SimulatedAccelerometer;
} // namespace quorvane::testing

namespace quorvane::tool {

/// Presses the shutter of a camera screen as soon as it can be pressed.
class Shutter {
public:
    /// After so many samples the level of a device that is always held the same way stays as it is.
    static constexpr std::size_t settlingSamples = 60;
    /// For how long the shutter is enabled before it is pressed where a level is asked for: the level may pass by.
    static constexpr std::chrono::milliseconds steadyTime{500};
    /// For how long the camera may show nothing.
    static constexpr std::chrono::seconds patience{10};

    /// @p theHeld is null where the device's own accelerometer is read.
    Shutter(capture::CameraPicker& thePicker, const platform::Clock& theClock, bool needsLevel,
            const testing::SimulatedAccelerometer* theHeld);

    /// To be asked again and again; false as long as it cannot be pressed.
    bool press();

    /// It cannot be pressed and never will be: the device is not held level.
    [[nodiscard]] bool isStuck() const;
    /// Nor will it be where the camera shows nothing.
    [[nodiscard]] bool isBlind() const;

private:
    [[nodiscard]] bool seesNothing() const;

    capture::CameraPicker& picker;
    const platform::Clock& clock;
    const std::chrono::nanoseconds steady;
    const testing::SimulatedAccelerometer* const held;
    const std::chrono::nanoseconds begin;
    std::optional<std::chrono::nanoseconds> enabledSince;
};

} // namespace quorvane::tool

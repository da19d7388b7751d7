#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Accelerometer.h"

namespace quorvane::platform {
class Platform;
} // namespace quorvane::platform

namespace quorvane::testing {

/// An accelerometer that measures what it is told to. Its managers take their samples on the platform's clock; at rest
/// and upright until something else is told. Main thread only.
class SimulatedAccelerometer : public platform::Accelerometer {
public:
    /// None: a sample that cannot be read.
    using Reading = std::optional<platform::Acceleration>;

    /// @p platform outlives the accelerometer's managers.
    explicit SimulatedAccelerometer(platform::Platform& thePlatform);

    /// Whether managers that are made from now on have an accelerometer.
    void setAvailable(bool available);

    /// What every sample from now on says.
    void setReading(Reading reading);
    /// What the next samples say, one after the other; the last one stays.
    void feed(const std::vector<Reading>& readings);

    /// Samples taken so far, by all managers.
    [[nodiscard]] std::size_t samplesTaken() const;

    [[nodiscard]] std::unique_ptr<platform::MotionManager> makeManager() override;

private:
    struct State;

    platform::Platform& simulated;
    const std::shared_ptr<State> state;
};

} // namespace quorvane::testing

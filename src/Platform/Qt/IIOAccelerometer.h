#pragma once

#include <array>
#include <optional>
#include <string>

#include "Platform/Accelerometer.h"

namespace quorvane::platform::qt {

/// An accelerometer among the kernel's industrial I/O devices, read from its files. Immutable; safe from any thread.
class IIOAccelerometer {
public:
    static constexpr const char* systemDirectory = "/sys/bus/iio/devices";

    /// The accelerometer among the devices in @p directory; none when there is none whose files make sense. Of several
    /// the one in the screen's half counts, else the first by name that is not in the keyboard's half.
    [[nodiscard]] static std::optional<IIOAccelerometer> find(const std::string& directory);

    /// None when the files cannot be read now. Takes as long as the device takes, milliseconds with some.
    [[nodiscard]] std::optional<Acceleration> read() const;

private:
    struct Axis {
        std::string rawFile;
        double offset = 0;
        /// To metres per square second.
        double scale = 1;
    };

    IIOAccelerometer() = default;

    [[nodiscard]] static std::optional<IIOAccelerometer> at(const std::string& device);

    std::array<Axis, 3> axes;
    /// Turns the chip's axes into the device's, row by row.
    std::array<double, 9> mounting{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

} // namespace quorvane::platform::qt

#pragma once

#include <optional>
#include <string>

namespace quorvane::platform {

/// The device that the application runs on. Safe from any thread; never fails.
class Device {
public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    virtual ~Device() = default;

    /// The same upper-case UUID for all applications of one vendor on this device; none when the platform withholds it.
    [[nodiscard]] virtual std::optional<std::string> identifierForVendor() const = 0;

    /// The operating system's version, for example "6.1.0".
    [[nodiscard]] virtual std::string systemVersion() const = 0;

    /// The hardware model identifier, for example "iPhone12,1" or "x86_64".
    [[nodiscard]] virtual std::string hardwareIdentifier() const = 0;

    /// A variable of the process environment.
    [[nodiscard]] virtual std::optional<std::string> environment(const std::string& name) const = 0;
};

} // namespace quorvane::platform

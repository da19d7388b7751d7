#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Core/Enumerations.h"
#include "Platform/Native/NativePlatform.h"

namespace quorvane::tool {

/// Where the device's location comes from.
struct Receiver {
    enum class Kind { service, recording, serialPort, server };
    Kind kind = Kind::service;
    /// A file, a device, or a host.
    std::string name = {};
    std::uint16_t port = 0;
    int baudRate = 4800;
    /// Called when a recording is over.
    std::function<void()> onEnd = {};
};

/// A platform whose location managers have a receiver; without Qt none has one, and a `Failure` is thrown.
[[nodiscard]] std::shared_ptr<platform::NativePlatform> platformWith(const Receiver& receiver,
                                                                     platform::NativeOptions options,
                                                                     std::optional<QVLogLevel> logLevel);

} // namespace quorvane::tool

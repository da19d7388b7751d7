#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Platform/Support/DerivedLocations.h"

namespace quorvane::platform::qt {

/// What finds out where the device is. Main thread only. It tells by Qt's event loop, never inside a call of it.
class PositionReceiver {
public:
    struct Listener {
        std::function<void(const Location&)> fix;
        /// There is nothing for those who want a fix now.
        std::function<void(const LocationError&)> failure;
        std::function<void(LocationAuthorization)> authorization;
    };

    PositionReceiver() = default;
    PositionReceiver(const PositionReceiver&) = delete;
    PositionReceiver& operator=(const PositionReceiver&) = delete;
    virtual ~PositionReceiver() = default;

    /// What is known of the permission without asking the user.
    [[nodiscard]] virtual LocationAuthorization authorization() = 0;
    /// What the user has answered since the receiver was made, and is to be remembered; none while nobody has. That a
    /// service is not there, or location is switched off on the whole device, is no answer.
    [[nodiscard]] virtual std::optional<bool> answer() const { return std::nullopt; }
    /// Whether it tells of changes only, so that its silence means that the device does not move.
    [[nodiscard]] virtual bool isSilentWhenStill() const { return false; }
    /// Asks the user, where that is fitting. The answer goes to the listener.
    virtual void ask() = 0;
    /// What is wanted from now on. Nothing is, before the first call.
    virtual void want(const DerivedLocations::Demand& demand) = 0;
};

/// Whether anything is wanted at all.
[[nodiscard]] inline bool wantsAnything(const DerivedLocations::Demand& demand) {
    return demand.request || demand.updates || demand.monitoring;
}

} // namespace quorvane::platform::qt

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Core/QVStatus.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Location.h"
#include "Tracking/QVEvent.h"
#include "Tracking/QVUser.h"

namespace quorvane {

/// `Quorvane::Tracking`: follows the device. Main thread only.
///
/// In this version the operations check the key and answer `ERROR_UNIMPLEMENTED` at once, or do nothing.
class QVTracking {
public:
    /// A status, the location, and with `SUCCESS` the events and the user.
    using Callback = std::function<void(QVStatus, const std::optional<platform::Location>&,
                                        const std::optional<std::vector<std::shared_ptr<QVEvent>>>&,
                                        const std::shared_ptr<QVUser>&)>;

    QVTracking() = delete;

    /// Asks for one location and syncs it.
    static void once(const Callback& callback);

    /// Syncs @p location as one that the host chose.
    static void once(const platform::Location& location, const Callback& callback);

    static void start(const std::shared_ptr<QuorvaneTrackingOptions>& options);
    static void stop();
    [[nodiscard]] static bool isTracking();
};

} // namespace quorvane

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
/// Without a key `once` answers `ERROR_PUBLISHABLE_KEY` before it returns, and `start` and `stop` do nothing.
class QVTracking {
public:
    /// A status, the location where there is one, and with `SUCCESS` the events and the user.
    using Callback = std::function<void(QVStatus, const std::optional<platform::Location>&,
                                        const std::optional<std::vector<std::shared_ptr<QVEvent>>>&,
                                        const std::shared_ptr<QVUser>&)>;

    QVTracking() = delete;

    /// Asks for one location of the device, at `MEDIUM` accuracy, and syncs it: asks the service for the places within
    /// 5,000 metres, and derives what has changed. Answers once, on the main queue; with the reason where there is no
    /// location. Without permission the answer comes before this returns.
    static void once(const Callback& callback);

    /// Syncs @p location as one that the host chose. Whether the user is stopped is not decided by it.
    static void once(const platform::Location& location, const Callback& callback);

    /// Stores @p options and tracks by them, in later launches too, until `stop`. Without permission the delegate gets
    /// `ERROR_PERMISSIONS` and nothing else happens. No options: nothing happens.
    static void start(const std::shared_ptr<QuorvaneTrackingOptions>& options);
    /// Ends tracking. This is also what `Quorvane::isAuthenticated` reads (see SignedInFlag.h).
    static void stop();
    /// The stored flag, which is false while tokens are refreshed; needs no key.
    [[nodiscard]] static bool isTracking();
};

} // namespace quorvane

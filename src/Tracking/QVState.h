#pragma once

#include <optional>

#include "Platform/Location.h"

namespace quorvane {

/// What tracking remembers between two fixes, and from one launch to the next. It stands in the preferences and is read
/// anew by every call. Safe from any thread.
class QVState {
public:
    QVState() = delete;

    /// Where the user last moved.
    [[nodiscard]] static std::optional<platform::Location> getLastMovedLocation();
    /// A stop that could not be sent, until it is sent again.
    [[nodiscard]] static std::optional<platform::Location> getLastFailedStoppedLocation();
    /// When the user last moved.
    [[nodiscard]] static std::optional<platform::Date> getLastMovedAt();
    /// When a location was last handed to the sender.
    [[nodiscard]] static std::optional<platform::Date> getLastSentAt();
};

} // namespace quorvane

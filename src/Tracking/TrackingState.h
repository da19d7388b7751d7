#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/Location.h"

namespace quorvane::platform {
class PreferencesStore;
}

namespace quorvane {

/// The entries of the preferences that tracking keeps. Nothing is held here: every call reads or writes.
class TrackingState {
public:
    explicit TrackingState(platform::PreferencesStore& preferences);

    [[nodiscard]] bool isStopped() const { return stopped().value_or(false); }
    /// None while no fix was ever decided on.
    [[nodiscard]] std::optional<bool> stopped() const;
    [[nodiscard]] bool canExit() const;
    [[nodiscard]] std::optional<platform::Location> lastMovedLocation() const;
    [[nodiscard]] std::optional<platform::Date> lastMovedAt() const;
    [[nodiscard]] std::optional<platform::Date> lastSentAt() const;
    [[nodiscard]] std::optional<platform::Location> lastFailedStoppedLocation() const;

    void setStopped(bool stopped);
    void setCanExit(bool canExit);
    /// A location that is not valid is not stored: what was stored stays.
    void setLastMovedLocation(const platform::Location& location);
    void setLastMovedAt(platform::Date date);
    void setLastSentAt(platform::Date date);
    /// None removes the entry; one that is not valid leaves what was stored.
    void setLastFailedStoppedLocation(const std::optional<platform::Location>& location);
    /// None removes the entry.
    void setInternalUserId(const std::optional<std::string>& userId);

private:
    void store(std::string_view key, const platform::Location& location);

    platform::PreferencesStore& preferences;
};

} // namespace quorvane

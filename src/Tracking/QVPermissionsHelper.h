#pragma once

#include <optional>

#include "Platform/LocationManager.h"

namespace quorvane {

/// Knows what the user lets the application do with the device's location. Main thread only.
///
/// The library itself never asks the user: the host decides when that is fitting, and calls `requestAuthorization`.
class QVPermissionsHelper {
public:
    using Permission = platform::LocationManager::Permission;

    /// @p manager outlives the helper.
    explicit QVPermissionsHelper(platform::LocationManager& manager) : locationManager(manager) {}

    /// Asks the platform for the status, and remembers the answer.
    platform::LocationAuthorization authorizationStatus() {
        answer = locationManager.authorization();
        return *answer;
    }

    /// Whether the status, asked for anew, lets the library have locations: always, or while the application is in use.
    [[nodiscard]] bool isAuthorized() { return platform::permitsLocations(authorizationStatus()); }

    /// Has the platform ask the user, where the user has not decided yet. The answer is remembered when it comes.
    void requestAuthorization(Permission permission) { locationManager.requestAuthorization(permission); }

    /// The platform tells the status by itself: at first, and when the user has decided or has changed it.
    void authorizationChanged(platform::LocationAuthorization status) { answer = status; }

    /// What the platform last answered or told; none before it did either.
    [[nodiscard]] std::optional<platform::LocationAuthorization> lastAnswer() const { return answer; }

private:
    platform::LocationManager& locationManager;
    std::optional<platform::LocationAuthorization> answer;
};

} // namespace quorvane

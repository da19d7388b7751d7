#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Models/QVTrackingEnumerations.h"
#include "Platform/LocationManager.h"

/// How the log lines of tracking show things.
namespace quorvane {

[[nodiscard]] constexpr std::string_view trueOrFalse(bool flag) {
    return flag ? "true" : "false";
}

/// "none", "stopsAndExits" or "all"; "nil" for none at all.
[[nodiscard]] std::string_view textOf(const std::optional<QVSync>& sync);
[[nodiscard]] std::string_view textOf(platform::LocationAuthorization status);
[[nodiscard]] std::string_view textOf(platform::RegionState state);

/// "46.05,14.5 +/- 5.0 m at 2026-03-01 12:00:00 +0000"; "nil" for none.
[[nodiscard]] std::string descriptionOf(const std::optional<platform::Location>& location);
[[nodiscard]] std::string descriptionOf(const std::vector<platform::Location>& locations);
[[nodiscard]] std::string descriptionOf(const platform::Visit& visit);
[[nodiscard]] std::string descriptionOf(const platform::CircularRegion& region);
[[nodiscard]] std::string descriptionOf(const std::optional<platform::LocationError>& error);

} // namespace quorvane

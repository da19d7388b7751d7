#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "JSON/AnyCodable.h"
#include "Platform/Support/DerivedLocations.h"

namespace quorvane::platform {
class PreferencesStore;
}

namespace quorvane::platform::qt {

/// What a phone's system keeps of an application between its launches, where no system does: whether the location is
/// permitted, and the regions with the side of their border that the device was on. It stands in the preferences.
class KeptServices {
public:
    /// A dictionary: "permitted", a bool, and "regions", a list of dictionaries with "identifier", "latitude",
    /// "longitude", "radius" and, where it is known, "inside".
    static constexpr std::string_view key = "quorvane_location_services";

    /// What the launch before has kept. Entries that are none are left out.
    [[nodiscard]] static std::shared_ptr<DerivedLocations::Kept> stored(const PreferencesStore& preferences);

    /// @p thePreferences outlives this.
    explicit KeptServices(PreferencesStore& thePreferences);

    /// Writes when there is something new. @p answer is what the user said of the permission; none: what was said
    /// before holds.
    void keep(const RegionMonitor& monitored, std::optional<bool> answer);

private:
    PreferencesStore& preferences;
    AnyCodable::Dictionary written;
};

} // namespace quorvane::platform::qt

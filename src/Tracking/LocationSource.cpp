#include "Tracking/LocationSource.h"

#include <array>
#include <cstddef>

namespace quorvane {

std::string_view nameOf(QVLocationSource source) {
    static constexpr std::array<std::string_view, 9> names{
        "BACKGROUND_LOCATION", "FOREGROUND_LOCATION", "GEOFENCE_DWELL",  "GEOFENCE_ENTER", "GEOFENCE_EXIT",
        "MANUAL_LOCATION",     "VISIT_ARRIVAL",       "VISIT_DEPARTURE", "UNKNOWN",
    };
    const auto index = static_cast<std::size_t>(source);
    return index < names.size() ? names[index] : names.back();
}

} // namespace quorvane

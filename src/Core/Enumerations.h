#pragma once

#include <string_view>

#include "JSON/RawValues.h"

#pragma push_macro("ERROR")
#pragma push_macro("DEBUG")
#undef ERROR
#undef DEBUG

namespace quorvane {

/// What is logged: everything up to the stored level.
enum class QVLogLevel : int { NONE = 0, ERROR, WARNING, INFO, DEBUG };

/// What produced a location.
enum class QVLocationSource : int {
    BACKGROUND_LOCATION = 0,
    FOREGROUND_LOCATION,
    GEOFENCE_DWELL,
    GEOFENCE_ENTER,
    GEOFENCE_EXIT,
    MANUAL_LOCATION,
    VISIT_ARRIVAL,
    VISIT_DEPARTURE,
    UNKNOWN,
};

/// Where places are created: in the local place store or at the service (not available).
enum class QVStorageType : int { LOCAL = 0, REMOTE };

/// Units of a route's distance.
enum class QVRouteUnits : int { IMPERIAL = 0, METRIC };

template <>
inline constexpr auto json::rawValues<QVLogLevel> = json::IntegerRange<QVLogLevel>{QVLogLevel::NONE, QVLogLevel::DEBUG};
template <>
inline constexpr auto json::rawValues<QVLocationSource> =
    json::IntegerRange<QVLocationSource>{QVLocationSource::BACKGROUND_LOCATION, QVLocationSource::UNKNOWN};
template <>
inline constexpr auto json::rawValues<QVStorageType> =
    json::IntegerRange<QVStorageType>{QVStorageType::LOCAL, QVStorageType::REMOTE};
template <>
inline constexpr auto json::rawValues<QVRouteUnits> =
    json::IntegerRange<QVRouteUnits>{QVRouteUnits::IMPERIAL, QVRouteUnits::METRIC};

/// The user-info keys under which geofence notifications carry their identifiers.
struct NotificationKeys {
    static constexpr std::string_view CAMPAIGN_ID = "GeofenceNotificationUserInfoCampaignIDKey";
    static constexpr std::string_view LOCATION_ID = "GeofenceNotificationUserInfoLocationIDKey";
};

} // namespace quorvane

#pragma pop_macro("DEBUG")
#pragma pop_macro("ERROR")

#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// What happened.
enum class QVEventType : int {
    UNKNOWN = 0,
    USER_ENTERED_GEOFENCE,
    USER_ENTERED_HOME,
    USER_ENTERED_OFFICE,
    USER_ENTERED_PLACE,
    USER_ENTERED_REGION_COUNTRY,
    USER_ENTERED_REGION_DMA,
    USER_ENTERED_REGION_STATE,
    USER_EXITED_GEOFENCE,
    USER_EXITED_HOME,
    USER_EXITED_OFFICE,
    USER_EXITED_PLACE,
    USER_EXITED_REGION_COUNTRY,
    USER_EXITED_REGION_DMA,
    USER_EXITED_REGION_STATE,
    USER_NEARBY_PLACE_CHAIN,
    USER_STARTED_COMMUTING,
    USER_STARTED_TRAVELING,
    USER_STOPPED_COMMUTING,
    USER_STOPPED_TRAVELING,
};

/// How sure it is that it happened.
enum class QVEventConfidence : int { NONE = 0, LOW, MEDIUM, HIGH };

/// What the user said about it. The raw values descend.
enum class QVEventVerification : int { ACCEPT = 1, UNVERIFY = 0, REJECT = -1 };

template <>
inline constexpr auto json::rawValues<QVEventType> =
    json::IntegerRange<QVEventType>{QVEventType::UNKNOWN, QVEventType::USER_STOPPED_TRAVELING};
template <>
inline constexpr std::string_view json::typeName<QVEventType> = "event type";
template <>
inline constexpr auto json::rawValues<QVEventConfidence> =
    json::IntegerRange<QVEventConfidence>{QVEventConfidence::NONE, QVEventConfidence::HIGH};
template <>
inline constexpr std::string_view json::typeName<QVEventConfidence> = "confidence";
template <>
inline constexpr auto json::rawValues<QVEventVerification> =
    json::IntegerRange<QVEventVerification>{QVEventVerification::REJECT, QVEventVerification::ACCEPT};
template <>
inline constexpr std::string_view json::typeName<QVEventVerification> = "verification";

} // namespace quorvane

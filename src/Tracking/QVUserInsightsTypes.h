#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// How sure the service is of a home or an office.
enum class QVUserInsightsConfidence : int { NONE = 0, LOW, MEDIUM, HIGH };

/// What a learned location is to the user.
enum class QVUserInsightsLocationType : int { UNKNOWN, HOME, OFFICE };

template <>
inline constexpr auto json::rawValues<QVUserInsightsConfidence> =
    json::IntegerRange<QVUserInsightsConfidence>{QVUserInsightsConfidence::NONE, QVUserInsightsConfidence::HIGH};
template <>
inline constexpr std::string_view json::typeName<QVUserInsightsConfidence> = "confidence";
template <>
inline constexpr auto json::rawValues<QVUserInsightsLocationType> = json::textTable<QVUserInsightsLocationType>({
    {QVUserInsightsLocationType::UNKNOWN, "UNKNOWN"},
    {QVUserInsightsLocationType::HOME, "HOME"},
    {QVUserInsightsLocationType::OFFICE, "OFFICE"},
});
template <>
inline constexpr std::string_view json::typeName<QVUserInsightsLocationType> = "location type";

} // namespace quorvane

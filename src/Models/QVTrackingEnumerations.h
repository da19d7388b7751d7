#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// How accurate foreground fixes should be.
enum class QVDesiredAccuracy : int {
    /// As `MEDIUM`.
    NONE = 0,
    /// About a kilometre.
    LOW,
    /// About a hundred metres.
    MEDIUM,
    /// The best that the device has.
    HIGH,
};

/// Whether a stop that could not be sent is sent again.
enum class QVReplay : int { NONE = 0, STOPS };

/// Which locations are sent.
enum class QVSync : int { NONE = 0, STOPS_AND_EXITS, ALL };

template <>
inline constexpr auto json::rawValues<QVDesiredAccuracy> =
    json::IntegerRange<QVDesiredAccuracy>{QVDesiredAccuracy::NONE, QVDesiredAccuracy::HIGH};
template <>
inline constexpr std::string_view json::typeName<QVDesiredAccuracy> = "desired accuracy";
template <>
inline constexpr auto json::rawValues<QVReplay> = json::IntegerRange<QVReplay>{QVReplay::NONE, QVReplay::STOPS};
template <>
inline constexpr std::string_view json::typeName<QVReplay> = "replay setting";
template <>
inline constexpr auto json::rawValues<QVSync> = json::IntegerRange<QVSync>{QVSync::NONE, QVSync::ALL};
template <>
inline constexpr std::string_view json::typeName<QVSync> = "sync setting";

} // namespace quorvane

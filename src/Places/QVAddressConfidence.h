#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// The quality of a geocoded address.
enum class QVAddressConfidence : int { NONE = 0, EXACT, INTERPOLATED, FALLBACK };

template <>
inline constexpr auto json::rawValues<QVAddressConfidence> =
    json::IntegerRange<QVAddressConfidence>{QVAddressConfidence::NONE, QVAddressConfidence::FALLBACK};
template <>
inline constexpr std::string_view json::typeName<QVAddressConfidence> = "confidence";

} // namespace quorvane

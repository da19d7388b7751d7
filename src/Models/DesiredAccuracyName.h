#pragma once

#include <optional>
#include <string_view>

#include "Models/QVTrackingEnumerations.h"

namespace quorvane {

/// The case's name; none outside the enumeration.
[[nodiscard]] std::optional<std::string_view> nameOf(QVDesiredAccuracy accuracy);

} // namespace quorvane

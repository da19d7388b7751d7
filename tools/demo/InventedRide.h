#pragma once

#include <string_view>

namespace quorvane::tool {

/// The GPX file ride.gpx, which is built into the program.
[[nodiscard]] std::string_view inventedRide();

} // namespace quorvane::tool

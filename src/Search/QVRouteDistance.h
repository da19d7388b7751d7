#pragma once

#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// The length of a route.
class QVRouteDistance {
public:
    /// For display.
    std::string text;
    /// In the service's unit.
    double value = 0;

    static constexpr auto codingKeys =
        json::keys(json::key("text", &QVRouteDistance::text), json::key("value", &QVRouteDistance::value));
};

} // namespace quorvane

#pragma once

#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// The time that a route takes.
class QVRouteDuration {
public:
    /// For display.
    std::string text;
    /// In the service's unit.
    double value = 0;

    static constexpr auto codingKeys =
        json::keys(json::key("text", &QVRouteDuration::text), json::key("value", &QVRouteDuration::value));
};

} // namespace quorvane

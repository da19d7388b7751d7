#pragma once

#include <memory>

#include "JSON/CodingKeys.h"
#include "Search/QVRouteDistance.h"
#include "Search/QVRouteDuration.h"

namespace quorvane {

/// One way to a destination.
class QVRoute {
public:
    std::shared_ptr<QVRouteDistance> distance;
    std::shared_ptr<QVRouteDuration> duration;

    static constexpr auto codingKeys =
        json::keys(json::key("distance", &QVRoute::distance), json::key("duration", &QVRoute::duration));
};

} // namespace quorvane

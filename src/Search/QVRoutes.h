#pragma once

#include <memory>

#include "JSON/CodingKeys.h"
#include "Search/QVRoute.h"
#include "Search/QVRouteDistance.h"

namespace quorvane {

/// The ways to a destination, one for each mode, and the straight line.
class QVRoutes {
public:
    std::shared_ptr<QVRoute> bike;
    std::shared_ptr<QVRoute> car;
    std::shared_ptr<QVRoute> foot;
    std::shared_ptr<QVRouteDistance> geodesic;
    std::shared_ptr<QVRoute> transit;

    static constexpr auto codingKeys = json::keys(
        json::key("bike", &QVRoutes::bike), json::key("car", &QVRoutes::car), json::key("foot", &QVRoutes::foot),
        json::key("geodesic", &QVRoutes::geodesic), json::key("transit", &QVRoutes::transit));
};

} // namespace quorvane

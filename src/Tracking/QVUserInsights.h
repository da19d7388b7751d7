#pragma once

#include <memory>

#include "JSON/CodingKeys.h"
#include "Tracking/QVUserInsightsLocation.h"
#include "Tracking/QVUserInsightsState.h"

namespace quorvane {

/// What the service has learned about a user.
class QVUserInsights {
public:
    std::shared_ptr<QVUserInsightsLocation> homeLocation;
    std::shared_ptr<QVUserInsightsLocation> officeLocation;
    std::shared_ptr<QVUserInsightsState> state;

    static constexpr auto codingKeys = json::keys(json::key("homeLocation", &QVUserInsights::homeLocation),
                                                  json::key("officeLocation", &QVUserInsights::officeLocation),
                                                  json::key("state", &QVUserInsights::state));
};

} // namespace quorvane

#pragma once

#include <memory>
#include <optional>

#include "JSON/CodingKeys.h"
#include "JSON/Date.h"
#include "Models/QVCoordinate.h"
#include "Models/QVRegion.h"
#include "Tracking/QVUserInsightsTypes.h"

namespace quorvane {

/// Where the service believes the user's home or office to be.
class QVUserInsightsLocation {
public:
    using Confidence = QVUserInsightsConfidence;
    using LocationType = QVUserInsightsLocationType;

    std::optional<Confidence> confidence;
    std::shared_ptr<QVRegion> country;
    /// The market area.
    std::shared_ptr<QVRegion> dma;
    std::shared_ptr<QVRegion> postalCode;
    std::shared_ptr<QVRegion> state;
    std::shared_ptr<QVCoordinate> location;
    std::optional<LocationType> type;
    std::optional<json::Date> updatedAt;

    static constexpr auto codingKeys = json::keys(
        json::key("confidence", &QVUserInsightsLocation::confidence),
        json::key("country", &QVUserInsightsLocation::country), json::key("dma", &QVUserInsightsLocation::dma),
        json::key("postalCode", &QVUserInsightsLocation::postalCode),
        json::key("state", &QVUserInsightsLocation::state), json::key("location", &QVUserInsightsLocation::location),
        json::key("type", &QVUserInsightsLocation::type), json::key("updatedAt", &QVUserInsightsLocation::updatedAt));
};

} // namespace quorvane

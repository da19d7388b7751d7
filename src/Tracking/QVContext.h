#pragma once

#include <memory>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Models/QVGeofence.h"
#include "Models/QVRegion.h"
#include "Places/QVPlace.h"

namespace quorvane {

/// What is around a point.
class QVContext {
public:
    std::shared_ptr<QVRegion> country;
    /// The market area.
    std::shared_ptr<QVRegion> dma;
    /// "postal_code" in JSON, in this record only.
    std::shared_ptr<QVRegion> postalCode;
    std::shared_ptr<QVRegion> state;
    std::shared_ptr<QVPlace> place;
    std::vector<std::shared_ptr<QVGeofence>> geofences;

    static constexpr auto codingKeys =
        json::keys(json::key("country", &QVContext::country), json::key("dma", &QVContext::dma),
                   json::key("postal_code", &QVContext::postalCode), json::key("state", &QVContext::state),
                   json::key("place", &QVContext::place), json::key("geofences", &QVContext::geofences));
};

} // namespace quorvane

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/AnyCodable.h"
#include "JSON/CodingKeys.h"
#include "Models/QVGeofence.h"
#include "Models/QVRegion.h"
#include "Places/QVChain.h"
#include "Places/QVPlace.h"
#include "Platform/Location.h"
#include "Tracking/QVSegment.h"
#include "Tracking/QVUserInsights.h"

namespace quorvane {

/// The current picture of the user.
class QVUser {
public:
    std::optional<std::string> _description;
    std::string _id;
    std::shared_ptr<QVRegion> country;
    std::optional<std::string> deviceId;
    /// The market area.
    std::shared_ptr<QVRegion> dma;
    bool foreground = false;
    std::optional<std::vector<std::shared_ptr<QVGeofence>>> geofences;
    std::shared_ptr<QVUserInsights> insights;
    std::optional<AnyCodable::Dictionary> metadata;
    std::optional<std::vector<std::shared_ptr<QVChain>>> nearbyPlaceChains;
    std::shared_ptr<QVPlace> place;
    std::shared_ptr<QVRegion> postalCode;
    std::optional<std::vector<std::shared_ptr<QVSegment>>> segments;
    std::shared_ptr<QVRegion> state;
    bool stopped = false;
    std::optional<std::vector<std::shared_ptr<QVChain>>> topChains;
    std::optional<std::string> userId;
    /// "latitude" and "longitude" in JSON, a location only together; its accuracies and time stamp are not coded.
    std::optional<platform::Location> location;

    static constexpr auto codingKeys =
        json::keys(json::key("description", &QVUser::_description), json::key("id", &QVUser::_id),
                   json::key("country", &QVUser::country), json::key("deviceId", &QVUser::deviceId),
                   json::key("dma", &QVUser::dma), json::key("foreground", &QVUser::foreground),
                   json::key("geofences", &QVUser::geofences), json::key("insights", &QVUser::insights),
                   json::key("metadata", &QVUser::metadata), json::key("nearbyPlaceChains", &QVUser::nearbyPlaceChains),
                   json::key("place", &QVUser::place), json::key("postalCode", &QVUser::postalCode),
                   json::key("segments", &QVUser::segments), json::key("state", &QVUser::state),
                   json::key("stopped", &QVUser::stopped), json::key("topChains", &QVUser::topChains),
                   json::key("userId", &QVUser::userId), json::pair("latitude", "longitude", &QVUser::location));
};

} // namespace quorvane

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/CodingKeys.h"
#include "JSON/Date.h"
#include "Models/QVGeofence.h"
#include "Models/QVRegion.h"
#include "Places/QVPlace.h"
#include "Platform/Location.h"
#include "Tracking/QVEventTypes.h"

namespace quorvane {

/// Something that happened to the user.
///
/// The three places exist in memory only: they do not survive encoding.
class QVEvent {
public:
    using Confidence = QVEventConfidence;
    using EventType = QVEventType;
    using Verification = QVEventVerification;

    std::string _id;
    std::optional<json::Date> actualCreatedAt;
    std::optional<std::vector<std::shared_ptr<QVPlace>>> alternatePlaces;
    Confidence confidence = Confidence::NONE;
    std::optional<json::Date> createdAt;
    /// Seconds.
    float duration = 0;
    std::shared_ptr<QVGeofence> geofence;
    bool live = false;
    /// "latitude" and "longitude" in JSON, a location only together; its accuracies and time stamp are not coded.
    std::optional<platform::Location> location;
    std::shared_ptr<QVPlace> place;
    std::shared_ptr<QVRegion> region;
    EventType type = EventType::UNKNOWN;
    Verification verification = Verification::UNVERIFY;
    std::shared_ptr<QVPlace> verifiedPlace;

    static constexpr auto codingKeys =
        json::keys(json::key("id", &QVEvent::_id), json::key("actualCreatedAt", &QVEvent::actualCreatedAt),
                   json::key("confidence", &QVEvent::confidence), json::key("createdAt", &QVEvent::createdAt),
                   json::key("duration", &QVEvent::duration), json::key("geofence", &QVEvent::geofence),
                   json::key("live", &QVEvent::live), json::pair("latitude", "longitude", &QVEvent::location),
                   json::key("region", &QVEvent::region), json::key("type", &QVEvent::type),
                   json::key("verification", &QVEvent::verification));
};

} // namespace quorvane

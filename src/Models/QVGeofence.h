#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "JSON/AnyCodable.h"
#include "JSON/CodingKeys.h"
#include "Models/QVGeofenceGeometry.h"

namespace quorvane {

/// An area whose crossing is an event.
class QVGeofence {
public:
    QVGeofence() = default;
    QVGeofence(std::string identifier, std::string text) : _description(std::move(text)), _id(std::move(identifier)) {}

    std::string _description;
    std::string _id;
    std::optional<std::string> externalId;
    std::shared_ptr<QVGeofenceGeometry> geometry;
    std::optional<AnyCodable::Dictionary> metadata;
    std::optional<std::string> tag;

    static constexpr auto codingKeys =
        json::keys(json::key("description", &QVGeofence::_description), json::key("id", &QVGeofence::_id),
                   json::key("externalId", &QVGeofence::externalId), json::key("geometry", &QVGeofence::geometry),
                   json::key("metadata", &QVGeofence::metadata), json::key("tag", &QVGeofence::tag));
};

} // namespace quorvane

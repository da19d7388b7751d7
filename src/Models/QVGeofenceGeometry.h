#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Models/QVCoordinate.h"

namespace quorvane {

/// The shape of a geofence. Encodes as what it is, decodes as this base, which reads nothing: a geofence from JSON
/// has a geometry without a centre and without coordinates, whatever was sent.
class QVGeofenceGeometry {
public:
    QVGeofenceGeometry() = default;
    QVGeofenceGeometry(const QVGeofenceGeometry&) = default;
    QVGeofenceGeometry& operator=(const QVGeofenceGeometry&) = default;
    virtual ~QVGeofenceGeometry() = default;

    static constexpr auto codingKeys = json::keys();
};

/// A circle.
class QVCircleGeometry : public QVGeofenceGeometry {
public:
    std::shared_ptr<QVCoordinate> center;
    /// Metres.
    double radius = 0;

    static constexpr auto codingKeys =
        json::keys(json::key("center", &QVCircleGeometry::center), json::key("radius", &QVCircleGeometry::radius));
};

/// A polygon, its corners in the order of the ring.
class QVPolygonGeometry : public QVGeofenceGeometry {
public:
    std::optional<std::vector<std::shared_ptr<QVCoordinate>>> coordinates;

    static constexpr auto codingKeys = json::keys(json::key("coordinates", &QVPolygonGeometry::coordinates));
};

template <>
inline constexpr auto json::subclasses<QVGeofenceGeometry> = json::SubclassList<QVCircleGeometry, QVPolygonGeometry>{};
template <>
inline constexpr bool json::readsNothing<QVGeofenceGeometry> = true;

} // namespace quorvane

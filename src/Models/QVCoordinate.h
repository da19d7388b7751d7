#pragma once

#include <optional>

#include "JSON/CodingKeys.h"
#include "Platform/Location.h"

namespace quorvane {

/// A point on the earth as the service sends it. Without a latitude or without a longitude there is no point.
class QVCoordinate {
public:
    QVCoordinate() = default;
    explicit QVCoordinate(platform::Coordinate point) : coordinate(point) {}

    std::optional<platform::Coordinate> coordinate;

    /// Without any tolerance; two without a point are equal.
    friend bool operator==(const QVCoordinate&, const QVCoordinate&) = default;

    static constexpr auto codingKeys = json::keys(json::pair("latitude", "longitude", &QVCoordinate::coordinate));
};

} // namespace quorvane

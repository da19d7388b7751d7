#pragma once

#include <limits>

#include "Platform/Clock.h"

namespace quorvane::platform {

/// A point on the earth in degrees (WGS 84). Plain value; nothing is checked on construction.
struct Coordinate {
    double latitude = 0;
    double longitude = 0;

    /// The value that marks a coordinate as invalid: -180, -180.
    static const Coordinate invalid;

    /// Whether latitude lies in [-90, 90] and longitude in [-180, 180].
    [[nodiscard]] bool isValid() const;

    friend bool operator==(const Coordinate&, const Coordinate&) = default;
};

inline constexpr Coordinate Coordinate::invalid{-180.0, -180.0};

/// One fix of the device's position. Plain value.
struct Location {
    Coordinate coordinate;
    /// Metres; negative when the coordinate is not valid.
    double horizontalAccuracy = 0;
    /// Metres; negative when the altitude is not known.
    double verticalAccuracy = -1;
    Date timestamp;

    friend bool operator==(const Location&, const Location&) = default;

    /// Metres along the great circle to @p other.
    [[nodiscard]] double distance(const Location& other) const;
};

/// The largest distance there is, in metres: farther than any two points are apart.
inline constexpr double maximumDistance = (std::numeric_limits<double>::max)();

/// Metres along the great circle between two points, on a sphere of the mean earth radius, 6,371,008.8 m (IUGG 1980),
/// by the haversine formula. The result is finite for finite arguments, valid or not.
[[nodiscard]] double distance(const Coordinate& a, const Coordinate& b);

} // namespace quorvane::platform

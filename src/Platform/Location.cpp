#include "Platform/Location.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvane::platform {
namespace {

constexpr double meanEarthRadius = 6'371'008.8;

constexpr double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

/// The same direction within two turns, so that no difference of two overflows. Changes no value of a map.
double folded(double degrees) {
    return std::fmod(degrees, 720.0);
}

} // namespace

bool Coordinate::isValid() const {
    return latitude >= -90 && latitude <= 90 && longitude >= -180 && longitude <= 180;
}

double distance(const Coordinate& a, const Coordinate& b) {
    const double latitudeHalf = std::sin(radians(folded(b.latitude) - folded(a.latitude)) / 2);
    const double longitudeHalf = std::sin(radians(folded(b.longitude) - folded(a.longitude)) / 2);
    const double haversine = latitudeHalf * latitudeHalf + std::cos(radians(folded(a.latitude))) *
                                                               std::cos(radians(folded(b.latitude))) * longitudeHalf *
                                                               longitudeHalf;
    return 2 * meanEarthRadius * std::asin(std::sqrt(std::clamp(haversine, 0.0, 1.0)));
}

double Location::distance(const Location& other) const {
    return platform::distance(coordinate, other.coordinate);
}

} // namespace quorvane::platform

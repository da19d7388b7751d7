#pragma once

#include <utility>

#include "JSON/CodingKeys.h"
#include "Platform/Location.h"

namespace quorvane::json {

/// A platform coordinate as latitude and longitude.
template <>
struct PairTraits<platform::Coordinate> {
    static platform::Coordinate make(double latitude, double longitude) { return {latitude, longitude}; }
    static std::pair<double, double> parts(const platform::Coordinate& coordinate) {
        return {coordinate.latitude, coordinate.longitude};
    }
};

/// A platform location as the latitude and longitude of its point; nothing else of it is coded.
template <>
struct PairTraits<platform::Location> {
    static platform::Location make(double latitude, double longitude) {
        platform::Location location;
        location.coordinate = {latitude, longitude};
        return location;
    }
    static std::pair<double, double> parts(const platform::Location& location) {
        return {location.coordinate.latitude, location.coordinate.longitude};
    }
};

} // namespace quorvane::json

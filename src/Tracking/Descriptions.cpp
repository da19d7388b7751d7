#include "Tracking/Descriptions.h"

#include "JSON/NumberText.h"
#include "Models/DateDescription.h"

namespace quorvane {
namespace {

std::string descriptionOf(const platform::Coordinate& coordinate, double accuracy) {
    return json::textOf(coordinate.latitude) + ',' + json::textOf(coordinate.longitude) + " +/- " +
           json::textOf(accuracy) + " m";
}

} // namespace

std::string_view textOf(const std::optional<QVSync>& sync) {
    if (sync) {
        switch (*sync) {
            case QVSync::NONE:
                return "none";
            case QVSync::STOPS_AND_EXITS:
                return "stopsAndExits";
            case QVSync::ALL:
                return "all";
        }
    }
    return "nil";
}

std::string_view textOf(platform::LocationAuthorization status) {
    switch (status) {
        case platform::LocationAuthorization::restricted:
            return "restricted";
        case platform::LocationAuthorization::denied:
            return "denied";
        case platform::LocationAuthorization::always:
            return "always";
        case platform::LocationAuthorization::whenInUse:
            return "whenInUse";
        case platform::LocationAuthorization::notDetermined:
            break;
    }
    return "notDetermined";
}

std::string_view textOf(platform::RegionState state) {
    switch (state) {
        case platform::RegionState::inside:
            return "inside";
        case platform::RegionState::outside:
            return "outside";
        case platform::RegionState::unknown:
            break;
    }
    return "unknown";
}

std::string descriptionOf(const std::optional<platform::Location>& location) {
    return location ? descriptionOf(location->coordinate, location->horizontalAccuracy) + " at " +
                          descriptionOf(location->timestamp)
                    : "nil";
}

std::string descriptionOf(const std::vector<platform::Location>& locations) {
    std::string text = "[";
    for (const platform::Location& location : locations) {
        text.append(text.size() > 1 ? ", " : "").append(descriptionOf(location));
    }
    return text + "]";
}

std::string descriptionOf(const platform::Visit& visit) {
    const bool isOver = visit.departureDate != platform::distantFuture;
    return descriptionOf(visit.coordinate, visit.horizontalAccuracy) + " from " + descriptionOf(visit.arrivalDate) +
           " to " + (isOver ? descriptionOf(visit.departureDate) : "now");
}

std::string descriptionOf(const platform::CircularRegion& region) {
    return region.identifier + " (" + descriptionOf(region.center, region.radius) + ")";
}

std::string descriptionOf(const std::optional<platform::LocationError>& error) {
    return error ? error->message : "nil";
}

} // namespace quorvane

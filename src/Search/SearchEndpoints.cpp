#include "Search/SearchEndpoints.h"

#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"

namespace quorvane {
namespace {

std::int64_t wide(int value) {
    return value;
}

/// "lat", "lng" and, where there is a radius, "rad".
void addArea(EndpointFields& endpoint, const platform::Location& location, std::optional<int> radius) {
    endpoint.parameters["lat"] = location.coordinate.latitude;
    endpoint.parameters["lng"] = location.coordinate.longitude;
    if (radius) {
        endpoint.parameters["rad"] = wide(*radius);
    }
}

} // namespace

SearchTasksEndpoint::SearchTasksEndpoint(const std::optional<platform::Location>& location, std::optional<int> radius,
                                         std::optional<int> radiusToExclude,
                                         const std::optional<std::string>& campaignId,
                                         const std::optional<std::string>& placeId) {
    path = "/generate/tasks";
    if (location) {
        addArea(*this, *location, radius);
    } else {
        if (campaignId) {
            parameters["cid"] = *campaignId;
        }
        if (placeId) {
            parameters["lid"] = *placeId;
        }
    }
    if (radiusToExclude && (location ? radius.has_value() : placeId.has_value())) {
        parameters["min"] = wide(*radiusToExclude);
    }
}

SearchPlacesEndpoint::SearchPlacesEndpoint(const std::optional<platform::Location>& location, std::optional<int> radius,
                                           std::optional<int> radiusToExclude,
                                           const std::optional<StringList>& /*chains*/,
                                           const std::optional<StringList>& /*categories*/,
                                           const std::optional<StringList>& /*groups*/, int /*limit*/) {
    path = "/locations/find";
    if (location) {
        addArea(*this, *location, radius);
    }
    if (radiusToExclude) {
        parameters["min"] = wide(*radiusToExclude);
    }
}

} // namespace quorvane

QV_JSON_MODEL(quorvane::JSONResponseList<quorvane::QVTask>);
QV_JSON_MODEL(quorvane::JSONResponseList<quorvane::QVPlace>);

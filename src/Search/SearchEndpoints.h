#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "API/Endpoint.h"
#include "API/JSONResponseList.h"
#include "Places/QVPlace.h"
#include "Platform/Location.h"
#include "Tasks/QVTask.h"

namespace quorvane {

using StringList = std::vector<std::string>;

/// Asks for tasks (GET "/generate/tasks"): around a location, or else of a campaign, or else of a place. A location
/// wins over both identifiers. The radius to exclude, in metres as the radius, is sent with a location and a radius, or
/// without a location with a place.
struct SearchTasksEndpoint : Endpoint<JSONResponseList<QVTask>> {
    SearchTasksEndpoint(const std::optional<platform::Location>& location, std::optional<int> radius,
                        std::optional<int> radiusToExclude, const std::optional<std::string>& campaignId,
                        const std::optional<std::string>& placeId);
};

/// Asks for places around a location (GET "/locations/find"). Chains, categories, groups and limit are accepted and
/// not sent: the filtering is the service's default.
struct SearchPlacesEndpoint : Endpoint<JSONResponseList<QVPlace>> {
    SearchPlacesEndpoint(const std::optional<platform::Location>& location, std::optional<int> radius,
                         std::optional<int> radiusToExclude, const std::optional<StringList>& chains,
                         const std::optional<StringList>& categories, const std::optional<StringList>& groups,
                         int limit);
};

} // namespace quorvane

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "Platform/Location.h"
#include "Search/PlaceSort.h"
#include "Search/SearchEndpoints.h"

#pragma push_macro("near")
#undef near

namespace quorvane {

using QVTaskList = std::vector<std::shared_ptr<QVTask>>;

/// Tells a campaign's identifier from a place's.
struct CampaignId {
    std::string value;
};
struct PlaceId {
    std::string value;
};

/// Finds tasks and places. Stateless apart from its delegate; called on the main thread.
///
/// Every operation answers once: `SUCCESS` with the list (none when the answer had no body), or any other status
/// without one. Answers come on the main queue, but `ERROR_PUBLISHABLE_KEY` comes before the call returns.
class QVSearchService : public SharedService<QVSearchService> {
public:
    using NearTasksCompletion =
        std::function<void(QVStatus, const std::optional<platform::Location>&, const std::optional<QVTaskList>&)>;
    using TasksCompletion = std::function<void(QVStatus, const std::optional<QVTaskList>&)>;
    using NearPlacesCompletion =
        std::function<void(QVStatus, const std::optional<platform::Location>&, const std::optional<QVPlaceList>&)>;

    /// Tasks within @p radius metres of @p near but not within @p radiusToExclude, in the service's order. @p near is
    /// handed back unchanged.
    void tasks(const platform::Location& near, int radius, std::optional<int> radiusToExclude,
               NearTasksCompletion completion);

    void tasks(const CampaignId& campaign, TasksCompletion completion);
    void tasks(const PlaceId& place, TasksCompletion completion);

    /// Places within @p radius metres of @p near, the service's and the host's own (`QVPlaceService`), nearest first
    /// (see `sortByDistance`). @p near is handed back unchanged. The other arguments have no effect in this version.
    ///
    /// When the service answered with places and the store of the host's own cannot be read, this never answers: so one
    /// search does for each of those places that has gone from memory (see `QVPlaceService::all`).
    void places(const platform::Location& near, int radius, const std::optional<StringList>& chains,
                const std::optional<StringList>& categories, const std::optional<StringList>& groups, int limit,
                NearPlacesCompletion completion);
};

} // namespace quorvane

#pragma pop_macro("near")

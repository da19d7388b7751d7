#include "Search/QVSearchService.h"

#include "API/QuorvaneAPI.h"
#include "Places/QVPlaceService.h"
#include "Search/PlaceSort.h"

namespace quorvane {
namespace {

/// Sends a search and hands over its status and list.
template <class Call, class Item>
void search(const Call& endpoint,
            std::function<void(QVStatus, std::optional<std::vector<std::shared_ptr<Item>>>)> completion) {
    QuorvaneAPI::shared().request(
        endpoint, [completion = std::move(completion)](QVStatus status, const std::optional<json::Dictionary>& raw,
                                                       const std::shared_ptr<JSONResponseList<Item>>& envelope) {
            if (status == QVStatus::SUCCESS && raw) {
                if (envelope) {
                    completion(QVStatus::SUCCESS, std::move(envelope->data));
                } else {
                    completion(QVStatus::ERROR_SERVER, std::nullopt);
                }
            } else {
                completion(status, std::nullopt);
            }
        });
}

} // namespace

void QVSearchService::tasks(const platform::Location& near, int radius, std::optional<int> radiusToExclude,
                            NearTasksCompletion completion) {
    search<SearchTasksEndpoint, QVTask>(
        SearchTasksEndpoint(near, radius, radiusToExclude, std::nullopt, std::nullopt),
        [near, completion = std::move(completion)](QVStatus status, const std::optional<QVTaskList>& tasks) {
            completion(status, near, tasks);
        });
}

void QVSearchService::tasks(const CampaignId& campaign, TasksCompletion completion) {
    search<SearchTasksEndpoint, QVTask>(
        SearchTasksEndpoint(std::nullopt, std::nullopt, std::nullopt, campaign.value, std::nullopt),
        std::move(completion));
}

void QVSearchService::tasks(const PlaceId& place, TasksCompletion completion) {
    search<SearchTasksEndpoint, QVTask>(
        SearchTasksEndpoint(std::nullopt, std::nullopt, std::nullopt, std::nullopt, place.value),
        std::move(completion));
}

void QVSearchService::places(const platform::Location& near, int radius, const std::optional<StringList>& chains,
                             const std::optional<StringList>& categories, const std::optional<StringList>& groups,
                             int limit, NearPlacesCompletion completion) {
    search<SearchPlacesEndpoint, QVPlace>(
        SearchPlacesEndpoint(near, radius, std::nullopt, chains, categories, groups, limit),
        [near, radius, completion = std::move(completion)](QVStatus status, std::optional<QVPlaceList> places) {
            if (!places) {
                completion(status, near, places);
                return;
            }
            QVPlaceService::shared().all(
                near, radius,
                [&](QVStatus, const std::optional<json::Dictionary>&, const std::optional<QVPlaceList>& local) {
                    places->insert(places->end(), local->begin(), local->end());
                    sortByDistance(*places, near);
                    completion(status, near, places);
                });
        });
}

} // namespace quorvane

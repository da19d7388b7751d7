#include "Facade/QVSearch.h"

#include "Facade/Gate.h"
#include "Tracking/QVLocationManager.h"

namespace quorvane {
namespace {

/// Runs @p search around the device's location, or answers @p callback with the reason why there is none.
template <class Callback>
void aroundTheDevice(Callback callback, std::function<void(const platform::Location&, Callback)> search) {
    if (!isConfigured()) {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt, std::nullopt);
        return;
    }
    QVLocationManager::shared().getLocation(
        QuorvaneTrackingOptions::DesiredAccuracy::MEDIUM,
        [callback = std::move(callback), search = std::move(search)](
            QVStatus status, const std::optional<platform::Location>& location, bool) {
            if (status == QVStatus::SUCCESS && location) {
                search(*location, callback);
            } else {
                callback(status, location, std::nullopt);
            }
        });
}

/// An answer that has a place for a location, for a search that has none.
QVSearchService::TasksCompletion withoutLocation(QVSearch::TasksCallback callback) {
    return [callback = std::move(callback)](QVStatus status, const std::optional<QVTaskList>& tasks) {
        callback(status, std::nullopt, tasks);
    };
}

template <class Identifier>
void tasksOf(const Identifier& identifier, QVSearch::TasksCallback callback) {
    if (isConfigured()) {
        QVSearchService::shared().tasks(identifier, withoutLocation(std::move(callback)));
    } else {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt, std::nullopt);
    }
}

} // namespace

void QVSearch::tasks(int radius, std::optional<int> radiusToExclude, TasksCallback callback) {
    aroundTheDevice<TasksCallback>(std::move(callback), [=](const platform::Location& location, TasksCallback answer) {
        tasks(location, radius, radiusToExclude, std::move(answer));
    });
}

void QVSearch::tasks(const platform::Location& near, int radius, std::optional<int> radiusToExclude,
                     TasksCallback callback) {
    if (isConfigured()) {
        QVSearchService::shared().tasks(near, radius, radiusToExclude, std::move(callback));
    } else {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, near, std::nullopt);
    }
}

void QVSearch::tasks(const CampaignId& campaign, TasksCallback callback) {
    tasksOf(campaign, std::move(callback));
}

void QVSearch::tasks(const PlaceId& place, TasksCallback callback) {
    tasksOf(place, std::move(callback));
}

void QVSearch::places(int radius, const std::optional<StringList>& chains, const std::optional<StringList>& categories,
                      const std::optional<StringList>& groups, int limit, PlacesCallback callback) {
    aroundTheDevice<PlacesCallback>(std::move(callback),
                                    [=](const platform::Location& location, PlacesCallback answer) {
                                        places(location, radius, chains, categories, groups, limit, std::move(answer));
                                    });
}

void QVSearch::places(const platform::Location& near, int radius, const std::optional<StringList>& chains,
                      const std::optional<StringList>& categories, const std::optional<StringList>& groups, int limit,
                      PlacesCallback callback) {
    if (isConfigured()) {
        QVSearchService::shared().places(near, radius, chains, categories, groups, limit, std::move(callback));
    } else {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, near, std::nullopt);
    }
}

void QVSearch::geofences(int radius, const std::optional<StringList>& tags, int limit, GeofencesCallback callback) {
    aroundTheDevice<GeofencesCallback>(std::move(callback),
                                       [=](const platform::Location& location, const GeofencesCallback& answer) {
                                           geofences(location, radius, tags, limit, answer);
                                       });
}

void QVSearch::geofences(const platform::Location& near, int, const std::optional<StringList>&, int,
                         const GeofencesCallback& callback) {
    callback(unimplementedStatus(), near, std::nullopt);
}

void QVSearch::autocomplete(const std::string&, const platform::Location&, int, const AddressesCallback& callback) {
    callback(unimplementedStatus(), std::nullopt);
}

} // namespace quorvane

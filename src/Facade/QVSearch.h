#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Models/QVGeofence.h"
#include "Places/QVAddress.h"
#include "Search/QVSearchService.h"

#pragma push_macro("near")
#undef near

namespace quorvane {

/// `Quorvane::Search`: finds tasks and places. Main thread only.
///
/// Every operation answers once: `ERROR_PUBLISHABLE_KEY` before it returns when no key is configured, the answer of the
/// service on the main queue otherwise. There are two exceptions: `geofences` and `autocomplete` send nothing, and
/// `places` does not answer when the store of the host's own places cannot be read. A list is present with `SUCCESS`
/// only. The variants without a location ask the device for one first and hand on its status when there is none. Radii
/// are metres.
class QVSearch {
public:
    using TasksCallback = QVSearchService::NearTasksCompletion;
    using PlacesCallback = QVSearchService::NearPlacesCompletion;
    using GeofencesCallback = std::function<void(QVStatus, const std::optional<platform::Location>&,
                                                 const std::optional<std::vector<std::shared_ptr<QVGeofence>>>&)>;
    using AddressesCallback =
        std::function<void(QVStatus, const std::optional<std::vector<std::shared_ptr<QVAddress>>>&)>;

    QVSearch() = delete;

    static void tasks(int radius, std::optional<int> radiusToExclude, TasksCallback callback);
    static void tasks(const platform::Location& near, int radius, std::optional<int> radiusToExclude,
                      TasksCallback callback);
    static void tasks(const CampaignId& campaign, TasksCallback callback);
    static void tasks(const PlaceId& place, TasksCallback callback);

    /// The service's places and the host's own (`Quorvane::Places`), nearest first. Never answers when the store of the
    /// host's own cannot be read. Chains, categories, groups and limit have no effect in this version.
    static void places(int radius, const std::optional<StringList>& chains, const std::optional<StringList>& categories,
                       const std::optional<StringList>& groups, int limit, PlacesCallback callback);
    static void places(const platform::Location& near, int radius, const std::optional<StringList>& chains,
                       const std::optional<StringList>& categories, const std::optional<StringList>& groups, int limit,
                       PlacesCallback callback);

    /// Not provided in this version: `ERROR_UNIMPLEMENTED`, no geofences, no request.
    static void geofences(int radius, const std::optional<StringList>& tags, int limit, GeofencesCallback callback);
    static void geofences(const platform::Location& near, int radius, const std::optional<StringList>& tags, int limit,
                          const GeofencesCallback& callback);

    /// Not provided in this version: `ERROR_UNIMPLEMENTED`, no addresses, no request.
    static void autocomplete(const std::string& query, const platform::Location& near, int limit,
                             const AddressesCallback& callback);
};

} // namespace quorvane

#pragma pop_macro("near")

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Cache/Cache.h"
#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "JSON/JSON.h"
#include "Places/QVPlace.h"
#include "Platform/Location.h"

#pragma push_macro("near")
#undef near

namespace quorvane {

/// The local store of the host's own places: a cache in memory and on disk ("qvplaces.cache" in the caches directory),
/// keyed by the places' identifiers. Any thread; completions run on the caller's thread before an operation returns.
/// What is stored in memory and handed out is the host's own object, not a copy.
///
/// When the cache cannot be built (its directory cannot be made), the first operation that needs it stops the process.
class QVPlaceService : public SharedService<QVPlaceService> {
public:
    using PlaceList = std::vector<std::shared_ptr<QVPlace>>;
    using Completion =
        std::function<void(QVStatus, const std::optional<json::Dictionary>&, const std::optional<PlaceList>&)>;
    using PlaceCache = QVCache::Cache<std::string, std::shared_ptr<QVPlace>>;

    QVPlaceService();

    /// Stores the places in their order. `REMOTE`: `ERROR_UNIMPLEMENTED`. An empty list: `SUCCESS`, and the cache is
    /// not needed. A place that cannot be stored ends it with `ERROR_UNKNOWN`; those before it stay stored. On success
    /// the list as it was given.
    void create(const PlaceList& places, QVStorageType storage, const Completion& completion);

    /// The stored places within @p radius metres of @p near, the radius included, in the store's order. When the store
    /// cannot be read, that is logged and @p completion is never called: so it is once for each place that has gone
    /// from memory, as the one used least recently of more than 100, twelve hours after it was stored, or with all of
    /// them when the system ran short of memory.
    void all(const platform::Location& near, int radius, const Completion& completion);

private:
    [[nodiscard]] PlaceCache& openCache();

    std::unique_ptr<PlaceCache> cache;
};

} // namespace quorvane

#pragma pop_macro("near")

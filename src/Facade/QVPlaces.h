#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Places/QVPlace.h"

namespace quorvane {

/// `Quorvane::Places`: the host's own places. Main thread only.
///
/// Every callback runs before the operation returns: `ERROR_PUBLISHABLE_KEY` without a key; `ERROR_UNIMPLEMENTED` for
/// places at the service, which this version does not provide; `ERROR_UNKNOWN` when a place could not be stored. A list
/// is present with `SUCCESS` only. Searches for places find what is stored here, in this run of the application. Each
/// place that goes from memory, beyond 100, after twelve hours or when the system runs short, leaves one search
/// unanswered.
class QVPlaces {
public:
    using PlaceList = std::vector<std::shared_ptr<QVPlace>>;
    using Callback = std::function<void(QVStatus, const std::optional<PlaceList>&)>;

    QVPlaces() = delete;

    /// Stores one place under its `_id`, in the stead of an earlier one, and answers it.
    static void create(const std::shared_ptr<QVPlace>& place, QVStorageType storage, const Callback& callback);

    /// Stores the places in their order and answers the same list. After a failure those before it stay stored.
    static void create(const PlaceList& places, QVStorageType storage, const Callback& callback);
};

} // namespace quorvane

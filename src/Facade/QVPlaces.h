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
/// In this version the operations check the key and answer `ERROR_UNIMPLEMENTED` at once.
class QVPlaces {
public:
    using PlaceList = std::vector<std::shared_ptr<QVPlace>>;
    using Callback = std::function<void(QVStatus, const std::optional<PlaceList>&)>;

    QVPlaces() = delete;

    static void create(const std::shared_ptr<QVPlace>& place, QVStorageType storage, const Callback& callback);
    static void create(const PlaceList& places, QVStorageType storage, const Callback& callback);
};

} // namespace quorvane

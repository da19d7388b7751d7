#include "Facade/QVPlaces.h"

#include "Core/Configured.h"
#include "Places/QVPlaceService.h"

namespace quorvane {

void QVPlaces::create(const std::shared_ptr<QVPlace>& place, QVStorageType storage, const Callback& callback) {
    create(PlaceList{place}, storage, callback);
}

void QVPlaces::create(const PlaceList& places, QVStorageType storage, const Callback& callback) {
    if (!isConfigured()) {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt);
        return;
    }
    QVPlaceService::shared().create(places, storage,
                                    [&](QVStatus status, const std::optional<json::Dictionary>&,
                                        const std::optional<PlaceList>& created) { callback(status, created); });
}

} // namespace quorvane

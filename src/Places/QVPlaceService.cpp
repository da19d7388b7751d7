#include "Places/QVPlaceService.h"

#include <system_error>

#include "Core/QVLogger.h"
#include "Platform/Precondition.h"

namespace quorvane {

QVPlaceService::QVPlaceService() {
    QVCache::DiskConfig disk;
    disk.name = "qvplaces.cache";
    try {
        cache = std::make_unique<PlaceCache>(std::move(disk), QVCache::MemoryConfig(),
                                             QVCache::TransformerFactory::forCodable<std::shared_ptr<QVPlace>>());
    } catch (const std::system_error&) {
        cache = nullptr;
    }
}

QVPlaceService::PlaceCache& QVPlaceService::openCache() {
    QV_PRECONDITION(cache != nullptr, "the directory of the place store must be creatable");
    return *cache;
}

void QVPlaceService::create(const PlaceList& places, QVStorageType storage, const Completion& completion) {
    if (storage == QVStorageType::REMOTE) {
        completion(QVStatus::ERROR_UNIMPLEMENTED, std::nullopt, std::nullopt);
        return;
    }
    for (const std::shared_ptr<QVPlace>& place : places) {
        PlaceCache& open = openCache();
        QV_PRECONDITION(place != nullptr, "a place to store must be there");
        try {
            open.syncCache.add(place, place->_id);
        } catch (const std::exception&) {
            completion(QVStatus::ERROR_UNKNOWN, std::nullopt, std::nullopt);
            return;
        }
    }
    completion(QVStatus::SUCCESS, std::nullopt, places);
}

void QVPlaceService::all(const platform::Location& near, int radius, const Completion& completion) {
    PlaceCache& open = openCache();
    PlaceList found;
    try {
        for (const auto& entry : open.syncCache.all()) {
            const std::shared_ptr<QVPlace>& place = entry->value;
            if (place && place->location && place->location->coordinate &&
                platform::distance(near.coordinate, *place->location->coordinate) <= static_cast<double>(radius)) {
                found.push_back(place);
            }
        }
    } catch (const std::exception& error) {
        QVLogger::shared().log(QVLogLevel::ERROR, std::string("error: ") + error.what());
        return;
    }
    completion(QVStatus::SUCCESS, std::nullopt, found);
}

} // namespace quorvane

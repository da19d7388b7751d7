#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Cache/Cache.h"
#include "Places/QVPlace.h"

namespace quorvane {

using PlacePointer = std::shared_ptr<QVPlace>;
using PlaceCache = QVCache::Cache<std::string, PlacePointer>;

/// As many places as a cache's memory holds.
constexpr std::size_t placeCount = 100;

/// A place as a service sends it, some 600 bytes of JSON, with an identifier of 24 characters.
inline PlacePointer makePlace(std::size_t number) {
    auto place = std::make_shared<QVPlace>();
    place->_id = "5f0c7a2b9d1e4c0000" + std::to_string(100'000 + number);
    place->active = true;
    place->categories = {"grocery", "convenience", "open late"};
    place->chain = std::make_shared<QVChain>();
    place->chain->name = "Corner shops of the town";
    place->chain->slug = "corner-shops";
    place->clientReference = "reference-" + std::to_string(number);
    place->emails = std::vector<std::string>{"shop@example.com", "owner@example.com"};
    place->metadata = AnyCodable::Dictionary{{"floor", std::int64_t{2}}, {"opened", "2019-04-01"}, {"rating", 4.5}};
    place->name = "Corner shop number " + std::to_string(number);
    place->location = std::make_shared<QVAddress>();
    place->location->address1 = "Long street with a name " + std::to_string(number);
    place->location->city = "Town";
    place->location->country = "Country";
    place->location->phoneNumber = "+0 555 0100 " + std::to_string(number);
    place->location->postalCode = "1000";
    place->location->coordinate = platform::Coordinate{46.0 + 0.0001 * static_cast<double>(number), 14.5};
    return place;
}

inline const std::vector<PlacePointer>& places() {
    static const std::vector<PlacePointer> all = [] {
        std::vector<PlacePointer> made;
        for (std::size_t i = 0; i < placeCount; ++i) {
            made.push_back(makePlace(i));
        }
        return made;
    }();
    return all;
}

/// What the cache's file of a place holds.
inline std::string contentOf(const PlacePointer& place) {
    return QVCache::TransformerFactory::forCodable<PlacePointer>()->to(place);
}

inline std::unique_ptr<PlaceCache> makePlaceCache() {
    QVCache::DiskConfig config;
    config.name = "benchmark.cache";
    return std::make_unique<PlaceCache>(config, QVCache::MemoryConfig(),
                                        QVCache::TransformerFactory::forCodable<PlacePointer>());
}

} // namespace quorvane

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/AnyCodable.h"
#include "JSON/CodingKeys.h"
#include "Models/QVOwners.h"
#include "Places/QVAddress.h"
#include "Places/QVChain.h"

namespace quorvane {

/// A point of interest at which tasks are offered and around which geofences are drawn.
///
/// In JSON its address stands flat beside its own keys. A decoded place always has a location, at latitude 0,
/// longitude 0 when no point was sent; no missing or malformed key ever fails it.
class QVPlace {
public:
    std::string _id;
    std::optional<bool> active;
    std::vector<std::string> categories;
    std::shared_ptr<QVChain> chain;
    std::optional<std::string> clientKey;
    /// The client's own reference for the place.
    std::optional<std::string> clientReference;
    /// A second, external identifier.
    std::optional<std::string> dragonId;
    std::optional<std::vector<std::string>> emails;
    std::optional<std::string> group;
    std::optional<std::string> key;
    std::shared_ptr<QVAddress> location;
    std::optional<AnyCodable::Dictionary> metadata;
    std::string name;
    std::shared_ptr<QVOwners> owners;

    /// Decoding begins with a new address as the location.
    void willDecode();

    static constexpr auto codingKeys = json::keys(
        json::lenient(json::key("id", &QVPlace::_id)), json::lenient(json::key("active", &QVPlace::active)),
        json::lenient(json::key("categories", &QVPlace::categories)),
        json::lenient(json::key("chain", &QVPlace::chain)), json::lenient(json::key("clientKey", &QVPlace::clientKey)),
        json::lenient(json::key("clientReference", &QVPlace::clientReference)),
        json::lenient(json::key("dragonId", &QVPlace::dragonId)), json::lenient(json::key("emails", &QVPlace::emails)),
        json::lenient(json::key("group", &QVPlace::group)), json::lenient(json::key("key", &QVPlace::key)),
        json::lenient(json::key("address1", &QVPlace::location, &QVAddress::address1)),
        json::lenient(json::key("address2", &QVPlace::location, &QVAddress::address2)),
        json::lenient(json::key("city", &QVPlace::location, &QVAddress::city)),
        json::lenient(json::key("country", &QVPlace::location, &QVAddress::country)),
        json::lenient(json::pair("latitude", "longitude", &QVPlace::location, &QVAddress::coordinate)),
        json::lenient(json::key("phoneNumber", &QVPlace::location, &QVAddress::phoneNumber)),
        json::lenient(json::key("state", &QVPlace::location, &QVAddress::state)),
        json::lenient(json::key("zipCode", &QVPlace::location, &QVAddress::postalCode)),
        json::lenient(json::key("metadata", &QVPlace::metadata)), json::lenient(json::key("name", &QVPlace::name)),
        json::lenient(json::key("owners", &QVPlace::owners)));
};

} // namespace quorvane

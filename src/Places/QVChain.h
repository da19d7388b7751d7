#pragma once

#include <optional>
#include <string>

#include "JSON/AnyCodable.h"
#include "JSON/CodingKeys.h"

namespace quorvane {

/// A chain of places.
class QVChain {
public:
    std::optional<std::string> externalId;
    std::optional<AnyCodable::Dictionary> metadata;
    std::string name;
    std::string slug;

    static constexpr auto codingKeys =
        json::keys(json::key("externalId", &QVChain::externalId), json::key("metadata", &QVChain::metadata),
                   json::key("name", &QVChain::name), json::key("slug", &QVChain::slug));
};

} // namespace quorvane

#pragma once

#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// A group of users that the user belongs to.
class QVSegment {
public:
    std::string _description;
    std::string externalId;

    static constexpr auto codingKeys =
        json::keys(json::key("description", &QVSegment::_description), json::key("externalId", &QVSegment::externalId));
};

} // namespace quorvane
